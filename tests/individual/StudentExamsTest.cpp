#include "individual/StudentExams.h"

#include <gtest/gtest.h>

#include "platform/grid/GridText.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace individual {

namespace {

using namespace Qt::StringLiterals;
using grid::gridText;
using support::TestLibrary;

const QString heading = u"考试名称\t语文\t数学\t总分\t语名\t数名\t总名\n"_s;

class ExamsOfAStudent : public testing::Test
{
protected:
    void SetUp() override
    {
        test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 150}});
        test.addExam(u"期末"_s, u"理"_s, 2, {{u"语文"_s, 150}});
        test.reload();
        id = test.addStudent(1, 5, u"王五"_s, u"理"_s);
    }

    TestLibrary test{{u"语文"_s, u"数学"_s, u"总分"_s}};
    qint64 id = 0;
};

TEST_F(ExamsOfAStudent, BeforeAChoiceTheGridHasARowForEachExam)
{
    const StudentExams student(test.scores);
    EXPECT_EQ(gridText(student.MSFlexGrid1), heading + u"\t\t\t\t\t\t\n\t\t\t\t\t\t\n"_s);
    EXPECT_EQ(student.StuID, 0);
    EXPECT_EQ(student.StuName.text(), QString());
}

TEST_F(ExamsOfAStudent, ScoresStandAheadOfTheRanksInTheGrade)
{
    test.addScores(u"期中"_s, 1, 5,
                   {{u"考试编号"_s, 1},
                    {u"语文"_s, 101.5},
                    {u"数学"_s, 90},
                    {u"语文年名"_s, 7},
                    {u"语文班名"_s, 2},
                    {u"数学年名"_s, 12}});
    StudentExams student(test.scores);
    student.ShowGeRenCJ(id);
    EXPECT_EQ(gridText(student.MSFlexGrid1), heading + u"期中\t101.5\t90\t0\t7\t12\t0\n"_s);
    EXPECT_EQ(student.MSFlexGrid1.Rows(), 2);
    EXPECT_EQ(student.StuID, id);
    EXPECT_TRUE(student.MSFlexGrid1.Redraw);
}

TEST_F(ExamsOfAStudent, ExamsStandInTheirOrder)
{
    test.addScores(u"期末"_s, 1, 5, {{u"考试编号"_s, 2}, {u"语文"_s, 80}});
    test.addScores(u"期中"_s, 1, 5, {{u"考试编号"_s, 1}, {u"语文"_s, 70}});
    StudentExams student(test.scores);
    student.ShowGeRenCJ(id);
    EXPECT_EQ(student.exams(), (QStringList{u"期中"_s, u"期末"_s}));
}

TEST_F(ExamsOfAStudent, WhatIsBelowZeroReadsAsAbsent)
{
    test.addScores(u"期中"_s, 1, 5,
                   {{u"考试编号"_s, 1}, {u"语文"_s, -1}, {u"语文年名"_s, -1}, {u"数学"_s, 0}});
    StudentExams student(test.scores);
    student.ShowGeRenCJ(id);
    EXPECT_EQ(gridText(student.MSFlexGrid1), heading + u"期中\t缺考\t0\t0\t缺考\t0\t0\n"_s);
}

TEST_F(ExamsOfAStudent, TwoRowsOfOneExamStandAsTheyAre)
{
    test.addScores(u"期中"_s, 1, 5, {{u"考试编号"_s, 1}, {u"语文"_s, 70}});
    test.addScores(u"期中"_s, 1, 5, {{u"考试编号"_s, 1}, {u"语文"_s, 80}});
    test.addScores(u"期末"_s, 1, 5, {{u"考试编号"_s, 2}, {u"语文"_s, 90}});
    StudentExams student(test.scores);
    student.ShowGeRenCJ(id);
    EXPECT_EQ(student.exams(), (QStringList{u"期中"_s, u"期中"_s, u"期末"_s}));
    EXPECT_EQ(student.MSFlexGrid1.TextMatrix(2, 1), u"80"_s);
}

TEST_F(ExamsOfAStudent, WhoChangedClassKeepsTheClassOfTheEarliestExam)
{
    test.addScores(u"期中"_s, 1, 5, {{u"考试编号"_s, 1}});
    test.addScores(
        u"期末"_s, 1, 5,
        {{u"考试编号"_s, 2}, {u"班级"_s, 9}, {u"姓名"_s, u"王武"_s}, {u"科类"_s, u"文"_s}});
    StudentExams student(test.scores);
    student.ShowGeRenCJ(id);
    EXPECT_EQ(student.StuBJ.text(), u"1"_s);
    EXPECT_EQ(student.StuKL.text(), u"理"_s);
    EXPECT_EQ(student.StuName.text(), u"王五"_s);
}

