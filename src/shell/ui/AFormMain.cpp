// Long because every menu entry of the window is connected here.
#include "shell/ui/AFormMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMenuBar>
#include <QStandardPaths>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

#include "library/DemoLibrary.h"
#include "library/ui/FormNew.h"
#include "maintenance/ExamErasure.h"
#include "maintenance/ExamRemoval.h"
#include "oldlibraries/AskedConversion.h"
#include "oldlibraries/ConversionNote.h"
#include "oldlibraries/FileHeader.h"
#include "platform/database/FileIdentity.h"
#include "platform/grid/ui/FlexGridView.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Trap.h"
#include "platform/widgets/Backdrop.h"
#include "platform/widgets/Screen.h"
#include "platform/widgets/ScreenProgress.h"
#include "shell/GridExport.h"
#include "shell/LibraryFile.h"
#include "shell/ui/ColumnWidths.h"
#include "shell/ui/DroppedFile.h"
#include "shell/ui/EmptySide.h"
#include "shell/ui/GridFigures.h"
#include "shell/ui/ResultHead.h"
#include "shell/ui/StartPage.h"
#include "shell/ui/WindowLayout.h"

namespace shell {

using namespace Qt::StringLiterals;
using runtime::MsgBox;
using widgets::CommandScope;
using widgets::ProductTitle;

namespace {

const QString helpFile = u"云杉学业册帮助文件.doc"_s;
const QString updatePage = u"https://example.org/yunshan"_s;

} // namespace

AFormMain::AFormMain(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs)
    : m_library(scoreLibrary),
      m_dialogs(dialogs),
      m_screens(scoreLibrary, dialogs, *this),
      m_copies(scoreLibrary, dialogs, m_screens),
      m_menu(menuBar())
{
    setObjectName(u"AFormMain"_s);
    setAcceptDrops(true);
    ShowInfo();
    buildGrid();
    buildWorkbench();
    m_figures =
        new GridFigures(*MSFlexGrid1, *m_workbench, m_screens, *m_menu.item(u"figureStudents"_s));
    connectMenu();
    connectEmptySide();
    connectRecent();
    connectCopies();
    connect(&m_library, &library::ScoreLibrary::opened, this, &AFormMain::takeLibrary);
    connect(&m_library, &library::ScoreLibrary::changed, this, [this] {
        if (!m_library.Conn.isOpen())
            hideResult();
        else if (MSFlexGrid1->isVisible())
            m_head->showStale(u"下面还是成绩库改动以前的结果，请重新浏览或统计。"_s);
        m_emptySide->refresh();
    });
    connect(&m_library, &library::ScoreLibrary::changed, m_workbench, &workbench::FormKaoShi::init);
    m_layout = std::make_unique<WindowLayout>(*this, *m_panel);
    m_layout->restore();
}

AFormMain::~AFormMain() = default;

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
    connect(mMfgToXls, &QAction::triggered, this, [this] {
        const CommandScope command(m_dialogs);
        mMfgToXls_Click();
    });
    mTC->addSeparator();
    mTC->addAction(m_menu.item(u"figureStudents"_s));
    connect(MSFlexGrid1, &grid::FlexGridView::menuRequested, this, [this](const QPoint& place) {
        m_figures->aim(place);
        mTC->popup(place);
    });
    connect(MSFlexGrid1, &grid::FlexGridView::columnDragged, this,
            [this](int col) { keepWidth(m_grid, col); });
    auto* background = new widgets::Backdrop(this);
    const runtime::Trap trap{" - Private Sub Form_Load/FormMain"};
    trap([&] { background->LoadPicture(m_library.paths().dataFile(u"bj.jpg"_s)); });
    auto* layout = new QVBoxLayout(background);
    layout->setContentsMargins(0, 0, 0, 0);
    m_head = new ResultHead(background);
    layout->addWidget(m_head);
    m_emptySide = new EmptySide(m_library, background);
    layout->addWidget(m_emptySide);
    layout->addWidget(MSFlexGrid1, 1);
    setCentralWidget(background);
}

