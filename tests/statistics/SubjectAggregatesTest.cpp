#include "ReportFixture.h"

namespace {

using namespace Qt::StringLiterals;
using statistics::TJGKBZC;
using statistics::TJGKPJF;
using statistics::TJGKZDF;
using statistics::TJGKZGF;
using statistics::Transfer;

class SubjectAggregates : public ReportTest
{
protected:
    SubjectAggregates() { set(u"各科平均分"_s, u"不使用教师名单"_s); }

    void listTeachers()
    {
        set(u"各科平均分"_s, u"使用教师名单"_s);
        library.execute(u"insert into 教师表(考试名称,班级,语文) values('期中',1,'王老师')"_s);
    }
};

TEST_F(SubjectAggregates, AverageCountsAbsentStudentsAndRanksTheClasses)
{
    TJGKPJF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(rows(), (QStringList{
                          u"班级|各科平均分|各科平均分|各科平均分|各科平均分"_s,
                          u"|语文|语文|数学|数学"_s,
                          u"班级|平均分|名次|平均分|名次"_s,
                          u"1班|49.67|2|30|2"_s,
                          u"2班|80|1|50|1"_s,
                      }));
    EXPECT_EQ(grid.FixedRows, 1);
    EXPECT_EQ(grid.mergeRows(), (std::set<int>{0, 1}));
    EXPECT_EQ(grid.mergeCols(), std::set<int>{0});
    EXPECT_EQ(grid.ColWidth(0), 1100);
    EXPECT_EQ(grid.ColWidth(2), 750);
}

TEST_F(SubjectAggregates, AverageShowsTheTeachersByOneSetting)
{
    listTeachers();
    TJGKPJF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(1), u"|语文|语文|教师|数学|数学|教师"_s);
    EXPECT_EQ(row(2), u"班级|平均分|名次||平均分|名次|"_s);
    EXPECT_EQ(row(3), u"1班|49.67|2|王老师|30|2|"_s);
    // A teacher who is not in the table leaves the cell empty.
    EXPECT_EQ(row(4), u"2班|80|1||50|1|"_s);
}

TEST_F(SubjectAggregates, HighestAndLowestWidenWithTheTeachersToo)
{
    listTeachers();
    TJGKZGF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(1), u"|语文|||数学||"_s);
    EXPECT_EQ(row(2), u"1班|90|||40||"_s);
    TJGKZDF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(1), u"班级|语文|||数学||"_s);
    TJGKBZC(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(1), u"班级|语文|数学"_s);
}

TEST_F(SubjectAggregates, TeachersOfHighestAndLowestAreNoSettingOfTheirOwn)
{
    set(u"各科最高分"_s, u"使用教师名单"_s);
    set(u"各科最低分"_s, u"使用教师名单"_s);
    TJGKZGF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(grid.Cols(), 3);
    TJGKZDF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(grid.Cols(), 3);
}

TEST_F(SubjectAggregates, SeveralExamsWithTeachersKeepTheirColumns)
{
    addExam(u"期末"_s, 2);
    score(u"期末"_s, 1, 1, {95, 45, 140, 1});
    library.reload();
    listTeachers();
    exams = u"期中,期末"_s;
    TJGKPJF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(1), u"|考试名称|语文|语文|教师|数学|数学|教师"_s);
    EXPECT_EQ(row(3), u"1班|期中|49.67|2|王老师|30|2|"_s);
    EXPECT_EQ(row(4), u"1班|期末|95|1||45|1|"_s);
    TJGKZDF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(1), u"班级|考试名称|语文|||数学||"_s);
    EXPECT_EQ(grid.mergeCols(), (std::set<int>{0, 1}));
    TJGKBZC(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(1), u"班级|考试名称|语文|数学"_s);
}

TEST_F(SubjectAggregates, SpareEntryOfTheRankingStandsAheadOfNegativeAverages)
{
    library.execute(u"update 成绩表 set 语文=-1"_s);
    TJGKPJF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(3), u"1班|-1|2|30|2"_s);
    EXPECT_EQ(row(4), u"2班|-1|2|50|1"_s);
}

