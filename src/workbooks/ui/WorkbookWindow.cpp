#include "workbooks/ui/WorkbookWindow.h"

#include <algorithm>

#include <QCloseEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QTabBar>
#include <QToolBar>
#include <QVBoxLayout>

#include "platform/runtime/Dialogs.h"
#include "platform/widgets/Screen.h"
#include "workbooks/ui/CellDisplay.h"
#include "workbooks/ui/WorksheetView.h"

namespace excel {

using namespace Qt::StringLiterals;
using runtime::Answer;

namespace {

constexpr int startWidth = 120; // in characters
constexpr int startHeight = 36; // in lines

} // namespace

WorkbookWindow::WorkbookWindow(Workbook& book, const QString& name, Desktop desktop,
                               QWidget* parent)
    : QMainWindow(parent),
      m_book(&book),
      m_name(name),
      m_source(book.path()),
      m_desktop(std::move(desktop))
{
    setObjectName(u"WorkbookWindow"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    buildSheets();
    buildActions();
    const QSize start(fontMetrics().averageCharWidth() * startWidth,
                      fontMetrics().height() * startHeight);
    resize(start.boundedTo(screen()->availableSize()));
    showTabs();
    showTitle();
    m_view->setFocus();
}

void WorkbookWindow::buildSheets()
{
    auto* page = new QWidget(this);
    m_view = new WorksheetView(page);
    SheetTabs = widgets::named(new QTabBar(page), u"SheetTabs"_s, u"工作表"_s);
    SheetTabs->setShape(QTabBar::RoundedSouth);
    SheetTabs->setExpanding(false);
    SheetTabs->setDrawBase(false);
    SheetTabs->setElideMode(Qt::ElideNone);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_view);
    layout->addWidget(SheetTabs);
    setCentralWidget(page);
    CellText = widgets::namedText(new QLabel, u"CellText"_s);
    CellText->setIndent(fontMetrics().averageCharWidth());
    statusBar()->addWidget(CellText, 1);
    connect(SheetTabs, &QTabBar::currentChanged, this, &WorkbookWindow::tabChosen);
    connect(m_view, &WorksheetView::currentCellChanged, this, &WorkbookWindow::showCell);
}

QAction* WorkbookWindow::action(const QString& name, const QString& caption,
                                const QKeySequence& keys, Handler handler)
{
    auto* made = new QAction(caption, this);
    made->setObjectName(name);
    made->setIconText(widgets::withoutAccessKey(caption));
    made->setShortcut(keys);
    connect(made, &QAction::triggered, this, handler);
    addAction(made);
    return made;
}

void WorkbookWindow::buildActions()
{
    auto* bar = widgets::named(new QToolBar(u"工具栏"_s, this), u"ToolBar"_s, u"工具栏"_s);
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    addToolBar(bar);
    buildFileMenu(bar);
    buildEditMenu(bar);
    action(u"NextSheet"_s, u"下一个工作表"_s, QKeySequence(Qt::CTRL | Qt::Key_PageDown),
           &WorkbookWindow::nextSheet);
    action(u"PreviousSheet"_s, u"上一个工作表"_s, QKeySequence(Qt::CTRL | Qt::Key_PageUp),
           &WorkbookWindow::previousSheet);
}

void WorkbookWindow::buildFileMenu(QToolBar* bar)
{
    QMenu* menu = menuBar()->addMenu(u"文件(&F)"_s);
    QAction* save =
        action(u"SaveAs"_s, u"另存为(&S)…"_s, QKeySequence::Save, &WorkbookWindow::saveAs);
    save->setShortcuts({save->shortcut(), QKeySequence(Qt::Key_F12)});
    QAction* printing =
        action(u"Print"_s, u"打印(&P)…"_s, QKeySequence::Print, &WorkbookWindow::print);
    QAction* pdf = action(u"ExportPdf"_s, u"导出PDF(&F)…"_s, {}, &WorkbookWindow::exportToPdf);
    QAction* outside =
        action(u"OpenOutside"_s, u"用电子表格打开(&O)"_s, {}, &WorkbookWindow::openOutsideCopy);
    QAction* shut = action(u"CloseWindow"_s, u"关闭(&C)"_s, {}, &WorkbookWindow::shut);
    shut->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_W), QKeySequence(Qt::CTRL | Qt::Key_F4)});
    menu->addActions({save, printing, pdf, outside});
    menu->addSeparator();
    menu->addAction(shut);
    bar->addActions({save, printing, pdf, outside});
}