void AFormMain::buildWorkbench()
{
    m_workbench = new workbench::FormKaoShi(m_library, m_dialogs, m_screens.applications(), m_grid);
    m_panel = new QDockWidget(u"基本信息"_s, this);
    m_panel->setObjectName(u"Panel"_s);
    m_panel->setWidget(m_workbench);
    addDockWidget(Qt::LeftDockWidgetArea, m_panel);
    connect(m_workbench, &workbench::FormKaoShi::gridFilled, this, &AFormMain::showGrid);
    connect(m_head, &ResultHead::reportRequested, m_workbench,
            &workbench::FormKaoShi::runStatistics);
    connect(m_workbench, &workbench::FormKaoShi::detailsRequested, this,
            [this] { m_screens.showExamDetails(m_workbench->selectedExams().value(0)); });
    connect(m_head, &ResultHead::explanationRequested, this, &AFormMain::explainShown);
    connect(m_workbench, &workbench::FormKaoShi::importRequested, this,
            [this] { m_screens.showFormDaoRu(); });
    connect(m_workbench, &workbench::FormKaoShi::erasureRequested, this, [this] {
        const CommandScope command(m_dialogs);
        eraseExams();
    });
    connect(m_workbench, &workbench::FormKaoShi::customDisplayRequested, this,
            [this](const QString& item, const QString& stream) {
                m_screens.showFormZDYXS(item, stream);
            });
    connect(m_workbench, &workbench::FormKaoShi::commandsAvailableChanged, this,
            [this](workbench::Available available) { m_menu.setLibraryCommands(available); });
}

void AFormMain::connectItem(const QString& name, void (AFormMain::*handler)())
{
    connect(m_menu.item(name), &QAction::triggered, this, [this, handler] {
        const CommandScope command(m_dialogs);
        (this->*handler)();
    });
}

void AFormMain::connectScreen(const QString& name, void (MenuScreens::*open)())
{
    // The screen's own buttons are the commands.
    connect(m_menu.item(name), &QAction::triggered, this, [this, open] { (m_screens.*open)(); });
}

void AFormMain::connectMenu()
{
    connect(m_menu.item(u"mfNew"_s), &QAction::triggered, this, &AFormMain::mfNew_Click);
    connectItem(u"mfOpen"_s, &AFormMain::mfOpen_Click);
    connectItem(u"mfSaveAs"_s, &AFormMain::mfSaveAs_Click);
    connectItem(u"Mfexit"_s, &AFormMain::Mfexit_Click);
    connectItem(u"meLook"_s, &AFormMain::showWorkbench);
    connectItem(u"mSHowInfo"_s, &AFormMain::showWorkbench);
    connectItem(u"Hzt"_s, &AFormMain::Hzt_Click);
    connectItem(u"mUpdate"_s, &AFormMain::mUpdate_Click);
    connectItem(u"meSCKS"_s, &AFormMain::meSCKS_Click);
    connectItem(u"meErase"_s, &AFormMain::eraseExams);
    connect(m_menu.item(u"meDRKS"_s), &QAction::triggered, this,
            [this] { m_screens.showFormDaoRu(); });
    connectScreen(u"meDRLB"_s, &MenuScreens::importStudents);
    connectScreen(u"mtSJFB"_s, &MenuScreens::showFormDaoRuFenBanXinXi);
    connectScreen(u"meJCCJ"_s, &MenuScreens::checkScores);
    connectScreen(u"meZFGS"_s, &MenuScreens::showFormZFGS);
    connectScreen(u"mFXSZ"_s, &MenuScreens::showFormSet);
    connectScreen(u"mtEXCEL"_s, &MenuScreens::showFormDaoChu);
    connectScreen(u"msGRFX"_s, &MenuScreens::showFormGeRenChengJi);
    connectScreen(u"meXXXG"_s, &MenuScreens::showFormXGXX);
    connectScreen(u"meJCTP"_s, &MenuScreens::checkPhotos);
    connectScreen(u"meXGCJ"_s, &MenuScreens::showFormXiuGaiChengJi);
    connectScreen(u"tidyWorkbook"_s, &MenuScreens::showTidyScreen);
    connectScreen(u"mDelKM"_s, &MenuScreens::showFormDelKM);
    connectScreen(u"meJSMD"_s, &MenuScreens::showFormJiaoShiMingDan);
    connectScreen(u"mtSZWL"_s, &MenuScreens::showFormSheZhiWenLi);
    connectScreen(u"meSZTP"_s, &MenuScreens::showFormSheZhiZhaoPian);
    connectScreen(u"mtZB"_s, &MenuScreens::showFormZhuanBan);
    connectScreen(u"mtStudentMoves"_s, &MenuScreens::showStudentMoves);
    connect(m_menu.item(u"meExamDetails"_s), &QAction::triggered, m_workbench,
            &workbench::FormKaoShi::detailsRequested);
    connectScreen(u"mtAddSubject"_s, &MenuScreens::addSubject);
    connectScreen(u"mtAddStudent"_s, &MenuScreens::addStudent);
    connect(m_menu.item(u"itemExplanation"_s), &QAction::triggered, this,
            &AFormMain::explainChosen);
    connectScreen(u"Habout"_s, &MenuScreens::showAbout);
}

