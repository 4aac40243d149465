#include "workbench/ui/FormKaoShi.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>

#include "platform/runtime/Trap.h"
#include "platform/widgets/CaptionedList.h"
#include "platform/widgets/LabelProgress.h"
#include "platform/widgets/Screen.h"
#include "platform/widgets/ScreenProgress.h"
#include "workbench/ExamOrder.h"
#include "workbench/TotalsRun.h"
#include "workbench/TypedStatement.h"
#include "workbench/ui/NoteLabel.h"

namespace workbench {

using namespace Qt::StringLiterals;
using widgets::button;
using widgets::label;
using widgets::named;

namespace {

void showList(QListWidget* widget, const ChoiceList& list)
{
    widget->clear();
    for (const ChoiceList::Item& item : list.items) {
        widget->addItem(item.text);
        widget->item(widget->count() - 1)->setSelected(item.selected);
    }
    widget->setCurrentRow(list.ListIndex, QItemSelectionModel::NoUpdate);
}

void takeList(ChoiceList& list, const QListWidget* widget)
{
    for (int i = 0; i < list.count() && i < widget->count(); ++i)
        list.items[size_t(i)].selected = widget->item(i)->isSelected();
    list.ListIndex = widget->currentRow();
}

/// Ctrl and a click would leave a list of one choice without any.
void keepOneChosen(QListWidget* list)
{
    const QSignalBlocker quiet(list);
    if (list->selectedItems().isEmpty() && list->currentItem() != nullptr)
        list->currentItem()->setSelected(true);
}

void showDropDown(QComboBox* widget, const DropDown& list, const QString& prompt)
{
    // The prompt is no item; an empty combo shows it as its placeholder.
    widget->clear();
    widget->addItems(list.items);
    widget->setPlaceholderText(prompt);
    widget->setCurrentIndex(int(list.items.indexOf(list.text)));
}

/// Lets a long list scroll below its box; over the box it would fill the screen.
void showAsList(QComboBox* box)
{
    box->setStyleSheet(u"QComboBox { combobox-popup: 0; }"_s);
}

} // namespace

FormKaoShi::FormKaoShi(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                       excel::Applications& applications, grid::FlexGrid& mainGrid, QWidget* parent)
    : Backdrop(parent),
      m_library(scoreLibrary),
      m_selection(scoreLibrary),
      m_scoring(scoreLibrary),
      m_reports(scoreLibrary),
      m_applications(applications),
      m_dialogs(dialogs),
      m_grid(mainGrid)
{
    setObjectName(u"FormKaoShi"_s);
    setAccessibleName(u"基本信息"_s);
    setWindowTitle(u"基本信息"_s);
    auto* layout = new QGridLayout(this);
    buildExams(layout);
    buildClasses(layout);
    buildOrder(layout);
    buildCommands(layout);
    connectLists();
    connectCommands();
    Form_Load();
}

void FormKaoShi::Form_Load()
{
    const runtime::Trap trap{" - Private Sub Form_Load/FormKaoShi"};
    trap([&] { LoadPicture(m_library.paths().dataFile(u"bj1.jpg"_s)); });
    m_selection.fill();
    showState();
}

QListWidget* FormKaoShi::makeList(const QString& name, const QString& heading, QGridLayout* layout,
                                  int column, int characters)
{
    QListWidget* const list =
        widgets::addList(layout, {.column = column}, name, heading, u"Label1_"_s + name);
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list->setToolTip(widgets::multiSelectHint());
    list->viewport()->installEventFilter(this);
    // Narrow enough that the grid beside the panel has most of the window.
    list->setMinimumWidth(fontMetrics().averageCharWidth() * characters / 2);
    layout->setColumnStretch(column, characters);
    return list;
}

void FormKaoShi::buildExams(QGridLayout* layout)
{
    ListKSMC = makeList(u"ListKSMC"_s, u"考试名称(&K)"_s, layout, 0, 30);
    buildExamMenu();
    CommandUP = button(u"CommandUP"_s, u"↑"_s, this);
    CommandUP->setToolTip(u"上移考试"_s);
    CommandUP->setAccessibleName(u"上移考试"_s);
    CommandDown = button(u"CommandDown"_s, u"↓"_s, this);
    CommandDown->setToolTip(u"下移考试"_s);
    CommandDown->setAccessibleName(u"下移考试"_s);
    Command1 = button(u"Command1"_s, u"保存(&S)"_s, this);
    auto* row = new QHBoxLayout;
    row->addWidget(CommandUP);
    row->addWidget(CommandDown);
    row->addWidget(Command1);
    layout->addLayout(row, 3, 0);
}

void FormKaoShi::buildExamMenu()
{
    ExamMenu = named(new QMenu(ListKSMC), u"ExamMenu"_s, u"所选考试"_s);
    addExamEntry(u"examDetails"_s, u"考试信息(&K)…"_s, &FormKaoShi::detailsRequested);
    addExamEntry(u"examErase"_s, u"彻底删除所选考试(&R)…"_s, &FormKaoShi::erasureRequested);
    ListKSMC->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(ListKSMC, &QWidget::customContextMenuRequested, this, [this](const QPoint& place) {
        // Without a library the list shows the exams of the one before.
        if (m_selection.commandsAvailable == Available::Yes)
            ExamMenu->popup(ListKSMC->viewport()->mapToGlobal(place));
    });
}

void FormKaoShi::addExamEntry(const QString& name, const QString& caption,
                              void (FormKaoShi::*chosen)())
{
    QAction* entry = ExamMenu->addAction(caption);
    entry->setObjectName(name);
    connect(entry, &QAction::triggered, this, chosen);
}

void FormKaoShi::buildClasses(QGridLayout* layout)
{
    ListFW = makeList(u"ListFW"_s, u"班级(&B)"_s, layout, 1, 14);
    ListLB = makeList(u"ListLB"_s, u"类别代码(&G)"_s, layout, 2, 16);
    ListXM = makeList(u"ListXM"_s, u"显示项目(&X)"_s, layout, 3, 22);
    ListXM->setSelectionMode(QAbstractItemView::SingleSelection);
    ListXM->setToolTip({});
    auto* row = new QHBoxLayout;
    for (size_t i = 0; i < OptionButton1.size(); ++i) {
        const QString name = u"OptionButton1_%1"_s.arg(i);
        OptionButton1[i] = named(new QRadioButton(this), name, u"科类"_s);
        row->addWidget(OptionButton1[i]);
    }
    layout->addLayout(row, 3, 1, 1, 3);
}

void FormKaoShi::buildOrder(QGridLayout* layout)
{
    auto* keys = new QGridLayout;
    for (size_t i = 0; i < Combo1.size(); ++i) {
        Combo1[i] = named(new QComboBox(this), u"Combo1_%1"_s.arg(i), u"排序项目%1"_s.arg(i + 1));
        Combo2[i] = named(new QComboBox(this), u"Combo2_%1"_s.arg(i), u"排序方向%1"_s.arg(i + 1));
        Combo1[i]->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        Combo1[i]->setMinimumContentsLength(8);
        Combo1[i]->installEventFilter(this);
        showAsList(Combo1[i]);
        const QString number = i == 0 ? u"排序方式(&O)"_s : QString::number(i + 1);
        keys->addWidget(label(u"Label1_Combo1_%1"_s.arg(i), number, Combo1[i], this), int(i), 0);
        keys->addWidget(Combo1[i], int(i), 1);
        keys->addWidget(Combo2[i], int(i), 2);
    }
    keys->setColumnStretch(1, 1);
    layout->addLayout(keys, 4, 0, 1, 4);
    Text1 = named(new QPlainTextEdit(this), u"Text1"_s, u"SQL语句"_s);
    // A score is kept as the nearest number of 32 bits: 89.7 lies a little below.
    Text1->setToolTip(u"SQL语句，可直接输入后点击[浏览成绩]执行查询 \n"
                      "比较带小数的分数时先取整，例如：round(语文,4)>=89.7\n"
                      "会改动成绩库的语句执行前要确认，并先备份"_s);
    Text1->setTabChangesFocus(true);
    Text1->setMaximumHeight(Text1->fontMetrics().lineSpacing() * 5);
    layout->addWidget(Text1, 5, 0, 1, 4);
}

void FormKaoShi::buildCommands(QGridLayout* layout)
{
    CommandLLCJ = button(u"CommandLLCJ"_s, u"浏览成绩(&L)"_s, this);
    CommandLLCJ->setToolTip(u"按上面设定的条件浏览成绩"_s);
    CommandZDYXS = button(u"CommandZDYXS"_s, u"自定义显示(&Y)"_s, this);
    CommandDRKS = button(u"CommandDRKS"_s, u"导入考试(&I)"_s, this);
    CommandDRKS->setToolTip(u"导入考试成绩到数据中"_s);
    CommandJSZF = button(u"CommandJSZF"_s, u"计算总分(&J)"_s, this);
    CommandJSZF->setToolTip(u"计算选中考试总分和各科的年级和班级名次，时间长短和人数有关。"_s);
    CommandZHFX = button(u"CommandZHFX"_s, u"综合分析(&Z)"_s, this);
    CommandZHFX->setToolTip(u"对选中考试进行综合分析，时间较长，切记不要操作打开的Excel表格。"_s);
    CommandZXTJ = button(u"CommandZXTJ"_s, u"执行统计(&T)"_s, this);
    CommandZXTJ->setToolTip(u"对选中的考试执行指定统计"_s);
    Combo3 = named(new QComboBox(this), u"Combo3"_s, u"统计项目"_s);
    showAsList(Combo3);
    LabelNote = new NoteLabel(u"LabelNote"_s, this);
    CheckMin = named(new QCheckBox(u"查询后最小化(&M)"_s, this), u"CheckMin"_s, u"查询后最小化"_s);
    Picture1 = named(new QWidget(this), u"Picture1"_s, u"进度"_s);
    LabelXX = widgets::namedText(new QLabel(Picture1), u"LabelXX"_s);
    // A long name of an exam does not push the panel wider.
    LabelXX->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    (new QHBoxLayout(Picture1))->addWidget(LabelXX);
    Picture1->hide();
    auto* commands = new QGridLayout;
    commands->addWidget(CommandLLCJ, 0, 0);
    commands->addWidget(CommandJSZF, 0, 1);
    commands->addWidget(CommandDRKS, 0, 2);
    commands->addWidget(CommandZDYXS, 1, 0);
    commands->addWidget(CommandZHFX, 1, 1);
    commands->addWidget(CheckMin, 1, 2);
    auto* statistics = new QHBoxLayout;
    statistics->addWidget(label(u"Label1_Combo3"_s, u"统计(&C)"_s, Combo3, this));
    statistics->addWidget(Combo3, 1);
    commands->addLayout(statistics, 2, 0, 1, 2);
    commands->addWidget(CommandZXTJ, 2, 2);
    // Above the commands, so that none of them moves away under the pointer when it comes.
    layout->addWidget(LabelNote, 6, 0, 1, 4);
    layout->addLayout(commands, 7, 0, 1, 4);
    layout->addWidget(Picture1, 8, 0, 1, 4);
    layout->setRowStretch(1, 1);
}

void FormKaoShi::connectLists()
{
    // A click on what is chosen already rebuilds a statement that the user typed over.
    for (QListWidget* list : {ListKSMC, ListFW, ListLB, ListXM}) {
        connect(list, &QListWidget::itemSelectionChanged, this, &FormKaoShi::takeState);
        connect(list, &QListWidget::itemClicked, this, &FormKaoShi::takeState);
    }
    connect(ListKSMC, &QListWidget::currentRowChanged, this, [this](int row) {
        if (!m_showing)
            m_selection.ListKSMC.ListIndex = row;
    });
    for (size_t i = 0; i < Combo1.size(); ++i) {
        for (QComboBox* box : {Combo1[i], Combo2[i]}) {
            connect(box, &QComboBox::currentIndexChanged, this, &FormKaoShi::takeState);
            connect(box, &QComboBox::activated, this, &FormKaoShi::takeState);
        }
    }
    connect(Combo3, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (m_showing)
            return;
        m_selection.Combo3.text = index < 0 ? StatisticsPrompt : Combo3->itemText(index);
        showNotes();
    });
    for (size_t i = 0; i < OptionButton1.size(); ++i) {
        connect(OptionButton1[i], &QRadioButton::clicked, this,
                [this, i] { OptionButton1_Click(int(i)); });
    }
    connect(Text1, &QPlainTextEdit::textChanged, this, [this] {
        if (!m_showing)
            m_selection.Text1 = Text1->toPlainText();
    });
    connect(CheckMin, &QCheckBox::toggled, this, [this](bool on) { m_selection.CheckMin = on; });
}

