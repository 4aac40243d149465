#include "shell/ui/AFormMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMenuBar>
#include <QMimeData>
#include <QSettings>
#include <QUrl>

#include "library/ui/FormNew.h"
#include "platform/grid/ui/FlexGridView.h"
#include "platform/runtime/Dialogs.h"
#include "shell/LibraryFile.h"

namespace shell {

using namespace Qt::StringLiterals;
using runtime::CommandScope;
using runtime::MsgBox;

namespace {

const QString LibFilter = u"成绩库|*.CJK"_s;
const QString ProductTitle = u"云杉学业册"_s;
const QString helpFile = u"云杉学业册帮助文件.doc"_s;
const QString updatePage = u"https://example.org/yunshan"_s;

/// The first local file of a drop that is a library.
QString droppedLibrary(const QMimeData* data)
{
    for (const QUrl& url : data->urls()) {
        const QString path = url.toLocalFile();
        if (path.endsWith(u".CJK"_s, Qt::CaseInsensitive))
            return path;
    }
    return {};
}

} // namespace

AFormMain::AFormMain(library::ScoreLibrary& scoreLibrary, runtime::ScreenDialogs& dialogs)
    : m_library(scoreLibrary), m_dialogs(dialogs), m_menu(menuBar())
{
    setObjectName(u"AFormMain"_s);
    setAcceptDrops(true);
    ShowInfo();
    buildGrid();
    buildWorkbench();
    connectMenu();
    connectRecent();
    connect(&m_library, &library::ScoreLibrary::opened, this, [this] {
        m_workbench->init();
        ShowInfo();
    });
    connect(&m_library, &library::ScoreLibrary::changed, m_workbench, &workbench::FormKaoShi::init);
    restoreLayout();
}

AFormMain::~AFormMain()
{
    // The panel is hidden once more while the window goes; that is no change of the user's.
    m_panel->disconnect(this);
}

void AFormMain::buildGrid()
{
    m_grid.setRows(2);
    m_grid.setCols(2);
    MSFlexGrid1 = new grid::FlexGridView(m_grid, this);
    MSFlexGrid1->setObjectName(u"MSFlexGrid1"_s);
    MSFlexGrid1->setAccessibleName(u"结果表格"_s);
    MSFlexGrid1->hide();
    // Column widths are measured in characters of the grid's font.
    m_grid.FontSize = MSFlexGrid1->font().pointSizeF();
    mTC = new QMenu(this);
    mTC->setObjectName(u"mTC"_s);
    mTC->setToolTipsVisible(true);
    QAction* mMfgToXls = mTC->addAction(u"导出到Excel(&E)"_s);
    mMfgToXls->setObjectName(u"mMfgToXls"_s);
    mMfgToXls->setEnabled(false);
    mMfgToXls->setToolTip(u"尚未提供"_s);
    connect(MSFlexGrid1, &grid::FlexGridView::menuRequested, this,
            [this](const QPoint& place) { mTC->popup(place); });
    auto* background = new QWidget(this);
    auto* layout = new QVBoxLayout(background);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(MSFlexGrid1);
    setCentralWidget(background);
}

void AFormMain::buildWorkbench()
{
    m_workbench = new workbench::FormKaoShi(m_library, m_dialogs, m_grid);
    m_panel = new QDockWidget(u"基本信息"_s, this);
    m_panel->setObjectName(u"Panel"_s);
    m_panel->setWidget(m_workbench);
    addDockWidget(Qt::LeftDockWidgetArea, m_panel);
    connect(m_workbench, &workbench::FormKaoShi::gridFilled, this, &AFormMain::showGrid);
    connect(m_workbench, &workbench::FormKaoShi::importRequested, this,
            [] { MsgBox(u"尚未提供"_s, u"提示"_s); });
    connect(m_workbench, &workbench::FormKaoShi::commandsAvailableChanged, this,
            [this](bool available) { m_menu.setLibraryOpen(available); });
    for (const auto signal : {&QDockWidget::visibilityChanged, &QDockWidget::topLevelChanged})
        connect(m_panel, signal, this, [this] { saveLayout(); });
}

void AFormMain::connectItem(const QString& name, void (AFormMain::*handler)())
{
    connect(m_menu.item(name), &QAction::triggered, this, [this, handler] {
        const CommandScope command(m_dialogs);
        (this->*handler)();
    });
}

void AFormMain::connectMenu()
{
    connectItem(u"mfNew"_s, &AFormMain::mfNew_Click);
    connectItem(u"mfOpen"_s, &AFormMain::mfOpen_Click);
    connectItem(u"mfSaveAs"_s, &AFormMain::mfSaveAs_Click);
    connectItem(u"Mfexit"_s, &AFormMain::Mfexit_Click);
    connectItem(u"meLook"_s, &AFormMain::showWorkbench);
    connectItem(u"mSHowInfo"_s, &AFormMain::showWorkbench);
    connectItem(u"meJCCJ"_s, &AFormMain::meJCCJ_Click);
    connectItem(u"Hzt"_s, &AFormMain::Hzt_Click);
    connectItem(u"Habout"_s, &AFormMain::Habout_Click);
    connectItem(u"mUpdate"_s, &AFormMain::mUpdate_Click);
}

void AFormMain::connectRecent()
{
    for (int i = 0; i < RecentCount; ++i) {
        connect(m_menu.item(u"mfREC%1"_s.arg(i)), &QAction::triggered, this, [this, i] {
            const CommandScope command(m_dialogs);
            mfREC_Click(i);
        });
    }
}

void AFormMain::start(const QString& commandLine)
{
    const CommandScope command(m_dialogs);
    const QString path = QString(commandLine).remove(u'"');
    if (!path.isEmpty()) {
        m_library.LibPath = QFileInfo(path).absoluteFilePath();
        m_library.OpenDB();
    }
    showRecent(m_library.LibPath);
}

void AFormMain::showRecent(const QString& path)
{
    const QString first =
        m_recent.MKRecent(m_library.paths().dataFile(u"recent.dat"_s), path, RecentCount);
    // Deliberate: commands that look at LibPath alone then address the file opened last.
    if (!first.isEmpty())
        m_library.LibPath = first;
    for (int i = 0; i < RecentCount; ++i) {
        QAction* entry = m_menu.item(u"mfREC%1"_s.arg(i));
        entry->setVisible(i == 0 || i < m_recent.mfREC().size());
        if (i < m_recent.mfREC().size())
            entry->setText(QString(m_recent.mfREC()[i]).replace(u"&"_s, u"&&"_s));
    }
}

void AFormMain::ShowInfo()
{
    setWindowTitle(m_library.LibPath.isEmpty() ? ProductTitle
                                               : ProductTitle + u" - "_s + m_library.LibPath);
}

void AFormMain::openLibrary(const QString& path)
{
    m_library.LibPath = path;
    m_library.OpenDB();
    m_workbench->init();
    ShowInfo();
    showRecent(m_library.LibPath);
}

void AFormMain::mfNew_Click()
{
    library::FormNew(m_library, m_dialogs, this).exec();
    ShowInfo();
}

void AFormMain::mfOpen_Click()
{
    const QString file = runtime::ShowFileDialog(LibFilter, runtime::FileMode::Open);
    if (QFileInfo::exists(file))
        openLibrary(file);
}

void AFormMain::mfREC_Click(int index)
{
    const QString file = m_recent.mfREC().value(index);
    if (file.isEmpty() || file == RecentFiles::Placeholder)
        return;
    if (!QFileInfo::exists(file)) {
        MsgBox(u"下列文件不存在！可能被移动或改名。\n"_s + file, {}, runtime::Buttons::Ok,
               runtime::Icon::Warning);
        return;
    }
    m_library.LibPath = file;
    m_library.OpenDB();
    ShowInfo();
}

void AFormMain::mfSaveAs_Click()
{
    compactLibrary(m_library, QDate::currentDate().toString(Qt::ISODate));
    ShowInfo();
}

void AFormMain::Mfexit_Click()
{
    // At once, without the events of closing windows.
    QApplication::exit(0);
}

void AFormMain::meJCCJ_Click()
{
    MsgBox(u"没有发现不合格的成绩！"_s);
}

void AFormMain::Hzt_Click()
{
    const QString file = m_library.paths().AppPath() + helpFile;
    if (QFileInfo::exists(file))
        QDesktopServices::openUrl(QUrl::fromLocalFile(file));
    else
        MsgBox(file + u"\n\n帮助文件丢失！"_s, {}, runtime::Buttons::Ok, runtime::Icon::Warning);
}

void AFormMain::Habout_Click()
{
    MsgBox(ProductTitle + u"\n\n"_s + u"版本 "_s + QApplication::applicationVersion()
               + u"\n\n管理一所学校的学生和历次考试成绩：导入、总分、名次、标准分和统计。"_s,
           u"关于软件"_s);
}

void AFormMain::mUpdate_Click()
{
    QDesktopServices::openUrl(QUrl(updatePage));
}

void AFormMain::showGrid(bool minimise)
{
    MSFlexGrid1->show();
    MSFlexGrid1->refresh();
    if (minimise)
        m_panel->hide();
}

void AFormMain::showWorkbench()
{
    m_panel->show();
    m_panel->raise();
    m_workbench->setFocus();
}

void AFormMain::saveLayout() const
{
    if (!isVisible())
        return;
    QSettings settings;
    settings.setValue(u"geometry"_s, saveGeometry());
    settings.setValue(u"panels"_s, saveState());
}

void AFormMain::restoreLayout()
{
    const QSettings settings;
    const bool known = restoreGeometry(settings.value(u"geometry"_s).toByteArray())
                       && restoreState(settings.value(u"panels"_s).toByteArray());
    if (!known)
        resize(fontMetrics().averageCharWidth() * 180, fontMetrics().lineSpacing() * 50);
}

void AFormMain::closeEvent(QCloseEvent* event)
{
    saveLayout();
    QMainWindow::closeEvent(event);
}

void AFormMain::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    saveLayout();
}

void AFormMain::dragEnterEvent(QDragEnterEvent* event)
{
    if (!droppedLibrary(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void AFormMain::dropEvent(QDropEvent* event)
{
    const CommandScope command(m_dialogs);
    openLibrary(droppedLibrary(event->mimeData()));
}

} // namespace shell
