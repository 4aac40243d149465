#include "workbench/FigureList.h"

#include "WorkbenchFixture.h"
#include "platform/grid/GridText.h"
#include "workbench/Browse.h"
#include "workbench/StatisticsRun.h"

namespace {

using statistics::Figure;
using workbench::FigureList;

/// 语文 of 期中 in class 2: 孙三 100, 李四 -1 (absent), 周五 without a mark; 吴六 and 郑七 have no
/// row there, one of them has it in class 3.
class FigureListTest : public WorkbenchTest
{
protected:
    FigureListTest()
    {
        library.addStudent(2, 2, u"李四"_s, u"理"_s);
        library.addStudent(2, 3, u"周五"_s, u"理"_s);
        library.addStudent(2, 4, u"吴六"_s, u"理"_s);
        library.addStudent(3, 9, u"郑七"_s, u"理"_s);
        library.addScores(u"期中"_s, 2, 1, {{u"语文"_s, 100}, {u"数学"_s, 140}});
        library.addScores(u"期中"_s, 2, 2, {{u"语文"_s, -1}, {u"数学"_s, 120}});
        library.addScores(u"期中"_s, 2, 3, {{u"数学"_s, 130}});
        library.addScores(u"期中"_s, 3, 9, {{u"语文"_s, 90}});
        library.execute(u"update 信息表 set 班级=2 where 姓名='郑七'"_s);
        library.reload();
    }

    void run(const QString& item,
             workbench::ExamGrouping tables = workbench::ExamGrouping::Together)
    {
        ASSERT_TRUE(workbench::runReport(
            {.exams = exams, .item = item, .rates = workbench::RateTable::Chosen, .tables = tables},
            context, grid));
    }

    /// The list behind the cell in the first row of class 2 from `row` on.
    FigureList list(int row, int col, const QStringList& columns = {u"数学"_s, u"学号"_s})
    {
        while (grid.TextMatrix(row, 0) != u"2班"_s)
            ++row;
        const std::optional<Figure> figure = context.figures.at(grid, row, col);
        EXPECT_TRUE(figure);
        return workbench::listStudents(library.scores, figure.value_or(Figure()), columns);
    }

