// A mark such as 89.7 is kept as the nearest 32-bit float, which lies below it.
#include "ReportFixture.h"

#include "statistics/ExamFigures.h"

namespace {

using statistics::Transfer;

class MarksWithTenths : public ReportTest
{
protected:
    MarksWithTenths()
    {
        score(u"期中"_s, 1, 1, {89.7, 40, 532.6, 1});
        score(u"期中"_s, 1, 2, {60, 20, 80, 3});
        library.execute(u"delete from 成绩表 where id<=2 and 总分 in (130,80) and 语文=90"_s);
        library.reload();
    }

    void run(void (*report)(statistics::ReportContext&, QString&, grid::FlexGrid&, Transfer))
    {
        exams = u"期中"_s;
        report(context, exams, grid, Transfer::GridOnly);
    }
};

TEST_F(MarksWithTenths, AreKeptBelowWhatTheyMean)
{
    EXPECT_EQ(library.rows(u"select 语文<89.7, 总分<532.6 from 成绩表 where 总分>500"_s), u"1|1"_s);
}

TEST_F(MarksWithTenths, ReachALineOfTheirOwnValue)
{
    set(u"总分上线人数"_s, u"532.6,532.7"_s);
    run(statistics::TJZFSXRS);
    EXPECT_EQ(row(2), u"1班|1|0"_s);
}

TEST_F(MarksWithTenths, ReachTheEdgeOfABandOfShares)
{
    set(u"各科优秀率"_s, u"[0.897,1]"_s);
    exams = u"期中"_s;
    statistics::TJGK4l(context, exams, u"各科优秀率"_s, grid, Transfer::GridOnly);
    EXPECT_EQ(grid.TextMatrix(3, 1), u"1"_s);
    set(u"各科优秀率"_s, u"(0.897,1]"_s);
    context.forgetRows();
    statistics::TJGK4l(context, exams, u"各科优秀率"_s, grid, Transfer::GridOnly);
    EXPECT_EQ(grid.TextMatrix(3, 1), u"0"_s) << "an open edge leaves them out";
}

TEST_F(MarksWithTenths, CountInTheScoreBandThatBeginsWithThem)
{
    set(u"各分数段人数"_s, u"单科29.9,总分100"_s);
    exams = u"期中"_s;
    statistics::TJGFSDRS(context, exams, u"各分数段人数"_s, grid, Transfer::GridOnly);
    EXPECT_EQ(grid.TextMatrix(1, 4), u"[89.7,119.6)"_s);
    EXPECT_EQ(grid.TextMatrix(2, 4), u"1"_s);
}

TEST_F(MarksWithTenths, CountTheSameWhereTheEngineIsAsked)
{
    const statistics::Condition condition(u"语文>=89.7 and 语文<=89.7"_s);
    EXPECT_EQ(library.rows(u"select count(*) from 成绩表 where "_s + condition.sqlText()), u"1"_s);
}

TEST_F(MarksWithTenths, AreAveragedAsTheyAreKept)
{
    const runtime::Trap trap{" - tag"};
    statistics::ExamFigures figures(context, u"期中"_s, u"理"_s, trap);
    const statistics::Condition condition(u"总分>=532.6"_s);
    EXPECT_EQ(figures.figure(statistics::Aggregate::Average, u"总分"_s, condition)(1),
              double(532.6F));
}

} // namespace