void FormKaoShi::connectCommands()
{
    const auto onClick = [this](QPushButton* pressed, auto handler) {
        connect(pressed, &QPushButton::clicked, this, [this, handler] {
            const widgets::CommandScope command(m_dialogs);
            (this->*handler)();
        });
    };
    onClick(CommandLLCJ, &FormKaoShi::CommandLLCJ_Click);
    onClick(CommandJSZF, &FormKaoShi::CommandZF_Click);
    onClick(CommandZXTJ, &FormKaoShi::CommandZXTJ_Click);
    onClick(CommandZHFX, &FormKaoShi::Command2_Click);
    onClick(Command1, &FormKaoShi::Command1_Click);
    // What opens a screen is no command of its own: the screen's buttons are.
    connect(CommandDRKS, &QPushButton::clicked, this, &FormKaoShi::importRequested);
    connect(CommandZDYXS, &QPushButton::clicked, this, &FormKaoShi::CommandZDYXS_Click);
    connect(LabelNote, &NoteLabel::reportRequested, this, &FormKaoShi::runStatistics);
    connect(CommandUP, &QPushButton::clicked, this, [this] { moveExam(Direction::Up); });
    connect(CommandDown, &QPushButton::clicked, this, [this] { moveExam(Direction::Down); });
}

bool FormKaoShi::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        auto* const box = qobject_cast<QComboBox*>(watched);
        if (box && (key == Qt::Key_Delete || key == Qt::Key_Backspace)) {
            box->setCurrentIndex(-1);
            return true;
        }
    }
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick) {
        const auto* list = qobject_cast<QListWidget*>(watched->parent());
        const QPoint place = static_cast<QMouseEvent*>(event)->pos();
        if (list != nullptr && !list->indexAt(place).isValid())
            return true;
    }
    return Backdrop::eventFilter(watched, event);
}

