#include "import/ui/TidyScreen.h"

#include <QDragEnterEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTimer>

#include "import/TidyTexts.h"
#include "import/tidy/Choices.h"
#include "import/ui/ChoiceBox.h"
#include "import/ui/ColumnChoices.h"
#include "import/ui/DroppedBook.h"
#include "import/ui/LeftOutRowsDelegate.h"
#include "import/ui/TidyTables.h"
#include "platform/grid/ui/EditKeys.h"
#include "platform/grid/ui/FlexGridView.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Trap.h"

namespace importing {

using namespace Qt::StringLiterals;
using tidy::Taking;
using widgets::button;
using widgets::CommandScope;
using widgets::label;
using widgets::named;

namespace {

const runtime::Trap tidyTrap{" - Sub TidyScreen/Import"};
const QString geometryKey = u"TidyScreen/geometry"_s;

QLabel* noteLabel(const QString& name, QWidget* parent)
{
    QLabel* note = widgets::namedText(new QLabel(parent), name);
    note->setWordWrap(true);
    return note;
}

} // namespace

TidyScreen::TidyScreen(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                       Applications& applications, tidy::Goal goal, GoalChoice goalChoice,
                       QWidget* parent)
    : DialogScreen(u"TidyScreen"_s, u"整理工作簿"_s, parent),
      m_library(scoreLibrary),
      m_dialogs(dialogs),
      m_applications(applications),
      m_remembered(scoreLibrary.paths())
{
    setAcceptDrops(true);
    makeWidgets(goalChoice);
    comboGoal->setCurrentIndex(goal == tidy::Goal::ExamScores ? 0 : 1);
    makeHeadingBoxes();
    makeGrid();
    layOut();
    connectWidgets();
    if (!restoreGeometry(QSettings().value(geometryKey).toByteArray()))
        resize(fontMetrics().averageCharWidth() * 120, fontMetrics().lineSpacing() * 36);
    tidyTrap([&] { readSources(); });
    showProposal();
}

void TidyScreen::makeWidgets(GoalChoice goalChoice)
{
    textBook = named(new QLineEdit(this), u"textBook"_s, u"工作簿"_s);
    textBook->setReadOnly(true);
    textBook->setPlaceholderText(u"浏览，或把文件拖到这里"_s);
    buttonBrowse = button(u"buttonBrowse"_s, u"浏览(&B)…"_s, this);
    labelFault = noteLabel(u"labelFault"_s, this);
    labelFault->hide();
    comboGoal = named(new QComboBox(this), u"comboGoal"_s, u"整理成"_s);
    comboGoal->addItems({u"考试成绩"_s, u"学生名单"_s});
    comboGoal->setEnabled(goalChoice == GoalChoice::Free);
    listSheets = named(new QListWidget(this), u"listSheets"_s, u"数据表"_s);
    listSheets->setFixedWidth(fontMetrics().averageCharWidth() * 24);
    comboClassFrom = named(new ChoiceBox(this), u"comboClassFrom"_s, u"班级取自"_s);
    comboClassFrom->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    labelCounts = noteLabel(u"labelCounts"_s, this);
    labelQuestions = noteLabel(u"labelQuestions"_s, this);
    QFont bold = labelQuestions->font();
    bold.setBold(true);
    labelQuestions->setFont(bold);
    m_tables = named(new TidyTables(this), u"tidyTables"_s, u"提示、班级和标记"_s);
    buttonTidy = widgets::defaultButton(u"buttonTidy"_s, u"整理(&Z)"_s, this);
    buttonClose = button(u"buttonClose"_s, u"关闭(&X)"_s, this);
}

void TidyScreen::makeHeadingBoxes()
{
    spinHeadingFirst = named(new QSpinBox(this), u"spinHeadingFirst"_s, u"标题从第几行起"_s);
    spinHeadingCount = named(new QSpinBox(this), u"spinHeadingCount"_s, u"标题共几行"_s);
    spinHeadingFirst->setRange(1, ShownSheet::firstRows);
    spinHeadingCount->setRange(1, tidy::HeadingRows::most);
    for (QSpinBox* box : {spinHeadingFirst, spinHeadingCount}) {
        box->setKeyboardTracking(false);
        box->findChild<QLineEdit*>()->setAccessibleName(box->accessibleName());
    }
}

void TidyScreen::makeGrid()
{
    gridSheet = named(new grid::FlexGridView(m_shown.grid, this), u"gridSheet"_s,
                      u"数据表的前几行，每列上方选这一列是什么"_s);
    gridSheet->setItemDelegate(new LeftOutRowsDelegate(gridSheet, [this](int row) {
        return row < int(m_shown.isLeftOut.size()) && m_shown.isLeftOut[size_t(row)];
    }));
    gridSheet->installEventFilter(this);
    m_choices = new ColumnChoices(gridSheet);
}

QLayout* TidyScreen::workbookRow()
{
    auto* row = new QHBoxLayout;
    row->addWidget(label(u"labelBook"_s, u"工作簿(&F)"_s, textBook, this));
    row->addWidget(textBook, 1);
    row->addWidget(buttonBrowse);
    return row;
}

QLayout* TidyScreen::choicesRow()
{
    auto* row = new QHBoxLayout;
    row->addWidget(label(u"labelGoal"_s, u"整理成(&G)"_s, comboGoal, this));
    row->addWidget(comboGoal);
    row->addWidget(label(u"labelHeadingFirst"_s, u"标题从第(&H)"_s, spinHeadingFirst, this));
    row->addWidget(spinHeadingFirst);
    row->addWidget(label(u"labelHeadingCount"_s, u"行起，共(&N)"_s, spinHeadingCount, this));
    row->addWidget(spinHeadingCount);
    row->addWidget(label(u"labelHeadingRows"_s, u"行"_s, nullptr, this));
    row->addWidget(label(u"labelClassFrom"_s, u"班级取自(&C)"_s, comboClassFrom, this));
    row->addWidget(comboClassFrom, 1);
    return row;
}

QLayout* TidyScreen::sheetRow()
{
    auto* sheets = new QVBoxLayout;
    sheets->addWidget(label(u"labelSheets"_s, u"合并打勾的数据表(&S)"_s, listSheets, this));
    sheets->addWidget(listSheets, 1);
    auto* row = new QHBoxLayout;
    row->addLayout(sheets);
    row->addWidget(gridSheet, 1);
    return row;
}

QLayout* TidyScreen::buttonsRow()
{
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(buttonTidy);
    row->addWidget(buttonClose);
    return row;
}

void TidyScreen::layOut()
{
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(workbookRow());
    layout->addWidget(labelFault);
    layout->addLayout(choicesRow());
    layout->addLayout(sheetRow(), 1);
    layout->addWidget(labelCounts);
    layout->addWidget(labelQuestions);
    layout->addWidget(m_tables);
    layout->addLayout(buttonsRow());
    QWidget* before = buttonBrowse;
    for (QWidget* next :
         std::initializer_list<QWidget*>{comboGoal, spinHeadingFirst, spinHeadingCount,
                                         comboClassFrom, listSheets, gridSheet}) {
        setTabOrder(before, next);
        before = next;
    }
}

void TidyScreen::connectWidgets()
{
    connect(buttonBrowse, &QPushButton::clicked, this, &TidyScreen::chooseFile);
    connect(buttonTidy, &QPushButton::clicked, this, &TidyScreen::tidyUp);
    connect(buttonClose, &QPushButton::clicked, this, &QDialog::close);
    connect(comboGoal, &QComboBox::activated, this, [this] {
        const CommandScope command(m_dialogs);
        propose();
    });
    connect(listSheets, &QListWidget::currentRowChanged, this, &TidyScreen::showCurrent);
    connect(listSheets, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        const Taking taking = item->checkState() == Qt::Checked ? Taking::Take : Taking::LeaveOut;
        change([&] { chooseSheet(m_proposal, listSheets->row(item), taking); });
    });
    for (QSpinBox* box : {spinHeadingFirst, spinHeadingCount})
        connect(box, &QSpinBox::valueChanged, this, &TidyScreen::chooseHeadingRows);
    connect(comboClassFrom, &QComboBox::activated, this, [this](int at) {
        const tidy::ClassSource source = m_classSources[size_t(at)];
        change([&] {
            chooseClassSource(m_proposal, listSheets->currentRow(), source.from, source.text);
        });
    });
    connect(m_choices, &ColumnChoices::chosen, this, [this](int column, int entry) {
        change([&] {
            chooseColumn(m_proposal, listSheets->currentRow(), m_shown.columns[size_t(column)],
                         m_uses[size_t(entry)]);
        });
    });
    connect(gridSheet, &grid::FlexGridView::cellClicked, this, [this](int row, int col) {
        if (col == ShownSheet::FateColumn)
            chooseRowFate(row);
    });
    connect(m_tables, &TidyTables::classChosen, this, [this](int row, double number) {
        change([&] { chooseClass(m_proposal, m_proposal.classes[size_t(row)].text, number); });
    });
    connect(m_tables, &TidyTables::classRefused, this, &TidyScreen::refuseClass);
    connect(m_tables, &TidyTables::markChosen, this, [this](int row, int use) {
        change([&] {
            chooseMark(m_proposal, m_proposal.marks[size_t(row)].text, markUses[size_t(use)]);
        });
    });
}