TEST_F(SubjectAggregates, AbsentStudentsAreInAverageAndHighestAndNotInLowestAndDeviation)
{
    library.execute(u"update 成绩表 set 语文=-1 where 姓名='乙'"_s);
    TJGKPJF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(grid.TextMatrix(3, 1), u"29.33"_s);
    TJGKZGF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(grid.TextMatrix(2, 1), u"90"_s);
    TJGKZDF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(grid.TextMatrix(2, 1), u"90"_s);
    TJGKBZC(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(grid.TextMatrix(2, 1), QString());
}

TEST_F(SubjectAggregates, HighestHasItsClassHeadingInTheTitleRow)
{
    TJGKZGF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(rows(), (QStringList{
                          u"班级|各科最高分|各科最高分"_s,
                          u"|语文|数学"_s,
                          u"1班|90|40"_s,
                          u"2班|80|50"_s,
                      }));
    EXPECT_EQ(grid.mergeRows(), (std::set<int>{0, 1}));
}

TEST_F(SubjectAggregates, LowestLeavesAbsentStudentsOut)
{
    TJGKZDF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(rows(), (QStringList{
                          u"各科最低分|各科最低分|各科最低分"_s,
                          u"班级|语文|数学"_s,
                          u"1班|60|20"_s,
                          u"2班|80|50"_s,
                      }));
    EXPECT_EQ(grid.mergeRows(), std::set<int>{0});
}

TEST_F(SubjectAggregates, DeviationOfOneValueIsEmpty)
{
    TJGKBZC(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(rows(), (QStringList{
                          u"各科标准差|各科标准差|各科标准差"_s,
                          u"班级|语文|数学"_s,
                          u"1班|21.21|10"_s,
                          u"2班||"_s,
                      }));
    EXPECT_EQ(grid.mergeRows(), std::set<int>{0});
}

TEST_F(SubjectAggregates, TitlesJoinTheStreamInTheirOwnWay)
{
    addSecondStream();
    TJGKPJF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(grid.TextMatrix(0, 1), u"文科各科平均分"_s);
    EXPECT_EQ(grid.FixedRows, 0);
    TJGKBZC(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(grid.TextMatrix(0, 1), u"文科 各科标准差"_s);
}

TEST_F(SubjectAggregates, ClassOfAbsentStudentsHasMinusOneAndNothingElse)
{
    library.execute(u"update 成绩表 set 语文=-1 where 班级=2"_s);
    TJGKPJF(context, exams, grid, Transfer::GridOnly);
    // The spare entry of the ranking counts as 0, ahead of -1.
    EXPECT_EQ(row(4), u"2班|-1|3|50|1"_s);
    TJGKZGF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(3), u"2班|-1|50"_s);
    TJGKZDF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(3), u"2班||50"_s);
    TJGKBZC(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(3), u"2班||"_s);
}

TEST_F(SubjectAggregates, ClassWithoutRowsHasNoAverageAndTakesNoRank)
{
    library.addStudent(3, 1, u"己"_s, u"理"_s);
    library.reload();
    TJGKPJF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(3), u"1班|49.67|2|30|2"_s);
    EXPECT_EQ(row(5), u"3班||||"_s);
}

TEST_F(SubjectAggregates, AbsentClassStandsBehindTheSpareEntryAndTheClassesWithoutRows)
{
    library.addStudent(3, 1, u"己"_s, u"理"_s);
    library.execute(u"update 成绩表 set 语文=-1 where 班级=2"_s);
    library.reload();
    TJGKPJF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(3), u"1班|49.67|1|30|2"_s);
    EXPECT_EQ(row(4), u"2班|-1|4|50|1"_s);
    EXPECT_EQ(row(5), u"3班||||"_s);
}

