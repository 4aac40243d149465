#include "ReportFixture.h"

namespace {

using namespace Qt::StringLiterals;
using statistics::TJGKGMCDJF;
using statistics::TJGMCDRS;
using statistics::TJLCKSQxM;
using statistics::Transfer;

class RankBandCounts : public ReportTest
{
protected:
    void run(const QString& bands)
    {
        set(u"各名次段人数"_s, bands);
        TJGMCDRS(context, exams, grid, Transfer::GridOnly);
    }
};

TEST_F(RankBandCounts, CountTheFirstAndTheLastOfTheGrade)
{
    run(u"1,2,-2"_s);
    EXPECT_EQ(row(0), u"语文各名次段人数|语文各名次段人数|语文各名次段人数|语文各名次段人数"_s);
    EXPECT_EQ(row(1), u"班级|前1名|前2名|后2名"_s);
    EXPECT_EQ(row(2), u"1班|1|1|1"_s);
    EXPECT_EQ(row(3), u"2班|0|1|1"_s);
    EXPECT_EQ(row(4).section(u'|', 0, 0), u"数学各名次段人数"_s);
    EXPECT_EQ(grid.Rows(), 12);
    EXPECT_EQ(grid.mergeCols(), std::set<int>{0});
    EXPECT_EQ(grid.mergeRows(), (std::set<int>{0, 4, 8}));
    EXPECT_EQ(grid.ColWidth(0), 900);
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(RankBandCounts, NegativeNumberAloneGivesOneColumn)
{
    run(u"-20"_s);
    EXPECT_EQ(row(1), u"班级|后20名"_s);
    // From rank 3 - 20 + 1 on: everybody with a rank, and the absent one's -1 too.
    EXPECT_EQ(row(2), u"1班|3"_s);
}

TEST_F(RankBandCounts, ZeroIsTheBottomCondition)
{
    run(u"0"_s);
    EXPECT_EQ(row(1), u"班级|后0名"_s);
    EXPECT_EQ(row(2), u"1班|0"_s);
}

TEST_F(RankBandCounts, NumberAboveTheGradeCountsEverybodyWithARank)
{
    run(u"1000"_s);
    EXPECT_EQ(row(2), u"1班|2"_s);
}

TEST_F(RankBandCounts, RanksNotYetComputedGiveZeros)
{
    library.execute(u"update 成绩表 set 语文年名=null"_s);
    run(u"1,-1"_s);
    EXPECT_EQ(row(2), u"1班|0|0"_s);
}

TEST_F(RankBandCounts, TextsOfAListByStreamStandAsTyped)
{
    run(u"文=5||理=050,-2"_s);
    EXPECT_EQ(row(1), u"班级|前050名|后2名"_s);
}

TEST_F(RankBandCounts, BadMarkerGivesBlocksWithoutBands)
{
    run(u"文=5,理=5"_s);
    EXPECT_EQ(rows().mid(0, 4),
              (QStringList{u"语文各名次段人数"_s, u"班级"_s, u"1班"_s, u"2班"_s}));
    EXPECT_EQ(library.dialogs.shown,
              QStringList{u"各名次段人数   条件设置不正确！缺少分隔符  ||  \n文=5,理=5"_s});
}

TEST_F(RankBandCounts, FixedRowsStayAndSeveralExamsStandWithinAClass)
{
    addExam(u"期末"_s, 2);
    score(u"期末"_s, 2, 1, {90, 45, 135, 1});
    library.reload();
    exams = u"期中,期末"_s;
    grid.FixedRows = 5;
    run(u"2"_s);
    EXPECT_EQ(row(1), u"班级|考试名称|前2名"_s);
    EXPECT_EQ(row(2), u"1班|期中|1"_s);
    EXPECT_EQ(row(3), u"1班|期末|0"_s);
    EXPECT_EQ(row(5), u"2班|期末|1"_s);
    EXPECT_EQ(grid.FixedRows, 5);
    EXPECT_EQ(grid.mergeCols(), std::set<int>{0});
}

TEST_F(RankBandCounts, CategoryFilterMovesTheLastRankToo)
{
    library.execute(u"update 成绩表 set 类别代码=2 where 姓名='乙'"_s);
    library.scores.settings.CategoryFilter = u" and (类别代码=1)"_s;
    run(u"-1"_s);
    // 乙 of rank 3 does not count; the last rank is 2.
    EXPECT_EQ(row(2), u"1班|0"_s);
    EXPECT_EQ(row(3), u"2班|1"_s);
}

TEST_F(RankBandCounts, MissingRankColumnIsShownWithItsTag)
{
    library.execute(u"ALTER TABLE 成绩表 DROP COLUMN 语文年名"_s);
    run(u"1"_s);
    ASSERT_EQ(library.dialogs.failures.size(), 2);
    EXPECT_TRUE(library.dialogs.failures[0].endsWith(u" - Sub TJGMCDRS/Mdl_MDB"_s));
}

TEST_F(RankBandCounts, TotalsHaveRanksLikeSubjects)
{
    library.execute(u"update 成绩表 set 总分年名=2 where 姓名='甲'"_s);
    library.execute(u"update 成绩表 set 总分年名=1 where 姓名='丁'"_s);
    run(u"1,2"_s);
    EXPECT_EQ(row(8), u"总分各名次段人数|总分各名次段人数|总分各名次段人数"_s);
    EXPECT_EQ(row(10), u"1班|0|1"_s);
    EXPECT_EQ(row(11), u"2班|1|1"_s);
}

TEST_F(RankBandCounts, NameTheStreamWithTwoBlanksAndHaveBandsOfTheirOwn)
{
    addSecondStream();
    run(u"文=1,2||理=3"_s);
    EXPECT_EQ(row(0), u"文科  语文各名次段人数|文科  语文各名次段人数|文科  语文各名次段人数"_s);
    EXPECT_EQ(row(2), u"5班|1|1"_s);
    EXPECT_EQ(row(4), u"班级|前3名|"_s);
}

TEST_F(RankBandCounts, FiveHundredBandsAreCounted)
{
    QStringList bands;
    for (int i = 1; i <= 500; ++i)
        bands.append(QString::number(i));
    run(bands.join(u','));
    EXPECT_EQ(grid.Cols(), 501);
    EXPECT_EQ(grid.TextMatrix(2, 500), u"2"_s);
}

class History : public ReportTest
{
protected:
    void run(const QString& bands)
    {
        set(u"历次考试进入年级前x名人数"_s, bands);
        TJLCKSQxM(context, exams, grid, Transfer::GridOnly);
    }
};

TEST_F(History, OneExamHasNoColumnOfExams)
{
    run(u"2"_s);
    EXPECT_EQ(row(0), u"语文  1次考试进入年级前2名人数|语文  1次考试进入年级前2名人数"_s);
    EXPECT_EQ(row(1), u"班级|前2名"_s);
    EXPECT_EQ(row(2), u"1班|1"_s);
}

TEST_F(History, TitleQuotesTheSettingAsItWasTyped)
{
    addExam(u"期末"_s, 2);
    addExam(u"月考"_s, 3);
    library.reload();
    exams = u"月考,期中,期末"_s;
    run(u"文=50||理=2, -1"_s);
    EXPECT_EQ(grid.TextMatrix(0, 0), u"语文  3次考试进入年级前文=50||理=2, -1名人数"_s);
    EXPECT_EQ(row(1), u"班级|考试名称|前2名|后1名"_s);
    // The exams stand in the order of the list.
    EXPECT_EQ(grid.TextMatrix(2, 1), u"月考"_s);
    EXPECT_EQ(row(3), u"1班|期中|1|1"_s);
    EXPECT_EQ(grid.TextMatrix(4, 1), u"期末"_s);
    EXPECT_EQ(grid.mergeCols(), std::set<int>{0});
}

TEST_F(History, BadMarkerIsToldUnderTheNameOfTheSetting)
{
    run(u"文=5,理=5"_s);
    EXPECT_EQ(row(0), u"语文  1次考试进入年级前文=5,理=5名人数"_s);
    EXPECT_EQ(row(1), u"班级"_s);
    EXPECT_EQ(
        library.dialogs.shown,
        QStringList{u"历次考试进入年级前x名人数   条件设置不正确！缺少分隔符  ||  \n文=5,理=5"_s});
}

TEST_F(History, NamesTheStreamWhereThereAreTwo)
{
    addSecondStream();
    run(u"2"_s);
    EXPECT_EQ(grid.TextMatrix(0, 0), u"文科  语文  1次考试进入年级前2名人数"_s);
}

TEST_F(History, MissingColumnIsShownWithItsTag)
{
    library.execute(u"ALTER TABLE 成绩表 DROP COLUMN 语文年名"_s);
    run(u"1"_s);
    ASSERT_FALSE(library.dialogs.failures.isEmpty());
    EXPECT_TRUE(library.dialogs.failures[0].endsWith(u" - Sub TJLCKSQxM/Mdl_MDB"_s));
}

class RankBandAverages : public ReportTest
{
protected:
    void run(const QString& bands)
    {
        set(u"各名次段均分"_s, bands);
        TJGKGMCDJF(context, exams, grid, Transfer::GridOnly);
    }
};

TEST_F(RankBandAverages, ShowCountAverageAndRankOfEachBand)
{
    library.execute(u"ALTER TABLE 考试名称表 DROP COLUMN 总分"_s);
    library.reload();
    run(u"2,-1"_s);
    EXPECT_EQ(
        rows(),
        (QStringList{
            u"各名次段均分|各名次段均分|各名次段均分|各名次段均分|各名次段均分|各名次段均分|各名次段均分|各名次段均分"_s,
            u"班级|名次段|语文|语文|语文|数学|数学|数学"_s,
            u"班级|名次段|人数|平均分|名次|人数|平均分|名次"_s,
            u"1班|前2|1|90|1|0||"_s,
            u"1班|后1|1|60|1|0||"_s,
            u"2班|前2|1|80|2|0||"_s,
            u"2班|后1|0|||0||"_s,
        }));
    EXPECT_EQ(grid.FixedRows, 0);
    EXPECT_EQ(grid.mergeRows(), (std::set<int>{0, 1}));
    EXPECT_EQ(grid.mergeCols(), (std::set<int>{0, 1}));
    EXPECT_EQ(grid.ColWidth(0), 1100);
    EXPECT_EQ(grid.ColWidth(1), 900);
    EXPECT_EQ(grid.ColWidth(2), 750);
}

TEST_F(RankBandAverages, LeaveAbsentStudentsOutOfTheAverageOfTheLast)
{
    run(u"-20"_s);
    // The count takes the absent student's rank of -1, the average leaves the score of -1 out.
    EXPECT_EQ(row(3).section(u'|', 0, 3), u"1班|后20|3|75"_s);
}

TEST_F(RankBandAverages, RanksNotYetComputedGiveZerosAndNoAverages)
{
    library.execute(u"update 成绩表 set 语文年名=null"_s);
    run(u"2,-1"_s);
    EXPECT_EQ(row(3).section(u'|', 0, 4), u"1班|前2|0||"_s);
    EXPECT_EQ(row(6).section(u'|', 0, 4), u"2班|后1|0||"_s);
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(RankBandAverages, EqualAveragesShareARank)
{
    library.execute(u"update 成绩表 set 语文=80 where 姓名='甲'"_s);
    run(u"2"_s);
    EXPECT_EQ(row(3).section(u'|', 0, 4), u"1班|前2|1|80|1"_s);
    EXPECT_EQ(row(4).section(u'|', 0, 4), u"2班|前2|1|80|1"_s);
}

TEST_F(RankBandAverages, NameTheStreamWithTwoBlanks)
{
    addSecondStream();
    run(u"文=1||理=1,2"_s);
    EXPECT_EQ(grid.TextMatrix(0, 0), u"文科  各名次段均分"_s);
    EXPECT_EQ(row(3).section(u'|', 0, 4), u"5班|前1|1|70|1"_s);
    EXPECT_EQ(grid.TextMatrix(4, 0), u"理科  各名次段均分"_s);
    EXPECT_EQ(grid.Rows(), 4 + 3 + 2 * 2);
}

TEST_F(RankBandAverages, BadMarkerGivesHeadingsAlone)
{
    run(u"文=5"_s);
    EXPECT_EQ(grid.Rows(), 3);
    EXPECT_EQ(library.dialogs.shown,
              QStringList{u"各名次段均分   条件设置不正确！缺少分隔符  ||  \n文=5"_s});
}

TEST_F(RankBandAverages, AskAboutSeveralExams)
{
    addExam(u"期末"_s, 2);
    exams = u"期中,期末"_s;
    library.dialogs.expect(u"只对期末"_s, runtime::Answer::Cancel);
    grid.setTextMatrix(0, 0, u"早先"_s);
    run(u"2"_s);
    EXPECT_EQ(grid.TextMatrix(0, 0), u"早先"_s);
}

TEST_F(RankBandAverages, MissingColumnIsShownWithItsTag)
{
    library.execute(u"ALTER TABLE 成绩表 DROP COLUMN 数学"_s);
    run(u"2"_s);
    ASSERT_FALSE(library.dialogs.failures.isEmpty());
    EXPECT_TRUE(library.dialogs.failures[0].endsWith(u" - Sub TJGKGMCDJF/Mdl_MDB"_s));
}

} // namespace