void TidyScreen::readSources()
{
    m_aliases = tidy::Aliases::load(m_library.paths());
    m_roster = m_library.Conn.isOpen() ? tidy::Roster::ofLibrary(m_library, m_aliases)
                                       : tidy::Roster::ofShippedSubjects(m_library.paths());
}

tidy::Goal TidyScreen::goal() const
{
    return comboGoal->currentIndex() == 0 ? tidy::Goal::ExamScores : tidy::Goal::StudentList;
}

void TidyScreen::chooseFile()
{
    const CommandScope command(m_dialogs);
    const QString path =
        runtime::ShowFileDialog(u"EXCEL文件|*.xls;*.xlsx|"_s, runtime::FileMode::Open);
    if (!path.isEmpty())
        browse(path);
}

void TidyScreen::browse(const QString& path)
{
    QString fault;
    excel::Workbook* book = nullptr;
    try {
        book = &m_source.Workbooks().Open(path);
    } catch (const runtime::Error& error) {
        fault = error.description();
    }
    labelFault->setText(fault);
    labelFault->setVisible(!fault.isEmpty());
    textBook->setText(path);
    m_path = path;
    m_book = book;
    propose();
}

void TidyScreen::use(excel::Workbook& book, const QString& path)
{
    textBook->setText(path);
    m_path = path;
    m_book = &book;
    propose();
}