void FormKaoShi::init()
{
    m_selection.init();
    showState();
}

void FormKaoShi::showState()
{
    m_showing = true;
    showList(ListKSMC, m_selection.ListKSMC);
    showList(ListFW, m_selection.ListFW);
    showList(ListLB, m_selection.ListLB);
    ListXM->clear();
    ListXM->addItems(m_selection.ListXM.items);
    ListXM->setCurrentRow(m_selection.ListXM.ListIndex);
    for (size_t i = 0; i < OptionButton1.size(); ++i) {
        OptionButton1[i]->setText(widgets::literalCaption(m_selection.OptionButton1[i].caption));
        OptionButton1[i]->setAccessibleName(u"科类 "_s + m_selection.OptionButton1[i].caption);
        OptionButton1[i]->setVisible(i == 0 || m_selection.OptionButton1[i].visible);
        OptionButton1[i]->setChecked(m_selection.option == int(i));
    }
    for (size_t i = 0; i < Combo1.size(); ++i) {
        showDropDown(Combo1[i], m_selection.Combo1[i], SortPrompt);
        Combo2[i]->clear();
        Combo2[i]->addItems(m_selection.Combo2[i].items);
        Combo2[i]->setCurrentIndex(m_selection.Combo2[i].ListIndex);
    }
    showDropDown(Combo3, m_selection.Combo3, StatisticsPrompt);
    Text1->setPlainText(m_selection.Text1);
    m_showing = false;
    showNotes();
    for (QPushButton* command : {CommandZHFX, CommandJSZF, CommandLLCJ, CommandDRKS, CommandZXTJ,
                                 CommandZDYXS, Command1, CommandUP, CommandDown})
        command->setEnabled(m_selection.commandsAvailable == Available::Yes);
    Q_EMIT commandsAvailableChanged(m_selection.commandsAvailable);
}