void AFormMain::connectEmptySide()
{
    StartPage& page = m_emptySide->page();
    connect(&page, &StartPage::newRequested, m_menu.item(u"mfNew"_s), &QAction::trigger);
    connect(&page, &StartPage::openRequested, m_menu.item(u"mfOpen"_s), &QAction::trigger);
    connect(&page, &StartPage::demoRequested, this, &AFormMain::openDemo);
    connect(&page, &StartPage::libraryRequested, this, [this](const QString& path) {
        const CommandScope command(m_dialogs);
        openRecent(path);
    });
    connect(&page, &StartPage::removalRequested, this, [this](const QString& path) {
        m_recent.remove(m_library.paths().dataFile(u"recent.dat"_s), path);
        showRecent(openPath());
    });
    connect(m_workbench, &workbench::FormKaoShi::totalsComputed, m_emptySide, &EmptySide::refresh);
    connect(m_emptySide, &EmptySide::stepRequested, this, &AFormMain::takeStep);
}

void AFormMain::takeStep(Step step)
{
    if (step == Step::Students)
        m_menu.item(u"meDRLB"_s)->trigger();
    else if (step == Step::Exam)
        m_menu.item(u"meDRKS"_s)->trigger();
    else if (step == Step::Totals)
        m_workbench->computeTotals();
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

void AFormMain::connectCopies()
{
    connect(m_menu.item(u"mfRestore"_s), &QAction::triggered, &m_copies, &CopyMenu::restore);
    connect(m_menu.item(u"mfUndoImport"_s), &QAction::triggered, &m_copies, &CopyMenu::undoImport);
    connect(&m_copies, &CopyMenu::restored, this, [this] {
        hideResult();
        showRecent(openPath());
    });
}

void AFormMain::start(const QString& commandLine)
{
    const CommandScope command(m_dialogs);
    const QString path = QString(commandLine).remove(u'"');
    oldlibraries::removeLeftOvers(m_library.paths());
    if (!path.isEmpty())
        openLibrary(QFileInfo(path).absoluteFilePath(), RecentOrder::Keep);
    // Without a library the menu items that bring the panel up are off.
    if (!m_library.Conn.isOpen())
        m_panel->show();
    showRecent(openPath());
    m_emptySide->page().begin();
}

QString AFormMain::openPath() const
{
    return m_library.Conn.path();
}

void AFormMain::showRecent(const QString& path)
{
    const QString first =
        m_recent.MKRecent(m_library.paths().dataFile(u"recent.dat"_s), path, RecentCount);
    // Kept as the library to be asked for; nothing is opened by it.
    if (!first.isEmpty())
        m_library.LibPath = first;
    for (int i = 0; i < RecentCount; ++i) {
        QAction* entry = m_menu.item(u"mfREC%1"_s.arg(i));
        entry->setVisible(i == 0 || i < m_recent.mfREC().size());
        if (i < m_recent.mfREC().size())
            entry->setText(widgets::literalCaption(m_recent.mfREC()[i]));
    }
    m_emptySide->page().showLibraries(m_recent.files());
}

void AFormMain::ShowInfo()
{
    setWindowTitle(m_library.Conn.isOpen() ? ProductTitle + u" - "_s + openPath() : ProductTitle);
}

void AFormMain::takeLibrary()
{
    // What is shown stems from the library before.
    if (openPath() != m_shownLibrary)
        hideResult();
    m_shownLibrary = openPath();
    m_workbench->init();
    m_emptySide->refresh();
    ShowInfo();
}

void AFormMain::hideResult()
{
    MSFlexGrid1->hide();
    m_head->clear();
    m_figures->switchItem();
}

void AFormMain::openLibrary(const QString& path, RecentOrder order)
{
    if (oldlibraries::isOldLibrary(path))
        openConverted(path);
    else if (m_screens.mayLeaveLibrary())
        openNow(path, order);
}

void AFormMain::openConverted(const QString& oldPath)
{
    const std::optional<oldlibraries::ConversionReport> report =
        m_screens.convertOldLibrary(oldPath);
    if (!report)
        return;
    openNow(report->newPath, RecentOrder::Renew);
    if (oldlibraries::isReportWanted(*report))
        m_screens.showReport(*report);
}

void AFormMain::openNow(const QString& path, RecentOrder order)
{
    m_library.LibPath = path;
    m_library.OpenDB();
    ShowInfo();
    if (order == RecentOrder::Renew)
        showRecent(openPath());
    if (!database::isSameFile(openPath(), path))
        m_copies.offer(path);
}

void AFormMain::mfNew_Click()
{
    if (m_screens.mayLeaveLibrary())
        m_screens.showFormNew();
}

void AFormMain::mfOpen_Click()
{
    const QString file = runtime::ShowFileDialog(library::LibFilter, runtime::FileMode::Open);
    if (QFileInfo::exists(file))
        openLibrary(file, RecentOrder::Renew);
}

void AFormMain::mfREC_Click(int index)
{
    const QString file = m_recent.mfREC().value(index);
    if (!file.isEmpty() && file != RecentFiles::Placeholder)
        openRecent(file);
}

void AFormMain::openRecent(const QString& file)
{
    if (QFileInfo::exists(file))
        return openLibrary(file, RecentOrder::Keep);
    runtime::warn(u"下列文件不存在！可能被移动或改名。\n"_s + file);
    m_copies.offer(file);
}

void AFormMain::openDemo()
{
    const CommandScope command(m_dialogs);
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const runtime::Trap trap{" - Sub OpenDemo/FormMain"};
    trap([&] {
        openLibrary(library::ownDemoLibrary(m_library.paths(), documents), RecentOrder::Renew);
    });
}

void AFormMain::mfSaveAs_Click()
{
    widgets::ScreenProgress progress(this);
    compactLibrary(m_library, QDate::currentDate().toString(Qt::ISODate), progress);
}

void AFormMain::Mfexit_Click()
{
    // At once, without the events of closing windows; only results that nobody saved are asked for.
    if (m_screens.closeAll())
        QApplication::exit(0);
}

void AFormMain::Hzt_Click()
{
    const QString file = m_library.paths().AppPath() + helpFile;
    if (QFileInfo::exists(file))
        QDesktopServices::openUrl(QUrl::fromLocalFile(file));
    else
        runtime::warn(file + u"\n\n帮助文件丢失！"_s);
}

void AFormMain::mUpdate_Click()
{
    QDesktopServices::openUrl(QUrl(updatePage));
}

void AFormMain::mMfgToXls_Click()
{
    copyGridToWorkbook(m_grid, excel::OpenExcel(m_screens.applications()));
}

void AFormMain::meSCKS_Click()
{
    maintenance::removeExams(m_library, m_workbench->selectedExams());
}

void AFormMain::eraseExams()
{
    widgets::ScreenProgress progress(this);
    maintenance::ExamErasure erasure(m_library);
    erasure.run(m_workbench->selectedExams(), progress, library::Backup::Make);
}

void AFormMain::explainChosen()
{
    const workbench::ReportRequest chosen = m_workbench->chosenReport();
    const auto& shown = m_workbench->shownReport();
    // What is shown may have been run by the link of a note.
    const bool isShown = shown && shown->item == chosen.item && shown->exams == chosen.exams;
    if (isShown || workbench::reportOf(chosen).isEmpty())
        explainShown();
    else
        m_screens.showExplanation(chosen);
}

void AFormMain::explainShown()
{
    m_screens.showExplanation(m_workbench->shownReport().value_or(workbench::ReportRequest()));
}

void AFormMain::showGrid(workbench::AfterQuery afterwards)
{
    restoreWidths(m_grid);
    m_head->showNotes(m_workbench->resultNotes(),
                      m_workbench->shownReport() ? ResultKind::Report : ResultKind::Other);
    MSFlexGrid1->show();
    MSFlexGrid1->refresh();
    m_figures->switchItem();
    if (afterwards == workbench::AfterQuery::Minimise)
        m_layout->stepAside();
}

void AFormMain::showWorkbench()
{
    m_panel->show();
    m_panel->raise();
    m_workbench->setFocus();
}

void AFormMain::closeEvent(QCloseEvent* event)
{
    if (!m_screens.closeAll())
        return event->ignore();
    m_layout->save();
    QMainWindow::closeEvent(event);
}

void AFormMain::dragEnterEvent(QDragEnterEvent* event)
{
    // A drop on a window that a screen is open over would work behind that screen's back.
    const QString file = droppedFile(event->mimeData());
    const bool taken = isLibrary(file) || (isWorkbook(file) && m_library.Conn.isOpen());
    if (taken && !QApplication::activeModalWidget())
        event->acceptProposedAction();
}

void AFormMain::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    // Queued, so that the program that the file comes from need not wait for a screen.
    QTimer::singleShot(0, this,
                       [this, file = droppedFile(event->mimeData())] { takeDropped(file); });
}

void AFormMain::takeDropped(const QString& file)
{
    if (!isLibrary(file))
        return m_screens.showFormDaoRu(file);
    const CommandScope command(m_dialogs);
    openLibrary(file, RecentOrder::Renew);
}

} // namespace shell