void TidyScreen::showSheet(const QString& name)
{
    for (size_t i = 0; i < m_proposal.sheets.size(); ++i) {
        if (m_proposal.sheets[i].name == name)
            listSheets->setCurrentRow(int(i));
    }
}

void TidyScreen::propose()
{
    m_uses = tidy::possibleUses(goal(), m_roster);
    m_proposal = tidy::Proposal();
    tidyTrap([&] {
        if (m_book == nullptr)
            return;
        m_proposal = tidy::propose(*m_book, goal(), sources());
        if (m_remembered.apply(m_proposal))
            tidy::reconsider(m_proposal, *m_book, sources());
    });
    const QSignalBlocker quiet(listSheets);
    listSheets->clear();
    showProposal();
    const auto taken =
        std::find_if(m_proposal.sheets.begin(), m_proposal.sheets.end(),
                     [](const tidy::SheetProposal& sheet) { return sheet.taking == Taking::Take; });
    listSheets->setCurrentRow(
        taken == m_proposal.sheets.end() ? 0 : int(taken - m_proposal.sheets.begin()));
    showCurrent();
}

template <class Change> void TidyScreen::change(const Change& apply)
{
    const CommandScope command(m_dialogs);
    if (m_book == nullptr)
        return;
    tidyTrap([&] {
        apply();
        tidy::reconsider(m_proposal, *m_book, sources());
    });
    showProposal();
}

tidy::SheetProposal* TidyScreen::current()
{
    const int row = listSheets->currentRow();
    return row < 0 || row >= int(m_proposal.sheets.size()) ? nullptr
                                                           : &m_proposal.sheets[size_t(row)];
}

void TidyScreen::showProposal()
{
    showSheets();
    showCurrent();
    const bool hasBook = !m_proposal.sheets.empty();
    labelCounts->setText(hasBook ? countsText(m_proposal) : u"先打开要整理的工作簿。"_s);
    labelQuestions->setText(questionsText(m_proposal));
    labelQuestions->setVisible(!labelQuestions->text().isEmpty());
    m_tables->show(m_proposal);
    buttonTidy->setEnabled(hasBook && m_proposal.isDecided());
}

void TidyScreen::showSheets()
{
    const QSignalBlocker quiet(listSheets);
    while (listSheets->count() > int(m_proposal.sheets.size()))
        delete listSheets->takeItem(listSheets->count() - 1);
    while (listSheets->count() < int(m_proposal.sheets.size()))
        listSheets->addItem(QString());
    for (int i = 0; i < listSheets->count(); ++i) {
        const tidy::SheetProposal& sheet = m_proposal.sheets[size_t(i)];
        QListWidgetItem* item = listSheets->item(i);
        item->setText(sheetText(sheet));
        item->setToolTip(sheetText(sheet).toHtmlEscaped());
        item->setCheckState(sheet.taking == Taking::Take ? Qt::Checked : Qt::Unchecked);
    }
}

void TidyScreen::showCurrent()
{
    const tidy::SheetProposal* sheet = current();
    const int row = m_shown.grid.Row;
    const int col = std::max(m_shown.grid.Col, ShownSheet::FirstColumn);
    m_shown = ShownSheet();
    m_shown.grid.setRows(1);
    m_classSources.clear();
    tidyTrap([&] {
        if (sheet == nullptr || m_book == nullptr)
            return;
        const excel::Worksheet& worksheet =
            m_book->Worksheets().Item(int(sheet - m_proposal.sheets.data()) + 1);
        m_shown = shownSheet(worksheet, m_proposal, *sheet);
        m_shown.grid.Row = m_shown.grid.RowSel = row;
        m_shown.grid.Col = m_shown.grid.ColSel = col;
        m_classSources = classSources(m_proposal, *sheet, worksheet);
    });
    gridSheet->refresh();
    const tidy::SheetProposal none;
    showColumns(sheet ? *sheet : none);
    showHeading(sheet ? *sheet : none);
    showClassSources(sheet ? *sheet : none);
}