TEST_F(SubjectAggregates, SubjectThatTheTableOfTeachersLacksLeavesTheOthersTheirs)
{
    listTeachers();
    library.execute(u"update 教师表 set 数学='李老师'"_s);
    library.execute(u"alter table 教师表 drop column 语文"_s);
    TJGKPJF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(3), u"1班|49.67|2||30|2|李老师"_s);
    ASSERT_FALSE(library.dialogs.failures.isEmpty());
    for (const QString& failure : std::as_const(library.dialogs.failures))
        EXPECT_TRUE(failure.endsWith(u" - Function GetJSMD/Mdl_MDB"_s)) << failure.toStdString();
}

TEST_F(SubjectAggregates, ClassNumberWithADecimalIsShownAsItIs)
{
    library.addStudent(2.5, 1, u"己"_s, u"理"_s);
    score(u"期中"_s, 2.5, 1, {70, 10, 80, 5});
    library.reload();
    TJGKPJF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(5), u"2.5班|70|2|10|3"_s);
}

TEST_F(SubjectAggregates, EqualRoundedAveragesShareARankAndTheNextIsThird)
{
    library.addStudent(3, 1, u"己"_s, u"理"_s);
    library.addStudent(4, 1, u"庚"_s, u"理"_s);
    score(u"期中"_s, 3, 1, {80.001, 10, 90, 4});
    score(u"期中"_s, 4, 1, {70, 10, 80, 5});
    library.reload();
    TJGKPJF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(4), u"2班|80|1|50|1"_s);
    EXPECT_EQ(row(5), u"3班|80|1|10|3"_s);
    EXPECT_EQ(row(6), u"4班|70|3|10|3"_s);
}

TEST_F(SubjectAggregates, SeveralExamsAreRankedEachByItself)
{
    addExam(u"期末"_s, 2);
    score(u"期末"_s, 1, 1, {95, 45, 140, 1});
    score(u"期末"_s, 2, 1, {85, 45, 130, 2});
    library.reload();
    exams = u"期中,期末"_s;
    TJGKPJF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(0), u"班级|各科平均分|各科平均分|各科平均分|各科平均分|各科平均分"_s);
    EXPECT_EQ(row(1), u"|考试名称|语文|语文|数学|数学"_s);
    EXPECT_EQ(row(2), u"班级|考试名称|平均分|名次|平均分|名次"_s);
    EXPECT_EQ(row(3), u"1班|期中|49.67|2|30|2"_s);
    EXPECT_EQ(row(4), u"1班|期末|95|1|45|1"_s);
    EXPECT_EQ(row(6), u"2班|期末|85|2|45|1"_s);
    TJGKZGF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(1), u"|考试名称|语文|数学"_s);
    EXPECT_EQ(grid.ColWidth(1), 900);
}

TEST_F(SubjectAggregates, CheatedZeroCountsInAllFour)
{
    library.execute(u"update 成绩表 set 语文=0 where 姓名='丙'"_s);
    TJGKPJF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(3), u"1班|50|2|30|2"_s);
    TJGKZDF(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(2), u"1班|0|20"_s);
}

TEST_F(SubjectAggregates, MissingColumnIsShownWithTheTagOfItsTable)
{
    library.execute(u"ALTER TABLE 成绩表 DROP COLUMN 数学"_s);
    TJGKPJF(context, exams, grid, Transfer::GridOnly);
    TJGKZGF(context, exams, grid, Transfer::GridOnly);
    TJGKZDF(context, exams, grid, Transfer::GridOnly);
    TJGKBZC(context, exams, grid, Transfer::GridOnly);
    const QStringList& failures = library.dialogs.failures;
    ASSERT_EQ(failures.size(), 8);
    EXPECT_TRUE(failures[0].endsWith(u" - Sub TJGKPJF/Mdl_MDB"_s));
    EXPECT_TRUE(failures[2].endsWith(u" - Sub TJGKZGF/Mdl_MDB"_s));
    EXPECT_TRUE(failures[4].endsWith(u" - Sub TJGKZDF/Mdl_MDB"_s));
    EXPECT_TRUE(failures[6].endsWith(u" - Sub TJGKBZC/Mdl_MDB"_s));
}

} // namespace