void FormKaoShi::takeState()
{
    if (m_showing)
        return;
    takeList(m_selection.ListKSMC, ListKSMC);
    takeList(m_selection.ListFW, ListFW);
    takeList(m_selection.ListLB, ListLB);
    keepOneChosen(ListXM);
    m_selection.ListXM.ListIndex = ListXM->currentRow();
    for (size_t i = 0; i < Combo1.size(); ++i) {
        m_selection.Combo1[i].text =
            Combo1[i]->currentIndex() < 0 ? SortPrompt : Combo1[i]->currentText();
        m_selection.Combo2[i].ListIndex = Combo2[i]->currentIndex();
    }
    m_selection.scTJ();
    m_showing = true;
    Text1->setPlainText(m_selection.Text1);
    m_showing = false;
    showNotes();
}

void FormKaoShi::showNotes()
{
    const bool available = m_selection.commandsAvailable == Available::Yes;
    LabelNote->showNotes(available ? reportNotes(m_selection.reportRequest())
                                   : std::vector<ReportNote>());
}

void FormKaoShi::moveExam(Direction direction)
{
    m_selection.MoveList(m_selection.ListKSMC, direction);
    showState();
}

void FormKaoShi::OptionButton1_Click(int index)
{
    m_selection.chooseStream(index);
    showState();
}

