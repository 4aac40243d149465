#include "gui/PaintedTexts.h"
#include "gui/ProgressCanceller.h"
#include "gui/ScoreExportFixture.h"

namespace {

using namespace Qt::StringLiterals;

class ScoreExportScreen : public support::ScoreExportFixture
{
};

TEST_F(ScoreExportScreen, ComesUpWithItsListsAndDefaultsAndNothingChosen)
{
    EXPECT_EQ(form->windowTitle(), u"导出成绩到Excel"_s);
    EXPECT_EQ(items(u"ListKSMC"_s), (QStringList{u"期初"_s, u"期中"_s}));
    EXPECT_EQ(items(u"ListKM"_s), (QStringList{u"语文"_s, u"数学"_s, u"总分"_s}));
    EXPECT_EQ(items(u"ListBJ"_s), (QStringList{u"1"_s, u"2"_s, u"10"_s})) << "by number";
    for (const QString& name : {u"ListKSMC"_s, u"ListKM"_s, u"ListBJ"_s})
        EXPECT_EQ(selected(name), QStringList()) << name.toStdString();
    for (const QString& name : {u"Combo1"_s, u"Combo2"_s}) {
        EXPECT_EQ(examsOf(name), (QStringList{u"期初"_s, u"期中"_s}));
        EXPECT_EQ(combo(name)->currentIndex(), -1);
        EXPECT_EQ(combo(name)->placeholderText(), u"选择考试"_s);
    }
    for (const QString& name : {u"CheckXxYH"_s, u"CheckBJJF"_s, u"CheckNJJF"_s, u"CheckGradeExam"_s,
                                u"CheckKeepBlocks"_s})
        EXPECT_FALSE(find<QCheckBox>(name)->isChecked()) << name.toStdString();
    EXPECT_TRUE(find<QRadioButton>(u"Option2"_s)->isChecked());
    EXPECT_EQ(find<QLineEdit>(u"TextKH"_s)->text(), u"2"_s);
    EXPECT_FALSE(find<QLabel>(u"LabelXX"_s)->isVisible());
    EXPECT_FALSE(find<QLabel>(u"LabelMissing"_s)->isVisible());
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(ScoreExportScreen, TickingABoxOffersTheLastExamAndUntickingLeavesIt)
{
    for (const auto& [box, exams] :
         {std::pair{u"CheckBJJF"_s, u"Combo1"_s}, std::pair{u"CheckNJJF"_s, u"Combo2"_s}}) {
        SCOPED_TRACE(box.toStdString());
        toggle(box);
        EXPECT_EQ(combo(exams)->currentText(), u"期中"_s);
        combo(exams)->setFocus();
        QTest::keyClick(combo(exams), Qt::Key_Up);
        EXPECT_EQ(combo(exams)->currentText(), u"期初"_s);
        toggle(box);
        EXPECT_EQ(combo(exams)->currentText(), u"期初"_s);
        toggle(box);
        EXPECT_EQ(combo(exams)->currentText(), u"期中"_s) << "the last one again";
    }
}

TEST_F(ScoreExportScreen, ChoosingAnExamTicksNoBox)
{
    combo(u"Combo1"_s)->setFocus();
    QTest::keyClick(combo(u"Combo1"_s), Qt::Key_Down);
    EXPECT_EQ(combo(u"Combo1"_s)->currentText(), u"期初"_s);
    EXPECT_EQ(combo(u"Combo2"_s)->currentIndex(), -1);
    EXPECT_FALSE(find<QCheckBox>(u"CheckBJJF"_s)->isChecked());
}

TEST_F(ScoreExportScreen, TheListsAreSelectedByKeys)
{
    list(u"ListBJ"_s)->setFocus();
    QTest::keyClick(list(u"ListBJ"_s), Qt::Key_Home);
    QTest::keyClick(list(u"ListBJ"_s), Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(selected(u"ListBJ"_s), (QStringList{u"1"_s, u"2"_s}));
    QTest::keyClick(list(u"ListBJ"_s), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(selected(u"ListBJ"_s).size(), 3);
}

TEST_F(ScoreExportScreen, WhatIsNotChosenIsAskedForInTurn)
{
    press(u"Command1"_s);
    click(u"ListKSMC"_s, u"期中"_s);
    press(u"Command1"_s);
    click(u"ListKM"_s, u"语文"_s);
    press(u"Command1"_s);
    click(u"ListBJ"_s, u"1"_s);
    chooseTheChart();
    press(u"Command1"_s);
    EXPECT_EQ(
        test.dialogs.shown,
        (QStringList{u"请选择 要导出成绩的 考试名称！"_s, u"请选择要导出成绩的 科目！"_s,
                     u"请选择 要导出成绩的 班级！"_s, u"没有选择总分，不能根据总分绘图！"_s}));
    EXPECT_TRUE(applications.empty());
    EXPECT_FALSE(find<QLabel>(u"LabelXX"_s)->isVisible());
}

TEST_F(ScoreExportScreen, WritesABlockForEachStudentOfTheChosenClasses)
{
    selectAll(u"ListKSMC"_s);
    click(u"ListKM"_s, u"语文"_s);
    click(u"ListBJ"_s, u"1"_s);
    press(u"Command1"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"成绩导出完毕！"_s});
    EXPECT_EQ(row(sheet(), 1, 7), u"考试名称|班级|学号|姓名|语文|语名|"_s);
    EXPECT_EQ(row(sheet(), 2, 6), u"期初|1|1|王芳|90|2"_s);
    EXPECT_EQ(row(sheet(), 3, 6), u"期中|1|1|王芳|100|1"_s);
    EXPECT_EQ(row(sheet(), 6, 6), u"考试名称|班级|学号|姓名|语文|语名"_s)
        << "two blank rows between";
    EXPECT_EQ(row(sheet(), 7, 6), u"期中|1|2|陈静|80|2"_s);
    EXPECT_EQ(sheet().lastUsedRow(), 7);
    EXPECT_TRUE(applications.at(0)->Visible());
}

TEST_F(ScoreExportScreen, TheNumberOfBlankRowsIsWhatIsTyped)
{
    selectAll(u"ListKSMC"_s);
    click(u"ListKM"_s, u"语文"_s);
    click(u"ListBJ"_s, u"1"_s);
    int book = 0;
    for (const auto& [typed, second] :
         {std::pair{u"-3"_s, 7}, std::pair{u"abc"_s, 4}, std::pair{u"1.9"_s, 5}}) {
        type(u"TextKH"_s, typed);
        press(u"Command1"_s);
        EXPECT_EQ(sheet(++book).Cells(second, 1).text(), u"考试名称"_s) << typed.toStdString();
    }
}

TEST_F(ScoreExportScreen, TheStudentsLineAndTheAveragesFollowTheTicks)
{
    click(u"ListKSMC"_s, u"期中"_s);
    click(u"ListKM"_s, u"语文"_s);
    click(u"ListBJ"_s, u"1"_s);
    for (const QString& box : {u"CheckXxYH"_s, u"CheckBJJF"_s, u"CheckNJJF"_s})
        toggle(box);
    combo(u"Combo2"_s)->setFocus();
    QTest::keyClick(combo(u"Combo2"_s), Qt::Key_Up);
    press(u"Command1"_s);
    EXPECT_EQ(sheet().Cells(1, 1).text(), u"1 班1 号：王芳"_s);
    EXPECT_EQ(row(sheet(), 2, 4), u"考试名称|语文|语名|"_s);
    EXPECT_EQ(row(sheet(), 3, 3), u"期中|100|1"_s);
    EXPECT_EQ(row(sheet(), 4, 2), u"期中班平|90"_s);
    EXPECT_EQ(row(sheet(), 5, 2), u"期中班平|90"_s) << "label and exam of the other box";
    toggle(u"CheckGradeExam"_s);
    press(u"Command1"_s);
    EXPECT_EQ(row(sheet(2), 5, 2), u"期初年平|90"_s);
}

TEST_F(ScoreExportScreen, AGradeAverageAloneIsExplainedBeforeTheExport)
{
    selectEverything();
    toggle(u"CheckNJJF"_s);
    const QString note = u"只勾选了年级平均分：它的行按班级平均分的考试标注为“选择考试班平”，"
                         "平均分全部是 0，因为没有名为“选择考试”的考试。"
                         "要按年级平均分所选的“期中”计算，请勾选“年级平均按所选考试标注”。"_s;
    test.dialogs.expect(note, u"取消"_s);
    press(u"Command1"_s);
    EXPECT_EQ(test.dialogs.safeOf(note), u"取消"_s);
    EXPECT_TRUE(applications.empty());
    test.dialogs.expect(note, u"继续导出"_s);
    press(u"Command1"_s);
    EXPECT_EQ(row(sheet(), 4, 6), u"选择考试班平||||0|"_s);
    toggle(u"CheckGradeExam"_s);
    press(u"Command1"_s);
    EXPECT_EQ(test.dialogs.questions.size(), 2) << "with our option there is nothing to tell";
}

TEST_F(ScoreExportScreen, AChartStandsBelowEachStudentOnAPageOfHisOwn)
{
    selectEverything();
    chooseTheChart();
    click(u"ListBJ"_s, u"10"_s);
    press(u"Command1"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"成绩导出完毕！"_s});
    EXPECT_EQ(sheet().drawings().size(), 9U) << "a chart, a line and a label for three students";
    EXPECT_EQ(sheet().pageBreaks(), (std::vector<int>{31, 62, 93}));
}

TEST_F(ScoreExportScreen, EachLayoutAsksForItsOwnColumns)
{
    click(u"ListKM"_s, u"语文"_s);
    press(u"Command3"_s);
    chooseTheChart();
    toggle(u"CheckXxYH"_s);
    press(u"Command3"_s);
    EXPECT_EQ(columnsRequested,
              (QStringList{u"导出成绩|导出成绩False"_s, u"导出成绩|导出成绩True"_s}));
    EXPECT_EQ(test.scores.settings.DisplayItems,
              (QStringList{u"考试名称"_s, u"语文"_s, u"语文年名"_s}));
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(ScoreExportScreen, TheSavedListOfTheLayoutIsTakenByTheExport)
{
    test.execute(u"insert into 自定义显示表 values('导出成绩False','姓名,考试名称,数学')"_s);
    click(u"ListKSMC"_s, u"期中"_s);
    click(u"ListKM"_s, u"语文"_s);
    click(u"ListBJ"_s, u"2"_s);
    press(u"Command1"_s);
    EXPECT_EQ(row(sheet(), 1, 4), u"姓名|考试名称|数学|"_s);
    EXPECT_EQ(row(sheet(), 2, 3), u"赵强|期中|"_s);
}

TEST_F(ScoreExportScreen, SaysThatItExportsAsLongAsItDoes)
{
    selectEverything();
    auto* sign = find<QLabel>(u"LabelXX"_s);
    const support::PaintedTexts painted(sign);
    press(u"Command1"_s);
    EXPECT_EQ(painted.texts, QStringList{u"正在导出成绩..."_s});
    EXPECT_FALSE(sign->isVisible());
}

TEST_F(ScoreExportScreen, LeavingOnlyHidesItAndWhatWasChosenStays)
{
    click(u"ListKSMC"_s, u"期初"_s);
    click(u"ListBJ"_s, u"2"_s);
    toggle(u"CheckBJJF"_s);
    type(u"TextKH"_s, u"5"_s);
    press(u"Command2"_s);
    EXPECT_FALSE(form->isVisible());
    addExam(u"期末"_s, 3);
    test.execute(u"delete * from 信息表 where 班级=2"_s);
    test.reload();
    form->Form_Load();
    form->show();
    EXPECT_EQ(items(u"ListKSMC"_s), (QStringList{u"期初"_s, u"期中"_s, u"期末"_s}));
    EXPECT_EQ(selected(u"ListKSMC"_s), QStringList{u"期初"_s});
    EXPECT_EQ(items(u"ListBJ"_s), (QStringList{u"1"_s, u"10"_s}));
    EXPECT_EQ(selected(u"ListBJ"_s), QStringList());
    EXPECT_EQ(combo(u"Combo1"_s)->currentText(), u"期中"_s);
    EXPECT_EQ(find<QLineEdit>(u"TextKH"_s)->text(), u"5"_s);
}

TEST_F(ScoreExportScreen, NeitherEscNorEnterLeavesIt)
{
    QTest::keyClick(form.get(), Qt::Key_Escape);
    QTest::keyClick(form.get(), Qt::Key_Return);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(ScoreExportScreen, CancelKeepsWhatWasWrittenAndTheScreenUsable)
{
    test.execute(u"insert into 信息表(班级,学号,姓名,科类) with recursive n(x) as "
                 "(select 3 union all select x+1 from n where x<100000) "
                 "select 1,x,'学生','文' from n"_s);
    test.execute(u"insert into 成绩表(id,班级,学号,姓名,科类,考试名称,考试编号,语文) "
                 "select ID,班级,学号,姓名,科类,'期中',2,80 from 信息表 where 学号>2"_s);
    selectAll(u"ListKSMC"_s);
    selectAll(u"ListKM"_s);
    click(u"ListBJ"_s, u"1"_s);
    chooseTheChart();
    const support::ProgressCanceller canceller;
    press(u"Command1"_s);
    EXPECT_TRUE(canceller.text.startsWith(u"正在导出成绩... "_s)) << canceller.text.toStdString();
    EXPECT_EQ(sheet().Cells(1, 1).text(), u"考试名称"_s);
    EXPECT_LT(sheet().drawings().size(), 300000U);
    EXPECT_FALSE(find<QLabel>(u"LabelXX"_s)->isVisible());
    EXPECT_TRUE(applications.at(0)->Visible());
    ASSERT_EQ(test.dialogs.shown.size(), 1);
    EXPECT_TRUE(test.dialogs.shown[0].startsWith(u"导出已取消，已经写入的 "_s));
    list(u"ListBJ"_s)->clearSelection();
    click(u"ListBJ"_s, u"2"_s);
    press(u"Command1"_s);
    EXPECT_EQ(test.dialogs.shown.last(), u"成绩导出完毕！"_s);
}

} // namespace