void WorkbookWindow::buildEditMenu(QToolBar* bar)
{
    QMenu* menu = menuBar()->addMenu(u"编辑(&E)"_s);
    QAction* copying = action(u"Copy"_s, u"复制(&C)"_s, QKeySequence::Copy, &WorkbookWindow::copy);
    QAction* finding =
        action(u"Find"_s, u"查找(&F)…"_s, QKeySequence::Find, &WorkbookWindow::openFind);
    menu->addActions(
        {copying,
         action(u"SelectAll"_s, u"全选(&A)"_s, QKeySequence::SelectAll, &WorkbookWindow::selectAll),
         finding,
         action(u"FindNext"_s, u"查找下一个(&N)"_s, QKeySequence::FindNext,
                &WorkbookWindow::findNext),
         action(u"FindPrevious"_s, u"查找上一个(&P)"_s, QKeySequence::FindPrevious,
                &WorkbookWindow::findPrevious)});
    bar->addSeparator();
    bar->addActions({copying, finding});
}

void WorkbookWindow::showTitle()
{
    const QString path = m_book->path();
    setWindowTitle(u"%1[*] - 工作簿"_s.arg(path.isEmpty() ? m_name : QFileInfo(path).fileName()));
    setWindowFilePath(path);
    setWindowModified(m_source.isEmpty() && !m_book->Saved());
}

/// One tab for each sheet that is not hidden; the one in front is chosen.
void WorkbookWindow::showTabs()
{
    m_shownRevision = m_book->revision();
    m_tabs.clear();
    const QSignalBlocker quiet(SheetTabs);
    for (int i = 1; i <= m_book->Worksheets().Count(); ++i) {
        Worksheet& sheet = m_book->Worksheets().Item(i);
        if (sheet.visibility() != Visibility::Visible)
            continue;
        const int tab = int(m_tabs.size());
        if (tab == SheetTabs->count())
            SheetTabs->addTab(QString());
        // An ampersand would pass for an access key.
        SheetTabs->setTabText(tab, widgets::literalCaption(sheet.Name()));
        m_tabs.push_back(&sheet);
    }
    while (SheetTabs->count() > int(m_tabs.size()))
        SheetTabs->removeTab(SheetTabs->count() - 1);
    showFront();
}

void WorkbookWindow::showFront()
{
    if (m_tabs.empty())
        return m_view->showSheet(nullptr);
    const auto found = std::find(m_tabs.begin(), m_tabs.end(), &m_book->activeSheet());
    const auto front = found != m_tabs.end() ? found : m_tabs.begin();
    const QSignalBlocker quiet(SheetTabs);
    SheetTabs->setCurrentIndex(int(front - m_tabs.begin()));
    m_view->showSheet(*front);
}

void WorkbookWindow::refresh()
{
    if (m_book == nullptr)
        return;
    if (!m_book->isOpen())
        return giveUp();
    if (m_book->revision() != m_shownRevision)
        showTabs();
    showTitle();
}

void WorkbookWindow::giveUp()
{
    m_book = nullptr;
    m_tabs.clear();
    m_view->showSheet(nullptr);
    hide();
    deleteLater();
}

