#include "ReportFixture.h"

namespace {

using namespace Qt::StringLiterals;
using statistics::TJGDFD;
using statistics::TJGK4l;
using statistics::Transfer;

/// A report that reads bands.
class BandReportTest : public ReportTest
{
protected:
    /// Conditions of a setting for one subject.
    void addCondition(const QString& setting, const QString& stream, const QString& subject,
                      const QString& from, const QString& to)
    {
        set(setting, u"(使用自定义数据)"_s);
        library.execute(u"insert into 详细设置表 values('%1','%2','%3','>=','%4','<=','%5')"_s.arg(
            setting, stream, subject, from, to));
    }
};

class Rates : public BandReportTest
{
protected:
    Rates() { set(u"各科及格率"_s, u"[0.6,1]"_s); }

    void run(const QString& title = u"各科及格率"_s)
    {
        TJGK4l(context, exams, title, grid, Transfer::GridOnly);
    }
};

TEST_F(Rates, ShowCountAndShareOfTheRoster)
{
    run();
    EXPECT_EQ(rows(), (QStringList{
                          u"各科及格率|各科及格率|各科及格率|各科及格率|各科及格率"_s,
                          u"班级|语文|语文|数学|数学"_s,
                          u"班级|人数|比例%|人数|比例%"_s,
                          u"1班|2|66.67|2|66.67"_s,
                          u"2班|1|100|1|100"_s,
                      }));
    EXPECT_EQ(grid.mergeRows(), (std::set<int>{0, 1}));
    EXPECT_EQ(grid.mergeCols(), std::set<int>{0});
    EXPECT_EQ(grid.FixedRows, 1);
    EXPECT_EQ(grid.ColWidth(0), 1100);
    EXPECT_EQ(grid.ColWidth(1), 750);
}

TEST_F(Rates, SeveralExamsStandTogetherWithinAClass)
{
    addExam(u"期末"_s, 2);
    score(u"期末"_s, 1, 1, {95, 10, 105, 1});
    library.reload();
    // The edges come from the sum of the full marks of both exams.
    set(u"各科及格率"_s, u"[0.45,1]"_s);
    exams = u"期中,期末"_s;
    run();
    EXPECT_EQ(row(1), u"班级|考试名称|语文|语文|数学|数学"_s);
    EXPECT_EQ(row(2), u"班级|考试名称|人数|比例%|人数|比例%"_s);
    EXPECT_EQ(row(3), u"1班|期中|1|33.33|0|0"_s);
    EXPECT_EQ(row(4), u"1班|期末|1|33.33|0|0"_s);
    EXPECT_EQ(row(5), u"2班|期中|0|0|1|100"_s);
    EXPECT_EQ(row(6), u"2班|期末|0|0|0|0"_s);
    EXPECT_EQ(grid.mergeCols(), (std::set<int>{0, 1}));
    EXPECT_EQ(grid.ColWidth(1), 900);
}

TEST_F(Rates, TwoStreamsLeaveNoFixedHeading)
{
    addSecondStream();
    run();
    EXPECT_EQ(grid.FixedRows, 0);
    EXPECT_EQ(grid.TextMatrix(0, 0), u"文科各科及格率"_s);
    EXPECT_EQ(grid.TextMatrix(4, 0), u"理科各科及格率"_s);
}

TEST_F(Rates, ShareCanPassAHundredWhenTheClassHasShrunk)
{
    library.execute(u"delete from 信息表 where 姓名='乙' or 姓名='丙'"_s);
    library.reload();
    run();
    EXPECT_EQ(row(3), u"1班|2|200|2|200"_s);
}

TEST_F(Rates, BandFromZeroTakesCheatedScoresAndLeavesAbsentOnesOut)
{
    library.execute(u"update 成绩表 set 语文=0 where 姓名='乙'"_s);
    set(u"各科差生率"_s, u"[0,0.4)"_s);
    run(u"各科差生率"_s);
    EXPECT_EQ(row(3), u"1班|1|33.33|0|0"_s);
}

TEST_F(Rates, CustomConditionsReplaceTheShares)
{
    addCondition(u"各科及格率"_s, u"理"_s, u"语文"_s, u"85"_s, u"100"_s);
    addCondition(u"各科及格率"_s, u"理"_s, u"数学"_s, u"0"_s, u"25"_s);
    run();
    EXPECT_EQ(row(3), u"1班|1|33.33|1|33.33"_s);
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(Rates, MissingCustomRowIsTheEnginesErrorForEachClass)
{
    addCondition(u"各科及格率"_s, u"理"_s, u"语文"_s, u"85"_s, u"100"_s);
    run();
    EXPECT_EQ(row(3), u"1班|1|33.33||"_s);
    EXPECT_EQ(row(4), u"2班|0|0||"_s);
    ASSERT_EQ(library.dialogs.failures.size(), 2);
    EXPECT_TRUE(library.dialogs.failures[0].endsWith(u" - Sub TJGK4l/Mdl_MDB"_s));
}

TEST_F(Rates, EmptyCustomScoreIsTheEnginesErrorAndOthersStand)
{
    addCondition(u"各科及格率"_s, u"理"_s, u"语文"_s, u""_s, u"100"_s);
    addCondition(u"各科及格率"_s, u"理"_s, u"数学"_s, u"0"_s, u"25"_s);
    run();
    EXPECT_EQ(row(3), u"1班|||1|33.33"_s);
    EXPECT_EQ(library.dialogs.failures.size(), 2);
}

TEST_F(Rates, BadBandGoesOnWithTheConditionsOfTheReportBefore)
{
    run();
    set(u"各科优秀率"_s, u"0.9"_s);
    run(u"各科优秀率"_s);
    EXPECT_EQ(row(3), u"1班|2|66.67|2|66.67"_s);
    EXPECT_EQ(library.dialogs.failures.size(), 1);
}

TEST_F(Rates, BadBandWithoutEarlierConditionsIsShownForEachSubject)
{
    set(u"各科及格率"_s, u"0.9"_s);
    run();
    EXPECT_EQ(row(3), u"1班||||"_s);
    // The band, two subjects without a condition, and four cells.
    EXPECT_EQ(library.dialogs.failures.size(), 7);
}

TEST_F(Rates, StudentWithoutAnotherSubjectCounts)
{
    library.execute(u"update 成绩表 set 语文=null where 姓名='甲'"_s);
    run();
    EXPECT_EQ(row(3), u"1班|1|33.33|2|66.67"_s);
}

TEST_F(Rates, BadBandIsShownOnceForEachExam)
{
    run();
    addExam(u"期末"_s, 2);
    library.reload();
    exams = u"期中,期末"_s;
    set(u"各科优秀率"_s, u"0.9"_s);
    run(u"各科优秀率"_s);
    EXPECT_EQ(library.dialogs.failures.size(), 2);
    EXPECT_TRUE(library.dialogs.failures[0].endsWith(u" - Function MakeCXTJ/Mdl_MDB"_s));
}

TEST_F(Rates, ConditionsOfAnotherStreamAreNoneOfThisOne)
{
    addCondition(u"各科及格率"_s, u"文"_s, u"语文"_s, u"85"_s, u"100"_s);
    run();
    EXPECT_EQ(row(3), u"1班||||"_s);
}

TEST_F(Rates, ExamWithoutRowsGivesZeros)
{
    exams = u"没有"_s;
    library.addExam(exams, u"理"_s, 3, {{u"语文"_s, 100}});
    library.reload();
    run();
    EXPECT_EQ(row(3), u"1班|0|0"_s);
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(Rates, ClassWithoutStudentsHasNoShare)
{
    library.execute(u"update 信息表 set 班级=null where 班级=2"_s);
    library.reload();
    library.dialogs.failures.clear();
    run();
    EXPECT_EQ(row(3), u"0班|0||0|"_s) << "students without a class";
    EXPECT_EQ(row(4), u"1班|2|66.67|2|66.67"_s);
    EXPECT_EQ(library.dialogs.failures, QStringList(2, u"除数为零。 - Sub TJGK4l/Mdl_MDB"_s));
}

class HighLowGroups : public BandReportTest
{
protected:
    HighLowGroups()
    {
        set(u"高分段"_s, u"[0.85,1]"_s);
        set(u"低分段"_s, u"[0,0.65)"_s);
    }

    void run() { TJGDFD(context, exams, grid, Transfer::GridOnly); }
};

TEST_F(HighLowGroups, CountBothBandsAndNameTheStreamInEveryLibrary)
{
    run();
    EXPECT_EQ(
        rows(),
        (QStringList{
            u"理科 高、低分段|理科 高、低分段|理科 高、低分段|理科 高、低分段|理科 高、低分段"_s,
            u"班级|语文|语文|数学|数学"_s,
            u"班级|高分段|低分段|高分段|低分段"_s,
            u"1班|1|1|0|2"_s,
            u"2班|0|0|1|0"_s,
        }));
    EXPECT_EQ(grid.FixedRows, 2);
    EXPECT_EQ(grid.mergeRows(), (std::set<int>{0, 1}));
    EXPECT_EQ(grid.ColWidth(0), 750);
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(HighLowGroups, TwoStreamsLeaveNoFixedHeading)
{
    addSecondStream();
    run();
    EXPECT_EQ(grid.FixedRows, 0);
    EXPECT_EQ(grid.TextMatrix(0, 0), u"文科 高、低分段"_s);
}

TEST_F(HighLowGroups, SeveralExamsWidenTheColumnOfTheirNames)
{
    addExam(u"期末"_s, 2);
    library.reload();
    exams = u"期中,期末"_s;
    run();
    EXPECT_EQ(row(1), u"班级|考试名称|语文|语文|数学|数学"_s);
    EXPECT_EQ(grid.ColWidth(1), 900);
    EXPECT_EQ(grid.mergeCols(), (std::set<int>{0, 1}));
}

TEST_F(HighLowGroups, OpenLowerEdgeLeavesTheEdgeOut)
{
    set(u"高分段"_s, u"(0.9,1]"_s);
    run();
    EXPECT_EQ(row(3), u"1班|0|1|0|2"_s);
}

TEST_F(HighLowGroups, MissingCustomRowIsTheEnginesError)
{
    set(u"高分段"_s, u"(使用自定义数据)"_s);
    run();
    EXPECT_EQ(row(3), u"1班||1||2"_s);
    ASSERT_EQ(library.dialogs.failures.size(), 4);
    EXPECT_TRUE(library.dialogs.failures[0].endsWith(u" - Sub TJGDFD/Mdl_MDB"_s));
}

TEST_F(HighLowGroups, ConditionsOfOneGroupLeaveTheOtherItsBand)
{
    addCondition(u"低分段"_s, u"理"_s, u"语文"_s, u"60"_s, u"80"_s);
    addCondition(u"低分段"_s, u"理"_s, u"数学"_s, u"50"_s, u"50"_s);
    run();
    EXPECT_EQ(row(3), u"1班|1|1|0|0"_s);
    EXPECT_EQ(row(4), u"2班|0|1|1|1"_s);
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(HighLowGroups, BadLowerBandGoesOnWithTheConditionsOfTheUpperOne)
{
    set(u"低分段"_s, u"0.65"_s);
    run();
    EXPECT_EQ(row(3), u"1班|1|1|0|0"_s);
    EXPECT_EQ(row(4), u"2班|0|0|1|1"_s);
    ASSERT_EQ(library.dialogs.failures.size(), 1);
    EXPECT_TRUE(library.dialogs.failures[0].endsWith(u" - Function MakeCXTJ/Mdl_MDB"_s));
}

} // namespace
