#include "import/ui/FormDaoRuFenBanXinXi.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include "import/ReclassImport.h"
#include "platform/widgets/LabelProgress.h"

namespace importing {

using namespace Qt::StringLiterals;
using widgets::label;

FormDaoRuFenBanXinXi::FormDaoRuFenBanXinXi(library::ScoreLibrary& scoreLibrary,
                                           widgets::ScreenDialogs& dialogs,
                                           Applications& applications, QWidget* parent)
    : IntakeScreen(u"FormDaoRuFenBanXinXi"_s, u"导入分班信息"_s, classChangeSheet, scoreLibrary,
                   dialogs, applications, parent)
{
    build();
    connect(Command1, &QPushButton::clicked, this, &FormDaoRuFenBanXinXi::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &FormDaoRuFenBanXinXi::Command2_Click);
    connect(Command3, &QPushButton::clicked, this, &FormDaoRuFenBanXinXi::Command3_Click);
}

void FormDaoRuFenBanXinXi::build()
{
    auto* layout = new QGridLayout(this);
    layOutWorkbook(layout, u"1.打开要导入分班信息的Excel文件(&F)"_s);
    layout->addWidget(label(u"Label2"_s, u"2.设置要导入 分班信息 的数据表(&S)"_s, Combo1, this), 3,
                      0);
    layout->addWidget(Combo1, 3, 1, 1, 2);
    QLabel* columns =
        label(u"Label3"_s, u"数据表前5列为：班级、学号、姓名、新班级、新学号"_s, nullptr, this);
    columns->setWordWrap(true);
    layout->addWidget(columns, 4, 0, 1, 3);
    layout->addWidget(CheckBackup, 5, 0, 1, 3);
    layOutButtons(layout);
}

void FormDaoRuFenBanXinXi::Command3_Click()
{
    const widgets::CommandScope command(m_dialogs);
    m_dialogs.startIn(m_library.paths().AppPath());
    choose(u"EXCEL文件|*.xls;*.xlsx|"_s);
}

void FormDaoRuFenBanXinXi::Command1_Click()
{
    const widgets::CommandScope command(m_dialogs);
    widgets::LabelProgress progress(this, *Label4);
    ReclassImport(m_library, m_intake, progress).run(Combo1->currentText(), backup());
    unsetCursor();
}

void FormDaoRuFenBanXinXi::Command2_Click()
{
    const widgets::CommandScope command(m_dialogs);
    m_intake.quitApplication();
    close();
}

} // namespace importing
