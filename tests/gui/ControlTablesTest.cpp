#include <QAbstractButton>
#include <QLabel>

#include "gui/AccessKeys.h"
#include "gui/Gallery.h"
#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;

/// A control as it is named by the design.
struct Control
{
    const char* kind;
    const char16_t* name;
    const char16_t* caption = u"";
    const char16_t* tip = u"";
};

constexpr const char* Grid = "grid::FlexGridView";
constexpr const char* Editor = "QLineEdit";
constexpr const char* Memo = "QPlainTextEdit";
constexpr const char* List = "QListWidget";
constexpr const char* Combo = "QComboBox";
constexpr const char* Push = "QPushButton";
constexpr const char* Tool = "QToolButton";
constexpr const char* Check = "QCheckBox";
constexpr const char* Option = "QRadioButton";
constexpr const char* Label = "QLabel";
constexpr const char* Tree = "QTreeWidget";
constexpr const char* Panel = "QWidget";

const char16_t* const multiSelect = u"按下Ctrl键或Shift键可多选";

struct Window
{
    const char16_t* name;
    const char16_t* title;
    std::vector<Control> controls;
};

const std::vector<Window> windows{
    {u"AFormMain", nullptr, {{Grid, u"MSFlexGrid1"}}},
    {u"Panel",
     u"基本信息",
     {{Label, u"Label1_ListKSMC", u"考试名称"},
      {Label, u"Label1_ListFW", u"班级"},
      {Label, u"Label1_ListLB", u"类别代码"},
      {Label, u"Label1_ListXM", u"显示项目"},
      {Label, u"Label1_Combo1_0", u"排序方式"},
      {List, u"ListKSMC", u"", multiSelect},
      {Push, u"CommandUP", u"↑", u"上移考试"},
      {Push, u"CommandDown", u"↓", u"下移考试"},
      {Push, u"Command1", u"保存"},
      {Option, u"OptionButton1_0", u"全"},
      {Option, u"OptionButton1_1", u"文"},
      {Option, u"OptionButton1_2", u"理"},
      {List, u"ListFW", u"", multiSelect},
      {List, u"ListLB", u"", multiSelect},
      {List, u"ListXM"},
      {Combo, u"Combo1_0"},
      {Combo, u"Combo1_1"},
      {Combo, u"Combo1_2"},
      {Combo, u"Combo1_3"},
      {Combo, u"Combo2_0"},
      {Combo, u"Combo2_1"},
      {Combo, u"Combo2_2"},
      {Combo, u"Combo2_3"},
      {Combo, u"Combo3"},
      {Push, u"CommandZXTJ", u"执行统计", u"对选中的考试执行指定统计"},
      {Push, u"CommandZHFX", u"综合分析",
       u"对选中考试进行综合分析，时间较长，切记不要操作打开的Excel表格。"},
      {Push, u"CommandJSZF", u"计算总分",
       u"计算选中考试总分和各科的年级和班级名次，时间长短和人数有关。"},
      {Push, u"CommandLLCJ", u"浏览成绩", u"按上面设定的条件浏览成绩"},
      {Push, u"CommandZDYXS", u"自定义显示"},
      {Push, u"CommandDRKS", u"导入考试", u"导入考试成绩到数据中"},
      {Check, u"CheckMin", u"查询后最小化"},
      {Memo, u"Text1", u"",
       u"SQL语句，可直接输入后点击[浏览成绩]执行查询 \n"
       "比较带小数的分数时先取整，例如：round(语文,4)>=89.7\n"
       "会改动成绩库的语句执行前要确认，并先备份"},
      {Panel, u"Picture1"},
      {Label, u"LabelXX"}}},
    {u"FormNew",
     u"新建成绩库",
     {{List, u"List1", u"", multiSelect},
      {List, u"List2"},
      {List, u"List3"},
      {Editor, u"Text1"},
      {Label, u"LabelFormula", u"总分公式"},
      {Push, u"Command1", u"确定"},
      {Push, u"Command2", u"取消"},
      {Push, u"Command3", u"修改科目"},
      {Label, u"Label1", u"请为新成绩库选择科目"},
      {Label, u"Label2", u"其中末尾含[总分]表示需要设置相应公式计算生成"}}},
    {u"FormXiuGaiKeMu",
     u"修改科目",
     {{List, u"List1"},
      {Memo, u"Text2"},
      {Push, u"Command1", u"确定"},
      {Push, u"Command2", u"取消"}}},
    {u"FormZFGS",
     u"总分公式",
     {{List, u"List1"},
      {List, u"List2"},
      {List, u"List3"},
      {Editor, u"Text1"},
      {Label, u"LabelHintList1", multiSelect},
      {Label, u"LabelHintList3", multiSelect},
      {Push, u"Command1", u"确定"},
      {Push, u"Command2", u"退出"},
      {Push, u"Command3", u"重算总分"}}},
    {u"FormSheZhiZhaoPian",
     u"设置照片",
     {{Editor, u"Text1"},
      {Tool, u"Label2", u"…", u"浏览文件夹"},
      {Label, u"Label3", u"学生照片所在的文件夹"},
      {Check, u"CheckBackup", u"设置前备份成绩库",
       u"在成绩库旁边留一份副本，“文件”菜单的“恢复备份”可以找回来。"},
      {Push, u"Command1", u"确定"}}},
    {u"FormDaoRu",
     u"导入考试成绩",
     {{Editor, u"Text1"},
      {Push, u"Command3", u"浏览"},
      {Combo, u"Combo1"},
      {Push, u"Command1", u"导入"},
      {Push, u"Command2", u"退出"},
      {Label, u"Label1", u"1.打开要导入考试成绩的Excel文件"},
      {Label, u"Label2", u"2.设置要导入考试成绩的数据表"},
      {Label, u"Label3", u"3.设置考试的短名称（如高一下末，最好4个字）"},
      {Label, u"Label5", u"4.设置考试的名称"},
      {Label, u"Label4"},
      {Combo, u"Combo2"},
      {Editor, u"Text2"},
      {Check, u"CheckAdd", u"自动添加新名单"},
      {Check, u"CheckBox1", u"导入后计算总分",
       u"计算考试总分和各科的年级和班级名次，时间长短和人数有关。"},
      {Label, u"Label6",
       u"成绩的填写规则：\n成绩仅允许汉字：[缺考]和[作弊],不含方括号\n"
       "      [缺考]不参与单科统计， [作弊]记为0分，参与单科统计"}}},
    {u"FormDaoRuXinXi",
     u"导入学生信息",
     {{Editor, u"Text1"},
      {Push, u"Command3", u"浏览"},
      {Combo, u"Combo1"},
      {Push, u"Command1", u"导入"},
      {Push, u"Command2", u"退出"},
      {Label, u"Label1", u"1.打开要导入信息的Excel文件"},
      {Label, u"Label2", u"2.选择导入信息所在的数据表"},
      {Label, u"Label3",
       u"数据表前3列必须为：班级、学号、姓名\n其余项目可为下列中的一个或多个:"
       "类别代码、类别、科类、性别、照片名、出生时间、入学时间、学籍号、原毕业学校、身份证、"
       "民族、籍贯、备注"},
      {Label, u"Label4"}}},
    {u"FormDaoRuFenBanXinXi",
     u"导入分班信息",
     {{Editor, u"Text1"},
      {Push, u"Command3", u"浏览"},
      {Combo, u"Combo1"},
      {Push, u"Command1", u"导入"},
      {Push, u"Command2", u"退出"},
      {Label, u"Label1", u"1.打开要导入分班信息的Excel文件"},
      {Label, u"Label2", u"2.设置要导入 分班信息 的数据表"},
      {Label, u"Label3", u"数据表前5列为：班级、学号、姓名、新班级、新学号"},
      {Label, u"Label4"}}},
    {u"FormShuRuMF",
     u"输入各科满分",
     {{Grid, u"MSFlexGrid1"},
      {Editor, u"Text1"},
      {Push, u"Command1", u"确定"},
      {Push, u"Command2", u"设为默认"},
      {Label, u"Label1", u"文科：期中"}}},
    {u"Formgf",
     u"修改错误成绩",
     {{Grid, u"MSFlexGrid1"},
      {Editor, u"Text1"},
      {Push, u"Command1", u"取消"},
      {Push, u"Command2", u"修改完毕"},
      {Label, u"Label1", u"共发现 1 处成绩有问题！"},
      {Label, u"Label2", u"点击相应成绩输入新成绩,回车确认"},
      {Check, u"CheckStore", u"修改后的分值存入成绩库"},
      {Label, u"LabelStore",
       u"这些成绩仍按表格里的内容存入成绩库（空白存成 0），改了也不起作用。"}}},
    {u"FormSet",
     u"分析设置",
     {{Grid, u"MSFlexGrid1"},
      {Editor, u"Text1"},
      {List, u"List1"},
      {Push, u"Command1", u"确定"},
      {Push, u"Command2", u"取消"}}},
    {u"FormXiangXiSZ",
     u"分析设置",
     {{Grid, u"MSFlexGrid1"},
      {Editor, u"Text1"},
      {List, u"List1"},
      {Push, u"Command1", u"确定"},
      {Push, u"Command2", u"取消"},
      {Push, u"Command3", u"删除"}}},
    {u"FormZDYXS",
     u"自定义显示  T分",
     {{Grid, u"MSFlexGrid1"},
      {Panel, u"Picture1"},
      {Combo, u"ComboKL"},
      {Label, u"Label1", u"科类"},
      {Push, u"CommandUP", u"↑", u"上移"},
      {Push, u"CommandDown", u"↓", u"下移"},
      {Push, u"Command1", u"确定"},
      {Push, u"Command2", u"取消"}}},
    {u"FormDaoChu",
     u"导出成绩到Excel",
     {{Label, u"Label4", u"设置导出成绩的范围"},
      {Label, u"LabelListKSMC", u"考试名称"},
      {List, u"ListKSMC"},
      {Label, u"LabelListKM", u"科目"},
      {List, u"ListKM"},
      {Label, u"LabelListBJ", u"班级"},
      {List, u"ListBJ"},
      {Label, u"LabelHint", multiSelect},
      {Check, u"CheckXxYH", u"学生信息单独一行"},
      {Check, u"CheckBJJF", u"添加"},
      {Combo, u"Combo1"},
      {Label, u"LabelCombo1", u"的班级平均分"},
      {Check, u"CheckNJJF", u"添加"},
      {Combo, u"Combo2"},
      {Label, u"LabelCombo2", u"的年级平均分"},
      {Check, u"CheckGradeExam", u"年级平均按所选考试标注",
       u"年级平均一行的名称和分数取自它自己选的考试；不选中时取自班级平均分的考试"},
      {Option, u"Option2", u"学生成绩间空行数"},
      {Editor, u"TextKH"},
      {Check, u"CheckKeepBlocks", u"不拆开学生的成绩块", u"一页放不下的学生整个移到下一页"},
      {Option, u"OptionZXT", u"绘制总分排名折线图(一人一页)"},
      {Label, u"LabelXX", u"正在导出成绩..."},
      {Push, u"Command1", u"导出"},
      {Push, u"Command2", u"退出"},
      {Push, u"Command3", u"格式设置"}}},
    {u"FormGeRenChengJi",
     u"学生成绩分析",
     {{Label, u"LabelFind", u"查找学生"},
      {Editor, u"TextFind", u"", u"回车或 F3 找下一个，按住 Shift 找上一个"},
      {Tree, u"TreeView1"},
      {Panel, u"Picture2"},
      {Panel, u"Frame1"},
      {Option, u"Option1", u"年名"},
      {Option, u"Option2", u"班名"},
      {Check, u"CheckBox1_1", u"语文"},
      {Check, u"CheckBox1_3", u"总分"},
      {Push, u"Command1_1", u"", u"改变颜色"},
      {Push, u"Command1_3", u"", u"改变颜色"},
      {Grid, u"MSFlexGrid1"},
      {Panel, u"PictureW", u"", u"上下拖动，或按 ↑↓，改变表格与图的高度"},
      {Panel, u"Picture1"},
      {Label, u"LabelStuName"},
      {Label, u"LabelKSMC_0"}}},
    {u"FormXGXX",
     u"修改学生信息",
     {{Label, u"LabelFind", u"查找学生"},
      {Editor, u"TextFind", u"", u"回车或 F3 找下一个，按住 Shift 找上一个"},
      {Tree, u"TreeView1"},
      {Grid, u"MSFlexGrid1"},
      {Editor, u"Text1"},
      {Panel, u"Picture1", u"", u"点“照片名”一行，选择照片文件"},
      {Label, u"Image1"},
      {Push, u"Command1", u"修改"},
      {Push, u"Command2", u"退出"},
      {Panel, u"Frame2"},
      {List, u"List1"}}},
    {u"FormXiuGaiChengJi",
     u"修改成绩",
     {{Combo, u"ComboKS"},
      {Editor, u"TextBJ"},
      {Editor, u"TextXH"},
      {Editor, u"TextXM"},
      {Combo, u"ComboKM"},
      {Editor, u"TextCJ"},
      {Push, u"Command1", u"修改完毕"},
      {Label, u"Label2", u"输入成绩后,回车确认"}}},
    {u"FormDelKM",
     u"删除科目",
     {{List, u"ListKM"},
      {Label, u"Label4", u"选择要删除的科目"},
      {Label, u"LabelHintListKM", multiSelect},
      {Push, u"Command1", u"删除"},
      {Push, u"Command2", u"退出"},
      {Check, u"CheckBackup", u"删除前备份成绩库",
       u"在成绩库旁边留一份副本，“文件”菜单的“恢复备份”可以找回来。"}}},
    {u"FormJiaoShiMingDan",
     u"设置教师名单",
     {{Combo, u"Combo1"},
      {Label, u"Label1", u"的教师名单"},
      {Grid, u"MSFlexGrid1"},
      {Editor, u"Text1"},
      {List, u"List1"},
      {List, u"List2"},
      {Push, u"Command1", u"修改总名单"},
      {Push, u"Command2", u"退出"},
      {Push, u"Command3", u"保存"},
      {Push, u"Command4", u"载入名单"}}},
    {u"FormZMD",
     u"修改教师总名单",
     {{Label, u"Label1", u"格式为：科目_教师名\n每行一位教师，位置任意。"},
      {Memo, u"Text1"},
      {Push, u"Command1", u"保存"},
      {Push, u"Command2", u"退出"}}},
    {u"FormSheZhiWenLi",
     u"设置科类(文理科)",
     {{Label, u"LabelList1", u"班级"},
      {List, u"List1"},
      {Label, u"LabelHintList1", multiSelect},
      {Label, u"Label1", u"选中班级科类设置为：理"},
      {Check, u"CheckBackup", u"设置前备份成绩库",
       u"在成绩库旁边留一份副本，“文件”菜单的“恢复备份”可以找回来。"},
      {Push, u"Command1", u"确定"},
      {Push, u"Command2", u"退出"}}},
    {u"FormZhuanBan",
     u"转班",
     {{Combo, u"Combo1"},
      {Combo, u"Combo2"},
      {Editor, u"Combo3"},
      {Combo, u"Combo4"},
      {Combo, u"Combo5"},
      {Editor, u"Combo6"},
      {Combo, u"Combo7"},
      {Label, u"LabelClass1", u"班"},
      {Label, u"LabelNumber1", u"号"},
      {Label, u"LabelClass2", u"班"},
      {Label, u"LabelNumber2", u"号"},
      {Push, u"Command1", u"执行", u"本窗口暂不执行"},
      {Push, u"Command2", u"退出"},
      {Label, u"LabelMoves", u"要移动、交换或删除个别学生，请用："},
      {Push, u"buttonMoves", u"学生调整…"}}},
    {u"StudentMovesScreen",
     u"学生调整",
     {{Editor, u"TextFind", u"", u"回车或 F3 找下一个，按住 Shift 找上一个"},
      {Tree, u"TreeView1"},
      {Push, u"buttonMove", u"移到…"},
      {Push, u"buttonSwap", u"交换…"},
      {Push, u"buttonRemove", u"删除…"},
      {Label, u"LabelPlan", u"要做的调整"},
      {Grid, u"PlanGrid"},
      {Check, u"CheckBackup", u"执行前备份成绩库",
       u"在成绩库旁边留一份副本，“文件”菜单的“恢复备份”可以找回来。"},
      {Push, u"buttonTakeBack", u"撤回一项", u"撤回表里选中的一项调整"},
      {Push, u"buttonRun", u"执行"},
      {Push, u"buttonClose", u"关闭"}}},
    {u"ExamDetailsScreen",
     u"考试信息",
     {{Combo, u"ComboExam"},
      {Editor, u"TextName"},
      {Grid, u"GridItems"},
      {Memo, u"TextChanges"},
      {Check, u"CheckBackup", u"保存前备份成绩库",
       u"在成绩库旁边留一份副本，“文件”菜单的“恢复备份”可以找回来。"},
      {Label, u"LabelExam", u"考试"},
      {Label, u"LabelName", u"名称"},
      {Label, u"LabelHint", u"在“改为”一列里点一格或按 F2 修改。没有考的科目满分留空。"},
      {Label, u"LabelChanges", u"将要保存的改动"},
      {Push, u"ButtonSave", u"保存"},
      {Push, u"ButtonClose", u"关闭"}}},
    {u"AddSubjectScreen",
     u"添加科目",
     {{Editor, u"TextName"},
      {Editor, u"TextFormula"},
      {List, u"ListSubjects"},
      {Check, u"CheckBackup", u"添加前备份成绩库",
       u"在成绩库旁边留一份副本，“文件”菜单的“恢复备份”可以找回来。"},
      {Label, u"LabelName", u"科目名称"},
      {Label, u"LabelHint",
       u"名称以“总分”结尾的是总分，由公式计算：在下面选中科目，或者直接输入公式。"},
      {Label, u"LabelFormula", u"总分公式"},
      {Label, u"LabelListSubjects", u"现有科目"},
      {Label, u"LabelHintListSubjects", multiSelect},
      {Push, u"ButtonAdd", u"添加"},
      {Push, u"ButtonClose", u"关闭"}}},
    {u"AddStudentScreen",
     u"添加学生",
     {{Combo, u"ComboClass"},
      {Combo, u"ComboStream"},
      {Label, u"LabelClassNote", u"科类（文）和类别代码（1）与本班相同。"},
      {Editor, u"TextNumber"},
      {Editor, u"TextName"},
      {Editor, u"Text性别"},
      {Editor, u"Text备注"},
      {List, u"ListStudents"},
      {Label, u"LabelListStudents", u"本班学生"},
      {Push, u"ButtonSave", u"保存"},
      {Push, u"ButtonSaveNext", u"保存并再添一个"},
      {Push, u"ButtonClose", u"关闭"}}},
    {u"ReportScreen",
     u"转换报告",
     {{Grid, u"ReportGrid"}, {Push, u"ReportSave", u"保存…"}, {Push, u"ReportClose", u"关闭"}}},
    {u"FigureScreen",
     u"查看名单",
     {{Grid, u"figureGrid"},
      {Check, u"figureSqlShown", u"显示SQL语句"},
      {Push, u"figureSort", u"按所在列排序"},
      {Push, u"figureCopy", u"全部复制"},
      {Push, u"figureExport", u"导出到Excel"},
      {Push, u"figureClose", u"关闭"}}},
    {u"RestoreScreen",
     u"恢复备份",
     {{Grid, u"gridCopies"},
      {Check, u"checkNames", u"列出名称"},
      {Grid, u"gridDifferences"},
      {Push, u"buttonCompare", u"与现在比较", u"列出选中的备份和现在的成绩库的不同之处"},
      {Push, u"buttonOtherFile", u"其他文件…", u"选择放在别处的备份，例如 U 盘上的"},
      {Push, u"buttonRemove", u"删除备份", u"删除选中的备份文件"},
      {Push, u"buttonRestore", u"恢复", u"成绩库换成选中的备份，先备份现在的"},
      {Push, u"buttonClose", u"关闭"}}},
    {u"frmAbout", u"关于软件", {}},
};

