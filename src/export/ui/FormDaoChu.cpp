#include "export/ui/FormDaoChu.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "export/ExportOffers.h"
#include "export/ScoreExport.h"
#include "platform/widgets/CaptionedList.h"
#include "platform/widgets/ScreenProgress.h"

namespace exporting {

using namespace Qt::StringLiterals;
using widgets::addList;
using widgets::button;
using widgets::CommandScope;
using widgets::label;
using widgets::named;
using widgets::selectedTexts;

namespace {

/// Fills a list; entries that were selected before stay so.
void refill(QListWidget* list, const QStringList& texts)
{
    const QStringList selected = selectedTexts(list);
    list->clear();
    list->addItems(texts);
    for (int i = 0; i < list->count(); ++i)
        list->item(i)->setSelected(selected.contains(list->item(i)->text()));
}

/// Fills a box of exams; the one that was chosen before stays so.
void refill(QComboBox* box, const QStringList& exams)
{
    const qsizetype chosen = exams.indexOf(box->currentText());
    box->clear();
    box->addItems(exams);
    box->setCurrentIndex(int(chosen));
}

/// Tells what the user should know before the export; false if he would rather not then.
bool mayExport(const ScoreExportRequest& asked)
{
    const QString note = averageNote(asked);
    return note.isEmpty()
           || runtime::choose({.text = note, .buttons = {u"继续导出"_s, u"取消"_s}, .safe = 1})
                  == 0;
}

AverageBox averageBox(const QCheckBox* tick, const QComboBox* exams)
{
    AverageBox box;
    box.ticked = tick->isChecked();
    box.chosen = exams->currentIndex() >= 0;
    if (box.chosen)
        box.exam = exams->currentText();
    return box;
}

} // namespace

FormDaoChu::FormDaoChu(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                       excel::Applications& applications, QWidget* parent)
    : Screen(u"FormDaoChu"_s, u"导出成绩到Excel"_s, parent),
      m_library(scoreLibrary),
      m_dialogs(dialogs),
      m_applications(applications)
{
    build();
    connectControls();
    Form_Load();
}

void FormDaoChu::build()
{
    auto* layout = new QGridLayout(this);
    layout->addWidget(label(u"Label4"_s, u"设置导出成绩的范围"_s, nullptr, this), 0, 0, 1, 3);
    makeLists(layout);
    LabelMissing = widgets::namedText(new QLabel(this), u"LabelMissing"_s);
    LabelMissing->setWordWrap(true);
    CheckXxYH = tickBox(u"CheckXxYH"_s, u"学生信息单独一行(&I)"_s);
    LabelXX = label(u"LabelXX"_s, u"正在导出成绩..."_s, nullptr, this);
    QSizePolicy alwaysThere = LabelXX->sizePolicy();
    alwaysThere.setRetainSizeWhenHidden(true);
    LabelXX->setSizePolicy(alwaysThere);
    LabelXX->hide();
    int row = layout->rowCount();
    for (QWidget* part : std::initializer_list<QWidget*>{LabelMissing, CheckXxYH, makeAverages(),
                                                         makeLayouts(), LabelXX, makeButtons()})
        layout->addWidget(part, row++, 0, 1, 3);
    layout->setRowStretch(2, 1);
    resize(fontMetrics().averageCharWidth() * 80, fontMetrics().lineSpacing() * 36);
}

void FormDaoChu::makeLists(QGridLayout* layout)
{
    ListKSMC = addList(layout, {.row = 1}, u"ListKSMC"_s, u"考试名称(&K)"_s);
    ListKM = addList(layout, {.row = 1, .column = 1}, u"ListKM"_s, u"科目(&M)"_s);
    ListBJ = addList(layout, {.row = 1, .column = 2}, u"ListBJ"_s, u"班级(&B)"_s);
    for (QListWidget* list : {ListKSMC, ListKM, ListBJ}) {
        list->setSelectionMode(QAbstractItemView::ExtendedSelection);
        list->setMinimumHeight(fontMetrics().lineSpacing() * 4);
    }
    layout->addWidget(label(u"LabelHint"_s, widgets::multiSelectHint(), nullptr, this), 3, 0, 1, 3);
}

QCheckBox* FormDaoChu::tickBox(const QString& name, const QString& caption, const QString& tip)
{
    auto* box = named(new QCheckBox(caption, this), name, widgets::withoutAccessKey(caption));
    box->setToolTip(tip);
    return box;
}

QComboBox* FormDaoChu::examBox(const QString& name, const QString& spoken)
{
    auto* box = named(new QComboBox(this), name, spoken);
    // The prompt is no exam; an empty box shows it as its placeholder.
    box->setPlaceholderText(AverageBox().exam);
    // A long name would widen the window.
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(12);
    return box;
}

QWidget* FormDaoChu::makeAverages()
{
    CheckBJJF = tickBox(u"CheckBJJF"_s, u"添加(&A)"_s);
    CheckBJJF->setAccessibleName(u"添加班级平均分"_s);
    Combo1 = examBox(u"Combo1"_s, u"班级平均分的考试"_s);
    CheckNJJF = tickBox(u"CheckNJJF"_s, u"添加(&N)"_s);
    CheckNJJF->setAccessibleName(u"添加年级平均分"_s);
    Combo2 = examBox(u"Combo2"_s, u"年级平均分的考试"_s);
    CheckGradeExam =
        tickBox(u"CheckGradeExam"_s, u"年级平均按所选考试标注(&L)"_s,
                u"年级平均一行的名称和分数取自它自己选的考试；不选中时取自班级平均分的考试"_s);
    auto* rows = new QWidget(this);
    auto* layout = new QGridLayout(rows);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(CheckBJJF, 0, 0);
    layout->addWidget(Combo1, 0, 1);
    layout->addWidget(label(u"LabelCombo1"_s, u"的班级平均分"_s, nullptr, rows), 0, 2);
    layout->addWidget(CheckNJJF, 1, 0);
    layout->addWidget(Combo2, 1, 1);
    layout->addWidget(label(u"LabelCombo2"_s, u"的年级平均分"_s, nullptr, rows), 1, 2);
    layout->addWidget(CheckGradeExam, 2, 1, 1, 2);
    layout->setColumnStretch(1, 1);
    return rows;
}

QWidget* FormDaoChu::makeLayouts()
{
    auto* rows = new QWidget(this);
    Option2 = named(new QRadioButton(u"学生成绩间空行数(&H)"_s, rows), u"Option2"_s,
                    u"学生成绩间空行数"_s);
    Option2->setChecked(true);
    TextKH = named(new QLineEdit(u"2"_s, rows), u"TextKH"_s, u"空行数"_s);
    TextKH->setMaximumWidth(fontMetrics().averageCharWidth() * 12);
    CheckKeepBlocks = tickBox(u"CheckKeepBlocks"_s, u"不拆开学生的成绩块(&P)"_s,
                              u"一页放不下的学生整个移到下一页"_s);
    OptionZXT = named(new QRadioButton(u"绘制总分排名折线图(一人一页)(&Z)"_s, rows), u"OptionZXT"_s,
                      u"绘制总分排名折线图(一人一页)"_s);
    auto* blankRows = new QHBoxLayout;
    for (QWidget* part : std::initializer_list<QWidget*>{Option2, TextKH, CheckKeepBlocks})
        blankRows->addWidget(part);
    blankRows->addStretch();
    auto* layout = new QVBoxLayout(rows);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(blankRows);
    layout->addWidget(OptionZXT);
    return rows;
}

QWidget* FormDaoChu::makeButtons()
{
    auto* row = new QWidget(this);
    Command3 = button(u"Command3"_s, u"格式设置(&F)"_s, row);
    Command1 = button(u"Command1"_s, u"导出(&E)"_s, row);
    Command2 = button(u"Command2"_s, u"退出(&X)"_s, row);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(Command3);
    layout->addStretch();
    layout->addWidget(Command1);
    layout->addWidget(Command2);
    return row;
}

void FormDaoChu::connectControls()
{
    const auto offerLast = [](QComboBox* exams) {
        return [exams](bool ticked) {
            if (ticked)
                exams->setCurrentIndex(exams->count() - 1);
        };
    };
    connect(CheckBJJF, &QCheckBox::toggled, Combo1, offerLast(Combo1));
    connect(CheckNJJF, &QCheckBox::toggled, Combo2, offerLast(Combo2));
    connect(Command1, &QPushButton::clicked, this, &FormDaoChu::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &QDialog::hide);
    connect(Command3, &QPushButton::clicked, this, &FormDaoChu::Command3_Click);
}

void FormDaoChu::Form_Load()
{
    const CommandScope command(m_dialogs);
    const QStringList& exams = m_library.catalogue.ExamList;
    refill(ListKSMC, exams);
    refill(Combo1, exams);
    refill(Combo2, exams);
    refill(ListBJ, classesToExport(m_library));
    refill(ListKM, m_library.catalogue.AllColumns);
    showWhatIsMissing();
}

void FormDaoChu::showWhatIsMissing()
{
    QStringList missing;
    if (ListKSMC->count() == 0)
        missing.append(u"成绩库里还没有考试，请先导入考试。"_s);
    if (ListBJ->count() == 0)
        missing.append(u"成绩库里还没有学生，请先导入信息。"_s);
    LabelMissing->setText(missing.join(u'\n'));
    LabelMissing->setVisible(!missing.isEmpty());
}

ScoreExportRequest FormDaoChu::request() const
{
    ScoreExportRequest asked;
    asked.exams = selectedTexts(ListKSMC);
    asked.subjects = selectedTexts(ListKM);
    asked.classes = selectedTexts(ListBJ);
    asked.infoRow = CheckXxYH->isChecked();
    asked.classAverage = averageBox(CheckBJJF, Combo1);
    asked.gradeAverage = averageBox(CheckNJJF, Combo2);
    asked.layout = OptionZXT->isChecked() ? BlockLayout::RankChart : BlockLayout::BlankRows;
    asked.blankRows = TextKH->text();
    asked.gradeAverageByItsExam = CheckGradeExam->isChecked();
    asked.keepBlocksTogether = CheckKeepBlocks->isChecked();
    return asked;
}

void FormDaoChu::Command1_Click()
{
    const CommandScope command(m_dialogs);
    const ScoreExportRequest asked = request();
    if (!mayExport(asked))
        return;
    widgets::ScreenProgress progress(this);
    exportScores(m_library, asked, m_applications, progress, [this](RunningText text) {
        LabelXX->setVisible(text == RunningText::Shown);
        LabelXX->repaint();
    });
}

void FormDaoChu::Command3_Click()
{
    const ScoreExportRequest asked = request();
    {
        const CommandScope command(m_dialogs);
        ZDYxs(m_library, asked);
    }
    Q_EMIT columnsRequested(u"导出成绩"_s, displayName(asked.layout));
}

} // namespace exporting