    statistics::ReportContext context{library.scores};
    grid::FlexGrid grid;
    QStringList exams{u"期中"_s};
};

TEST_F(FigureListTest, HasTheFiguresColumnBehindTheNamesAndThenTheOthers)
{
    run(u"各科平均分"_s);
    EXPECT_EQ(grid::gridText(list(0, 4).grid), u"班级\t学号\t姓名\t数学\n2\t1\t孙三\t140\n"
                                               "2\t3\t周五\t130\n2\t2\t李四\t120\n"_s);
    EXPECT_EQ(grid::gridText(list(0, 1).grid),
              u"班级\t学号\t姓名\t语文\t数学\n2\t1\t孙三\t100\t140\n"
              "2\t2\t李四\t-1\t120\n"_s);
}

TEST_F(FigureListTest, OfTheAttendanceIsTheRosterWithWhoSatAndWhoWasAbsent)
{
    run(u"考试人数"_s);
    EXPECT_EQ(grid::gridText(list(0, 1).grid), u"班级\t学号\t姓名\t状态\t语文\t数学\n"
                                               "2\t1\t孙三\t参试\t100\t140\n"
                                               "2\t2\t李四\t缺考\t-1\t120\n"
                                               "2\t3\t周五\t没有这一科的成绩\t\t130\n"
                                               "2\t4\t吴六\t没有这次考试的成绩\t\t\n"
                                               "2\t9\t郑七\t成绩记在别的班或科类\t\t\n"_s);
}

TEST_F(FigureListTest, OfTheAttendanceHasAStudentOnceWhoWasEnteredAfterHisScores)
{
    run(u"考试人数"_s);
    const QString before = grid::gridText(list(0, 1).grid);
    library.execute(u"update 成绩表 set id=null where 姓名='李四'"_s);
    library.execute(u"update 成绩表 set id=0 where 姓名='周五'"_s);
    EXPECT_EQ(grid::gridText(list(0, 1).grid), before);
    library.execute(u"update 成绩表 set id=null,科类='文' where 姓名='李四'"_s);
    const FigureList moved = list(0, 1);
    EXPECT_EQ(moved.grid.Rows(), 6);
    EXPECT_TRUE(grid::gridText(moved.grid).contains(u"\n2\t2\t李四\t成绩记在别的班或科类\t\t\n"_s));
}

/// 孙三 and 李四 are of category 2 today, but only the score of 李四 says so; that of 周五 does
/// too.
TEST_F(FigureListTest, OfTheAttendanceOfACategorySaysWhoseScoreIsOfAnother)
{
    library.execute(u"update 信息表 set 类别代码=2 where 姓名 in ('孙三','李四','吴六')"_s);
    library.execute(u"update 成绩表 set 类别代码=2 where 姓名 in ('李四','周五')"_s);
    library.scores.settings.CategoryFilter = u" and (类别代码=2)"_s;
    run(u"考试人数"_s);
    const FigureList chosen = list(0, 1);
    EXPECT_EQ(grid::gridText(chosen.grid), u"班级\t学号\t姓名\t状态\t语文\t数学\n"
                                           "2\t2\t李四\t缺考\t-1\t120\n"
                                           "2\t3\t周五\t没有这一科的成绩\t\t130\n"
                                           "2\t1\t孙三\t成绩记在别的类别\t\t\n"
                                           "2\t4\t吴六\t没有这次考试的成绩\t\t\n"_s);
    EXPECT_EQ(chosen.details,
              u"没有这一科成绩的 1 人，不在这三个数里。今天的名单上全班 5 人，选中的类别 3 人，"
              "在这里没有成绩的列在最后。只算类别代码为 2 的学生。"_s);
    EXPECT_EQ(chosen.change, QString());
}

TEST_F(FigureListTest, OfTheAttendanceTakesATextForNoMark)
{
    library.execute(u"update 成绩表 set 语文='缺' where 姓名='孙三'"_s);
    library.dialogs.always(u"按没有成绩处理"_s, runtime::Answer::Ok);
    run(u"考试人数"_s);
    const FigureList roster = list(0, 1);
    EXPECT_EQ(roster.grid.TextMatrix(1, 3), u"没有这一科的成绩"_s);
    EXPECT_EQ(roster.change, QString());
}

TEST_F(FigureListTest, SaysItInWordsAndAsTheStatementThatGivesIt)
{
    run(u"各科及格率"_s);
    const FigureList passed = list(0, 1);
    EXPECT_EQ(
        passed.sentence,
        u"期中，理科，2 班：语文不低于 90 分、不高于 150 分的学生，共 1 人（全班 5 人的 20%）。"_s);
    EXPECT_EQ(passed.details, QString());
    EXPECT_EQ(passed.change, QString());
    EXPECT_EQ(
        passed.sql,
        u"select * from 成绩表 where 考试名称='期中' and 科类='理' and 班级=2 and "
        "round(语文,4)>=90 and round(语文,4)<=150 and [语文]>-9e999 and [语文]<9e999 order by [语文] DESC,学号"_s);
    runtime::NoProgress progress;
    ASSERT_TRUE(workbench::ShowKSCJmain(library.scores, passed.sql, {u"姓名"_s}, grid, progress));
    EXPECT_EQ(grid::gridText(grid), u"姓名\n孙三\n"_s);
}

TEST_F(FigureListTest, SaysThatTheLibraryWasChangedSince)
{
    run(u"各科及格率"_s);
    library.execute(u"update 成绩表 set 语文=91 where 姓名='李四'"_s);
    const FigureList passed = list(0, 1);
    EXPECT_EQ(
        passed.change,
        u"成绩库在统计之后改过：表格里是 1，现在是 2。名单按现在的成绩库列出，请重新统计。"_s);
    EXPECT_EQ(passed.grid.Rows(), 3);
}

TEST_F(FigureListTest, OfTablesThatFollowOneAnotherIsThatOfTheirExam)
{
    library.addScores(u"期末"_s, 2, 2, {{u"语文"_s, 150}});
    exams = QStringList{u"期中"_s, u"期末"_s};
    run(u"各科优秀率"_s, workbench::ExamGrouping::OneByOne);
    const int second = grid.Rows() / 2 + 1;
    EXPECT_TRUE(list(second, 1).sentence.startsWith(u"期末，理科，2 班：语文"_s));
    EXPECT_EQ(list(second, 1).grid.TextMatrix(1, 2), u"李四"_s);
    EXPECT_TRUE(list(0, 1).sentence.startsWith(u"期中，"_s));
}

TEST_F(FigureListTest, IsGoneOnceABrowseFillsTheGrid)
{
    run(u"考试人数"_s);
    const int rows = grid.Rows();
    runtime::NoProgress progress;
    workbench::ShowKSCJmain(library.scores, u"select * from 成绩表"_s,
                            {u"姓名"_s, u"语文"_s, u"数学"_s}, grid, progress);
    for (int row = 0; row < std::min(rows, grid.Rows()); ++row)
        EXPECT_FALSE(context.figures.at(grid, row, 1));
}

TEST_F(FigureListTest, StaysWhereTheUserGaveAReportUp)
{
    run(u"考试人数"_s);
    exams = QStringList{u"期中"_s, u"期末"_s};
    library.dialogs.expect(u"当前操作只针对一次考试"_s, runtime::Answer::Cancel);
    run(u"考试人数"_s);
    EXPECT_EQ(list(0, 1).grid.Rows(), 6);
}

TEST_F(FigureListTest, DoesWithoutOtherColumnsThatAreGone)
{
    run(u"各科及格率"_s);
    EXPECT_EQ(grid::gridText(list(0, 1, {u"没有"_s, u"a]b"_s, u"数学"_s}).grid),
              u"班级\t学号\t姓名\t语文\t数学\n2\t1\t孙三\t100\t140\n"_s);
}

TEST_F(FigureListTest, OfAColumnThatIsGoneIsAnError)
{
    run(u"考试人数"_s);
    library.execute(u"ALTER TABLE 成绩表 DROP COLUMN 语文"_s);
    EXPECT_THROW(list(0, 1), runtime::Error);
}

} // namespace