void FormKaoShi::Command1_Click()
{
    saveExamOrder(m_library, m_selection.ListKSMC.texts());
}

void FormKaoShi::CommandLLCJ_Click()
{
    widgets::ScreenProgress progress(window());
    const StoppableStatements stoppable(m_library.Conn, progress);
    const bool shown = browse(m_library, m_selection.browseRequest(), m_grid, progress);
    progress.finish();
    if (!shown)
        return;
    m_shownReport.reset();
    m_resultNotes.clear();
    Q_EMIT gridFilled(m_selection.afterQuery());
}

void FormKaoShi::CommandZF_Click()
{
    widgets::LabelProgress progress(window(), *LabelXX, Picture1);
    workbench::computeTotals(m_selection.ListKSMC.selectedTexts(), m_scoring, progress);
    Q_EMIT totalsComputed();
}

void FormKaoShi::computeTotals()
{
    CommandJSZF->click();
}

void FormKaoShi::CommandZXTJ_Click()
{
    runStatistics(m_selection.reportRequest());
}

void FormKaoShi::runStatistics(const ReportRequest& request)
{
    // A link may be followed while its library is gone.
    if (m_selection.commandsAvailable != Available::Yes)
        return;
    const widgets::CommandScope command(m_dialogs);
    if (!runReport(request, m_reports, m_grid))
        return;
    m_shownReport = request;
    m_resultNotes = reportNotes(request);
    Q_EMIT gridFilled(m_selection.afterQuery());
}

QStringList FormKaoShi::columnsInForce() const
{
    return shownColumns(m_library, m_selection.ListXM.text(), m_selection.streamWord());
}

void FormKaoShi::Command2_Click()
{
    widgets::ScreenProgress progress(window());
    runAnalysis(
        m_selection.analysisRequest(),
        m_reports, [this]() -> auto& { return excel::OpenExcel(m_applications); }, progress);
}

void FormKaoShi::CommandZDYXS_Click()
{
    {
        const widgets::CommandScope command(m_dialogs);
        MKzdyxs(m_library, m_selection.ListXM.text(), m_selection.streamWord());
    }
    Q_EMIT customDisplayRequested(m_selection.ListXM.text(), m_selection.streamWord());
}

} // namespace workbench