void TidyScreen::showColumns(const tidy::SheetProposal& sheet)
{
    QStringList entries;
    for (const tidy::ColumnUse& use : m_uses)
        entries.append(use.text());
    std::vector<ColumnChoices::Column> columns;
    for (const tidy::ColumnProposal& column : sheet.columns) {
        const auto use = std::find(m_uses.begin(), m_uses.end(), column.use);
        const bool isOpen = column.isOpen || use == m_uses.end();
        const QString heading =
            column.heading.isEmpty() ? u"第 %1 列"_s.arg(column.column) : column.heading;
        columns.push_back({isOpen ? -1 : int(use - m_uses.begin()),
                           u"“%1”是"_s.arg(heading.left(ShownSheet::mostLetters)), column.reason});
    }
    m_choices->show(entries, columns);
}

void TidyScreen::showHeading(const tidy::SheetProposal& sheet)
{
    const QSignalBlocker quietFirst(spinHeadingFirst);
    const QSignalBlocker quietCount(spinHeadingCount);
    spinHeadingFirst->setValue(sheet.heading.first);
    spinHeadingCount->setValue(sheet.heading.count);
    for (QWidget* widget :
         std::initializer_list<QWidget*>{spinHeadingFirst, spinHeadingCount, comboClassFrom})
        widget->setEnabled(!sheet.name.isEmpty());
}

void TidyScreen::showClassSources(const tidy::SheetProposal& sheet)
{
    comboClassFrom->clear();
    for (const tidy::ClassSource& source : m_classSources) {
        comboClassFrom->addItem(classSourceText(source));
        if (source.from == sheet.classSource.from)
            comboClassFrom->setCurrentIndex(comboClassFrom->count() - 1);
    }
}

void TidyScreen::chooseRowFate(int row)
{
    const int sheetRow = row < int(m_shown.rows.size()) ? m_shown.rows[size_t(row)] : 0;
    if (sheetRow == 0)
        return;
    const Taking taking = m_shown.isLeftOut[size_t(row)] ? Taking::Take : Taking::LeaveOut;
    change([&] { chooseRow(m_proposal, listSheets->currentRow(), sheetRow, taking); });
}

void TidyScreen::refuseClass(const QString& text)
{
    const CommandScope command(m_dialogs);
    m_tables->show(m_proposal);
    runtime::warn(
        u"班号应是 1 或更大的整数，不能是“%1”。"_s.arg(text.left(ShownSheet::mostLetters)));
}

void TidyScreen::chooseHeadingRows()
{
    change([&] {
        chooseHeading(m_proposal, listSheets->currentRow(), spinHeadingFirst->value(),
                      spinHeadingCount->value());
    });
}

void TidyScreen::tidyUp()
{
    const CommandScope command(m_dialogs);
    std::unique_ptr<excel::Workbook> made;
    tidyTrap([&] { made = tidy::tidied(*m_book, m_proposal, sources()); });
    if (made == nullptr)
        return;
    tidyTrap([&] { m_remembered.remember(m_proposal); });
    showTidied(std::move(made));
    accept();
}

void TidyScreen::showTidied(std::unique_ptr<excel::Workbook> made)
{
    excel::Application& application =
        *m_applications.emplace_back(std::make_unique<excel::Application>());
    excel::Workbook& book = application.Workbooks().Add(std::move(made));
    application.setVisible(true);
    m_tidied = {&application, &book, m_path, goal()};
}

void TidyScreen::done(int result)
{
    QSettings().setValue(geometryKey, saveGeometry());
    DialogScreen::done(result);
}

void TidyScreen::dragEnterEvent(QDragEnterEvent* event)
{
    if (!droppedBook(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void TidyScreen::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    // Queued, so that the program that the file comes from need not wait.
    QTimer::singleShot(0, this, [this, path = droppedBook(*event->mimeData())] {
        const CommandScope command(m_dialogs);
        browse(path);
    });
}

bool TidyScreen::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != gridSheet || event->type() != QEvent::KeyPress
        || !grid::isSpace(*static_cast<QKeyEvent*>(event)))
        return DialogScreen::eventFilter(watched, event);
    chooseRowFate(m_shown.grid.Row);
    return true;
}

} // namespace importing