void WorkbookWindow::showSheet(const QString& name)
{
    const auto found = std::find_if(m_tabs.begin(), m_tabs.end(), [&](const Worksheet* sheet) {
        return sheet->Name().compare(name, Qt::CaseInsensitive) == 0;
    });
    if (found != m_tabs.end())
        bringForward(int(found - m_tabs.begin()));
}

void WorkbookWindow::tabChosen(int tab)
{
    bringForward(tab);
    if (m_book != nullptr && tab >= 0 && tab < int(m_tabs.size()))
        Q_EMIT sheetChosen(*m_book, m_tabs[size_t(tab)]->Name());
}

void WorkbookWindow::bringForward(int tab)
{
    if (m_book == nullptr || !m_book->isOpen() || tab < 0 || tab >= int(m_tabs.size()))
        return;
    m_book->setActiveSheet(*m_tabs[size_t(tab)]);
    refresh();
}

void WorkbookWindow::stepTab(int step)
{
    const int tab = SheetTabs->currentIndex() + step;
    if (tab >= 0 && tab < SheetTabs->count())
        SheetTabs->setCurrentIndex(tab);
}

void WorkbookWindow::showCell(int row, int column)
{
    const WorksheetModel& model = m_view->sheetModel();
    if (model.sheet() == nullptr || row < 1)
        return CellText->clear();
    const QString content = displayText(model.value(row, column)).simplified();
    QString text = u"%1%2  %3"_s.arg(columnName(column)).arg(row).arg(content);
    const QString title = m_view->chartTitleAt(row, column).simplified();
    if (!title.isEmpty())
        text += u"  [图表] "_s + title;
    CellText->setText(text);
}

bool WorkbookWindow::mayClose()
{
    if (m_book == nullptr || !m_book->isOpen() || !m_source.isEmpty() || m_book->Saved())
        return true;
    const Answer answer =
        runtime::MsgBox(u"“%1”还没有保存，是否保存？"_s.arg(m_name), u"关闭工作簿"_s,
                        runtime::Buttons::YesNoCancel, runtime::Icon::Question);
    if (answer == Answer::Yes)
        return saveWorkbookAs(*m_book, m_source);
    return answer == Answer::No;
}

void WorkbookWindow::closeEvent(QCloseEvent* event)
{
    if (!mayClose())
        return event->ignore();
    Workbook* closed = std::exchange(m_book, nullptr);
    m_tabs.clear();
    m_view->showSheet(nullptr);
    if (closed != nullptr)
        closed->Close();
    event->accept();
}

/// Told once, unless the user gives up.
bool WorkbookWindow::lossesAccepted()
{
    if (!m_lossesAccepted)
        m_lossesAccepted = mayLose(*m_book);
    return m_lossesAccepted;
}

void WorkbookWindow::saveAs()
{
    if (m_book != nullptr && lossesAccepted() && saveWorkbookAs(*m_book, m_source))
        refresh();
}

void WorkbookWindow::copy()
{
    m_view->copy();
}

void WorkbookWindow::selectAll()
{
    m_view->selectAll();
}

void WorkbookWindow::openFind()
{
    m_view->openFind();
}

void WorkbookWindow::findNext()
{
    m_view->findAgain(Qt::AscendingOrder);
}

void WorkbookWindow::findPrevious()
{
    m_view->findAgain(Qt::DescendingOrder);
}

void WorkbookWindow::print()
{
    if (const Worksheet* sheet = m_view->sheetModel().sheet())
        printSheet(*sheet, this, m_desktop);
}

void WorkbookWindow::exportToPdf()
{
    if (const Worksheet* sheet = m_view->sheetModel().sheet())
        exportPdf(*sheet, this);
}

void WorkbookWindow::openOutsideCopy()
{
    if (m_book == nullptr)
        return;
    const bool fileIsIt = !m_source.isEmpty() || m_book->Saved();
    openOutside(*m_book, fileIsIt ? m_book->path() : QString(), m_name, m_copies.path(), m_desktop);
}

} // namespace excel
