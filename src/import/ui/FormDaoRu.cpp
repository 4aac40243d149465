#include "import/ui/FormDaoRu.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "import/ExamSheet.h"
#include "import/preview/ExamPreview.h"
#include "import/ui/ScreenImportQuestions.h"
#include "platform/widgets/LabelProgress.h"

namespace importing {

using namespace Qt::StringLiterals;
using widgets::label;
using widgets::named;

FormDaoRu::FormDaoRu(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                     Applications& applications, ImportState& state, QWidget* parent)
    : IntakeScreen(u"FormDaoRu"_s, u"导入考试成绩"_s, examSheet, scoreLibrary, dialogs,
                   applications, parent),
      m_state(state)
{
    build();
    layOut();
    offerPreview([this] { return previewExam(m_library, m_intake, {request()}); },
                 [this] { Command1_Click(); });
    buttonPreview->setEnabled(false);
    connectExam();
    connect(Command1, &QPushButton::clicked, this, &FormDaoRu::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &FormDaoRu::Command2_Click);
    connect(Command3, &QPushButton::clicked, this, &FormDaoRu::Command3_Click);
    Form_Load();
}

void FormDaoRu::build()
{
    // Filled by the browse and read by nothing on purpose: an exam is stored under its name alone.
    Text2 = named(new QLineEdit(this), u"Text2"_s, u"考试的短名称"_s);
    Combo2 = named(new QComboBox(this), u"Combo2"_s, u"考试的名称"_s);
    Combo2->setEditable(true);
    Combo2->setInsertPolicy(QComboBox::NoInsert);
    // Completing a name would turn what is typed into what exists.
    Combo2->setCompleter(nullptr);
    CheckAdd =
        named(new QCheckBox(u"自动添加新名单(&A)"_s, this), u"CheckAdd"_s, u"自动添加新名单"_s);
    CheckBox1 =
        named(new QCheckBox(u"导入后计算总分(&Z)"_s, this), u"CheckBox1"_s, u"导入后计算总分"_s);
    CheckBox1->setToolTip(u"计算考试总分和各科的年级和班级名次，时间长短和人数有关。"_s);
    Label6 = label(u"Label6"_s, u"成绩的填写规则："_s, nullptr, this);
    Command1->setEnabled(false);
}

void FormDaoRu::layOut()
{
    auto* layout = new QGridLayout(this);
    const auto line = [&](const QString& name, const QString& caption, QWidget* field) {
        const int row = layout->rowCount();
        layout->addWidget(label(name, caption, field, this), row, 0);
        layout->addWidget(field, row, 1, 1, 2);
    };
    makeTidyButton(tidy::Goal::ExamScores);
    layOutWorkbook(layout, u"1.打开要导入考试成绩的Excel文件(&F)"_s);
    line(u"Label2"_s, u"2.设置要导入考试成绩的数据表(&S)"_s, Combo1);
    line(u"Label3"_s, u"3.设置考试的短名称（如高一下末，最好4个字）(&T)"_s, Text2);
    line(u"Label5"_s, u"4.设置考试的名称(&N)"_s, Combo2);
    auto* options = new QHBoxLayout;
    for (QCheckBox* option : std::initializer_list<QCheckBox*>{CheckAdd, CheckBox1, CheckBackup})
        options->addWidget(option);
    layout->addLayout(options, layout->rowCount(), 0, 1, 3);
    layout->addWidget(Label6, layout->rowCount(), 0, 1, 3);
    layOutButtons(layout);
    chainTabs();
}

/// The fields of every import screen were made before those of this one.
void FormDaoRu::chainTabs()
{
    QWidget* before = Combo1;
    for (QWidget* next :
         std::initializer_list<QWidget*>{Text2, Combo2, CheckAdd, CheckBox1, CheckBackup}) {
        setTabOrder(before, next);
        before = next;
    }
}

void FormDaoRu::connectExam()
{
    connect(Combo2, &QComboBox::editTextChanged, this,
            [this] { m_examChoice = ExamChoice::Typed; });
    connect(Combo2, &QComboBox::activated, this,
            [this] { m_examChoice = ExamChoice::PickedFromList; });
    // A combo box takes a finished text that equals an entry for a choice of that entry.
    disconnect(Combo2->lineEdit(), &QLineEdit::editingFinished, Combo2, nullptr);
}

void FormDaoRu::Form_Load()
{
    Label6->setText(Label6->text() + u"\n成绩仅允许汉字：[缺考]和[作弊],不含方括号"_s
                    + u"\n      [缺考]不参与单科统计"_s + u"， "_s
                    + u"[作弊]记为0分，参与单科统计"_s);
    Label6->setAccessibleName(Label6->text());
    Combo2->addItems(m_library.catalogue.ExamList);
    Combo2->setCurrentIndex(Combo2->count() - 1);
    m_examChoice = Combo2->count() > 0 ? ExamChoice::PickedFromList : ExamChoice::Typed;
}

void FormDaoRu::Command3_Click()
{
    const widgets::CommandScope command(m_dialogs);
    choose(u"EXCEL文件|*.xls;*.xlsx|"_s);
}

void FormDaoRu::browse(const QString& path)
{
    Label4->setText(u"打开工作簿..."_s);
    Label4->repaint();
    IntakeScreen::browse(path);
    offerExam(path);
    Label4->clear();
}

void FormDaoRu::use(excel::Application& application, excel::Workbook& book, const QString& path)
{
    IntakeScreen::use(application, book, path);
    offerExam(path);
}

/// The file's name is the name of a new exam.
void FormDaoRu::offerExam(const QString& path)
{
    const QString exam = WorkbookIntake::examNameOf(path);
    Combo2->setEditText(exam);
    m_examChoice = ExamChoice::Typed;
    Text2->setText(exam);
    Command1->setEnabled(true);
    buttonPreview->setEnabled(true);
}

ExamImportRequest FormDaoRu::request() const
{
    ExamImportRequest asked;
    asked.workbookPath = Text1->text();
    asked.sheetName = Combo1->currentText();
    asked.examName = Combo2->currentText();
    asked.examChoice = m_examChoice;
    asked.newStudents = CheckAdd->isChecked() ? NewStudents::Add : NewStudents::Ask;
    asked.afterwards = CheckBox1->isChecked() ? Afterwards::Score : Afterwards::LeaveUnscored;
    asked.backup = backup();
    return asked;
}

void FormDaoRu::Command1_Click()
{
    const widgets::CommandScope command(m_dialogs);
    widgets::LabelProgress progress(this, *Label4);
    ScreenImportQuestions questions(m_library.paths(), *this, progress);
    tellOfTidying(ExamImport(m_library, m_intake, m_state, questions, progress).run(request()));
}

bool FormDaoRu::isSheetAsWanted() const
{
    return isExamSheet(m_intake, m_library.catalogue, Combo1->currentText());
}

void FormDaoRu::Command2_Click()
{
    const widgets::CommandScope command(m_dialogs);
    m_intake.quitApplication();
    close();
}

} // namespace importing