TEST_F(ExamsOfAStudent, OneWithoutExamsCostsItsMessagesAndLeavesTheHeading)
{
    test.addScores(u"期中"_s, 1, 5, {{u"考试编号"_s, 1}});
    const qint64 other = test.addStudent(1, 6, u"赵六"_s, u"理"_s);
    StudentExams student(test.scores);
    student.ShowGeRenCJ(id);
    student.ShowGeRenCJ(other);
    EXPECT_EQ(gridText(student.MSFlexGrid1), heading);
    EXPECT_EQ(student.MSFlexGrid1.Rows(), 1);
    EXPECT_EQ(student.StuID, other);
    EXPECT_EQ(student.StuName.text(), u"王五"_s);
    const QString message = u"没有当前记录。 - Sub ShowGeRenCJ/FormGeRenChenJi"_s;
    EXPECT_EQ(test.dialogs.failures, (QStringList{message, message, message}));
}

TEST_F(ExamsOfAStudent, AStudentDeletedMeanwhileIsOneWithoutExams)
{
    StudentExams student(test.scores);
    student.ShowGeRenCJ(4711);
    EXPECT_EQ(gridText(student.MSFlexGrid1), heading);
    EXPECT_EQ(test.dialogs.failures.size(), 3);
}

TEST_F(ExamsOfAStudent, AColumnThatIsGoneFailsCellByCellAndTheOthersStand)
{
    test.addScores(u"期中"_s, 1, 5, {{u"考试编号"_s, 1}, {u"语文"_s, 70}, {u"语文年名"_s, 3}});
    StudentExams student(test.scores);
    test.execute(u"ALTER TABLE 成绩表 DROP COLUMN 数学"_s);
    student.ShowGeRenCJ(id);
    EXPECT_EQ(gridText(student.MSFlexGrid1), heading + u"期中\t70\t\t0\t3\t0\t0\n"_s);
    EXPECT_EQ(test.dialogs.failures,
              QStringList{u"没有名为“数学”的列。 - Sub ShowGeRenCJ/FormGeRenChenJi"_s});
}

TEST_F(ExamsOfAStudent, HostileNamesStandInTheGridAsTheyAre)
{
    const QString hostile = u"'); drop table 成绩表; --\n期"_s;
    test.addScores(hostile, 1, 5, {{u"考试编号"_s, 1}});
    StudentExams student(test.scores);
    student.ShowGeRenCJ(id);
    EXPECT_EQ(student.exams(), QStringList{hostile});
    EXPECT_EQ(test.dialogs.failures, QStringList());
}

TEST_F(ExamsOfAStudent, ColumnsAreTwoCharactersWideAndTheExamsFour)
{
    const StudentExams student(test.scores, 200);
    EXPECT_EQ(student.MSFlexGrid1.ColWidth(0), 920);
    EXPECT_EQ(student.MSFlexGrid1.ColWidth(1), 460);
    EXPECT_EQ(student.MSFlexGrid1.ColWidth(6), 460);
}

TEST_F(ExamsOfAStudent, OnlyHeadingsHaveATip)
{
    StudentExams student(test.scores);
    grid::FlexGrid& grid = student.MSFlexGrid1;
    EXPECT_EQ(cellTip(grid, 0, 1), u"语文"_s);
    EXPECT_EQ(cellTip(grid, 1, 1), QString());
    grid.setTextMatrix(0, 1, QString());
    EXPECT_EQ(cellTip(grid, 0, 1), u"此科未考试！"_s);
}

TEST_F(ExamsOfAStudent, TheTitleSaysWhoIsShown)
{
    EXPECT_EQ(studentTitle(test.scores, id), u"个人分析   -  王五 1 班 5 号 ，理"_s);
}

TEST(ExamsOfALibrary, WithoutExamsAndColumnsHaveTheirHeadingAlone)
{
    TestLibrary test{{u"语文"_s}};
    const StudentExams student(test.scores);
    EXPECT_EQ(gridText(student.MSFlexGrid1), u"考试名称\t语文\t语名\n"_s);
}

} // namespace

} // namespace individual
