#include "import/ui/FormDaoRuXinXi.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include "import/StudentImport.h"
#include "import/preview/StudentPreview.h"
#include "platform/widgets/LabelProgress.h"

namespace importing {

using namespace Qt::StringLiterals;
using widgets::label;

FormDaoRuXinXi::FormDaoRuXinXi(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                               Applications& applications, QWidget* parent)
    : IntakeScreen(u"FormDaoRuXinXi"_s, u"导入学生信息"_s, studentSheet, scoreLibrary, dialogs,
                   applications, parent)
{
    build();
    offerPreview([this] { return previewStudents(m_library, m_intake, Combo1->currentText()); },
                 [this] { Command1_Click(); });
    connect(Command1, &QPushButton::clicked, this, &FormDaoRuXinXi::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &QDialog::close);
    connect(Command3, &QPushButton::clicked, this, &FormDaoRuXinXi::Command3_Click);
    Form_Load();
}

void FormDaoRuXinXi::build()
{
    Label3 = label(u"Label3"_s, u"数据表前3列必须为：班级、学号、姓名"_s, nullptr, this);
    Label3->setWordWrap(true);
    auto* layout = new QGridLayout(this);
    makeTidyButton(tidy::Goal::StudentList);
    layOutWorkbook(layout, u"1.打开要导入信息的Excel文件(&F)"_s);
    layout->addWidget(label(u"Label2"_s, u"2.选择导入信息所在的数据表(&S)"_s, Combo1, this), 3, 0);
    layout->addWidget(Combo1, 3, 1, 1, 2);
    layout->addWidget(Label3, 4, 0, 1, 3);
    layout->addWidget(CheckBackup, 5, 0, 1, 3);
    layOutButtons(layout);
}

void FormDaoRuXinXi::Form_Load()
{
    Label3->setText(Label3->text()
                    + u"\n其余项目可为下列中的一个或多个:类别代码、类别、科类、性别、照片名、"
                      "出生时间、入学时间、学籍号、原毕业学校、身份证、民族、籍贯、备注"_s);
    Label3->setAccessibleName(Label3->text());
}

void FormDaoRuXinXi::Command3_Click()
{
    const widgets::CommandScope command(m_dialogs);
    m_dialogs.startIn(m_library.paths().AppPath());
    choose(u"EXCEL文件(*.xls)|*.xls|"_s);
}

void FormDaoRuXinXi::Command1_Click()
{
    const widgets::CommandScope command(m_dialogs);
    widgets::LabelProgress progress(this, *Label4);
    tellOfTidying(
        StudentImport(m_library, m_intake, progress).run(Combo1->currentText(), backup()));
}

} // namespace importing