QString captionOf(const QWidget* widget)
{
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
        return support::withoutKey(button->text());
    if (const auto* label = qobject_cast<const QLabel*>(widget))
        return support::withoutKey(label->text());
    return {};
}

void checkControl(const QWidget& window, const Control& expected)
{
    const QString name = QString::fromUtf16(expected.name);
    SCOPED_TRACE(name.toStdString());
    const auto* widget = window.findChild<QWidget*>(name);
    ASSERT_NE(widget, nullptr);
    EXPECT_TRUE(widget->inherits(expected.kind)) << widget->metaObject()->className();
    EXPECT_EQ(captionOf(widget), QString::fromUtf16(expected.caption));
    EXPECT_EQ(widget->toolTip(), QString::fromUtf16(expected.tip));
    EXPECT_EQ(window.findChildren<QWidget*>(name).size(), 1) << "the name is given once";
}

class ControlTables : public support::Gallery
{
};

TEST_F(ControlTables, EveryControlHasItsNameCaptionAndTip)
{
    for (const Window& expected : windows) {
        const QString name = QString::fromUtf16(expected.name);
        SCOPED_TRACE(name.toStdString());
        const QWidget& window = open(name);
        EXPECT_EQ(window.objectName(), name);
        if (expected.title) {
            EXPECT_EQ(window.windowTitle(), QString::fromUtf16(expected.title));
        }
        for (const Control& control : expected.controls)
            checkControl(window, control);
    }
}

} // namespace
