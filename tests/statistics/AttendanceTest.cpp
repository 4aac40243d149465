#include "ReportFixture.h"

namespace {

using namespace Qt::StringLiterals;
using statistics::TJKSRS;
using statistics::Transfer;

using Attendance = ReportTest;

const QString question =
    u"分析参数错误！: 当前操作只针对一次考试，只对期末  进行统计，是否继续？"_s;

TEST_F(Attendance, CountsSittingAbsentAndAllWithTotals)
{
    TJKSRS(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(rows(), (QStringList{
                          u"考试人数|考试人数|考试人数|考试人数"_s,
                          u"班级|语文\n参试/缺考/总计|数学\n参试/缺考/总计|总分\n参试/缺考/总计"_s,
                          u"1班|2/1/3|3/0/3|3/0/3"_s,
                          u"2班|1/0/1|1/0/1|1/0/1"_s,
                      }));
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(Attendance, LaysOutOneHeadingHighAndAllCentred)
{
    TJKSRS(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(grid.FixedRows, 0);
    EXPECT_EQ(grid.MergeCells, 2);
    EXPECT_EQ(grid.mergeRows(), std::set<int>{0});
    EXPECT_EQ(grid.mergeCols(), std::set<int>{});
    EXPECT_TRUE(grid.WordWrap);
    EXPECT_EQ(grid.RowHeight(1), 4 * grid.RowHeight(0));
    EXPECT_EQ(grid.RowHeight(2), grid.RowHeight(0));
    EXPECT_EQ(grid.ColWidth(2), 1100);
    EXPECT_EQ(grid.ColAlignment(0), 4);
}

TEST_F(Attendance, ClassWithoutRowsShowsZeros)
{
    library.addStudent(3, 1, u"己"_s, u"理"_s);
    library.reload();
    TJKSRS(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(4), u"3班|0/0/0|0/0/0|0/0/0"_s);
}

TEST_F(Attendance, StudentWithoutAValueIsInNoCount)
{
    library.execute(u"update 成绩表 set 语文=null where 姓名='甲'"_s);
    TJKSRS(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(2), u"1班|1/1/2|3/0/3|3/0/3"_s);
}

TEST_F(Attendance, SecondStreamStandsDirectlyBelowWithItsNameInTheTitle)
{
    addSecondStream();
    TJKSRS(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(rows(), (QStringList{
                          u"文科考试人数|文科考试人数||"_s,
                          u"班级|语文\n参试/缺考/总计||"_s,
                          u"5班|1/0/1||"_s,
                          u"理科考试人数|理科考试人数|理科考试人数|理科考试人数"_s,
                          u"班级|语文\n参试/缺考/总计|数学\n参试/缺考/总计|总分\n参试/缺考/总计"_s,
                          u"1班|2/1/3|3/0/3|3/0/3"_s,
                          u"2班|1/0/1|1/0/1|1/0/1"_s,
                      }));
}

TEST_F(Attendance, NarrowerSecondStreamKeepsTheWidthAndFillsTheTitle)
{
    addSecondStream();
    library.execute(u"update 信息表 set 科类='文' where 班级=5"_s);
    library.execute(u"update 考试名称表 set 数学=50 where 科类='文'"_s);
    library.execute(u"update 考试名称表 set 数学=null, 总分=null where 科类='理'"_s);
    TJKSRS(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(3), u"理科考试人数|理科考试人数|理科考试人数"_s);
    EXPECT_EQ(row(4), u"班级|语文\n参试/缺考/总计|"_s);
}

TEST_F(Attendance, RefusingSeveralExamsLeavesTheGridUntouched)
{
    addExam(u"期末"_s, 2);
    exams = u"期中,期末"_s;
    grid.setTextMatrix(0, 0, u"早先"_s);
    library.dialogs.expect(u"是否继续"_s, runtime::Answer::Cancel);
    TJKSRS(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(grid.TextMatrix(0, 0), u"早先"_s);
    EXPECT_EQ(library.dialogs.shown, QStringList{question});
    EXPECT_EQ(library.dialogs.look(u"是否继续"_s),
              (support::BoxLook{u"分析参数错误！"_s, runtime::Buttons::OkCancel,
                                runtime::Icon::Question}));
}

TEST_F(Attendance, AcceptingSeveralExamsCountsTheLast)
{
    addExam(u"期末"_s, 2);
    score(u"期末"_s, 1, 1, {50, 20, 70, 1});
    library.reload();
    exams = u"期中,期末"_s;
    library.dialogs.expect(u"是否继续"_s, runtime::Answer::Ok);
    TJKSRS(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(exams, u"期末"_s);
    EXPECT_EQ(row(2), u"1班|1/0/1|1/0/1|1/0/1"_s);
}

TEST_F(Attendance, HeadingRowOfEachStreamIsHigh)
{
    addSecondStream();
    TJKSRS(context, exams, grid, Transfer::GridOnly);
    const int usual = grid.RowHeight(0);
    for (int number = 0; number < grid.Rows(); ++number)
        EXPECT_EQ(grid.RowHeight(number), number == 1 || number == 4 ? 4 * usual : usual);
    EXPECT_EQ(grid.mergeRows(), (std::set<int>{0, 3}));
}

TEST_F(Attendance, CheatedZeroCountsAsSitting)
{
    library.execute(u"update 成绩表 set 语文=0 where 姓名='丙'"_s);
    TJKSRS(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(2), u"1班|3/0/3|3/0/3|3/0/3"_s);
}

TEST_F(Attendance, CategoryFilterLimitsTheCounts)
{
    library.execute(u"update 成绩表 set 类别代码=2 where 姓名='甲'"_s);
    library.scores.settings.CategoryFilter = u" and (类别代码=2)"_s;
    TJKSRS(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(2), u"1班|1/0/1|1/0/1|1/0/1"_s);
    EXPECT_EQ(row(3), u"2班|0/0/0|0/0/0|0/0/0"_s);
}

TEST_F(Attendance, MissingColumnCostsAMessageForEachCountAndLeavesTheOthers)
{
    library.execute(u"ALTER TABLE 成绩表 DROP COLUMN 数学"_s);
    TJKSRS(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(2), u"1班|2/1/3|0/0/0|3/0/3"_s);
    EXPECT_EQ(library.dialogs.failures.size(), 6);
    EXPECT_TRUE(library.dialogs.failures[0].endsWith(u" - Sub TJKSRS/Mdl_MDB"_s));
}

TEST_F(Attendance, ExamWithAnApostropheIsTheEnginesErrorNotACrash)
{
    exams = u"期'中"_s;
    TJKSRS(context, exams, grid, Transfer::GridOnly);
    EXPECT_FALSE(library.dialogs.failures.isEmpty());
}

} // namespace
