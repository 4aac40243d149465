#include "individual/RankChart.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"

namespace individual {

namespace {

using namespace Qt::StringLiterals;

constexpr int red = 0x0000FF;
constexpr int blue = 0xFF0000;

/// A surface whose frame is 8000 wide and 3000 high, with 300 students.
RankChartRequest request(const QStringList& exams, std::vector<RankedColumn> columns)
{
    return {9000, 4000, u"王五"_s, RankKind::Grade, exams, std::move(columns), 300};
}

const QStringList fourExams{u"高一期中"_s, u"高一期末"_s, u"一模"_s, u"二模"_s};

std::vector<double> heights(const RankChart& chart)
{
    std::vector<double> found;
    for (const RankChart::Point& point : chart.points)
        found.push_back(point.y);
    return found;
}

TEST(RankChart, TheFrameStands500InsideTheSurface)
{
    const RankChart chart = rankChart(request(fourExams, {}));
    EXPECT_EQ(chart.frame, (RankChart::Line{500, 500, 8500, 3500}));
    EXPECT_EQ(chart.width, 9000);
    EXPECT_EQ(chart.height, 4000);
}

TEST(RankChart, EachExamOwnsAnEqualSlotWithADottedLineInItsMiddle)
{
    const RankChart chart = rankChart(request(fourExams, {}));
    EXPECT_EQ(chart.dotted, (std::vector<RankChart::Line>{{1500, 3500, 1500, 500},
                                                          {3500, 3500, 3500, 500},
                                                          {5500, 3500, 5500, 500},
                                                          {7500, 3500, 7500, 500}}));
}

TEST(RankChart, AnExamNameOfMoreThanTwoCharactersStandsInTwoLines)
{
    const RankChart chart = rankChart(request(fourExams, {}));
    EXPECT_EQ(chart.examLabels, (std::vector<RankChart::ExamLabel>{{u"高一\n期中"_s, 1500},
                                                                   {u"高一\n期末"_s, 3500},
                                                                   {u"一模"_s, 5500},
                                                                   {u"二模"_s, 7500}}));
}

TEST(RankChart, OddExamNamesAreTakenApartBehindTheirSecondCharacter)
{
    const QString rare = u"\U00020BB7"_s; // two units of text
    const RankChart chart = rankChart(
        request({QString(), u"a"_s, u"O'Neil"_s, u"a\nb"_s, rare + rare, rare + rare + rare}, {}));
    QStringList texts;
    for (const RankChart::ExamLabel& label : chart.examLabels)
        texts.append(label.text);
    EXPECT_EQ(texts, (QStringList{QString(), u"a"_s, u"O'\nNeil"_s, u"a\n\nb"_s, rare + rare,
                                  rare + rare + u'\n' + rare}));
}

TEST(RankChart, RankOneLiesUnderTheUpperEdgeAndTheLastOnTheLowerEdge)
{
    const RankChart chart =
        rankChart(request(fourExams, {{u"语文"_s, red, {u"1"_s, u"300"_s, u"150"_s, u"300"_s}}}));
    EXPECT_EQ(heights(chart), (std::vector<double>{510, 3500, 2000, 3500}));
}

TEST(RankChart, ALineJoinsThePointsOfAColumnInItsColour)
{
    const RankChart chart =
        rankChart(request({u"一模"_s, u"二模"_s}, {{u"语文"_s, red, {u"30"_s, u"60"_s}}}));
    EXPECT_EQ(chart.points, (std::vector<RankChart::Point>{{u"语文"_s, 2500, 800, red},
                                                           {u"语文"_s, 6500, 1100, red}}));
    EXPECT_EQ(chart.segments,
              (std::vector<RankChart::Segment>{{u"语文"_s, {2500, 800, 6500, 1100}, red}}));
}

TEST(RankChart, ARankStandsCentredAboveItsPoint)
{
    const RankChart chart = rankChart(request({u"一模"_s}, {{u"语文"_s, red, {u"30"_s}}}));
    EXPECT_EQ(chart.rankLabels, (std::vector<RankChart::RankLabel>{
                                    {u"30"_s, u"语文年级名次: 30"_s, 4500, 700, red}}));
}

TEST(RankChart, TheTipOfARankInTheClassSaysSo)
{
    RankChartRequest ofClass = request({u"一模"_s}, {{u"语文"_s, red, {u"3"_s}}});
    ofClass.kind = RankKind::Class;
    EXPECT_EQ(rankChart(ofClass).rankLabels.front().tip, u"语文班级名次: 3"_s);
}

TEST(RankChart, AnExamWithoutARankIsPassedOverByTheLine)
{
    for (const QString& absent : {u"-1"_s, u"0"_s, QString(), u"缺考"_s, u"12a"_s, u"nan"_s}) {
        const RankChart chart =
            rankChart(request({u"一"_s, u"二"_s, u"三"_s, u"四"_s},
                              {{u"语文"_s, red, {u"30"_s, absent, u"60"_s, absent}}}));
        EXPECT_EQ(chart.points.size(), 2u) << absent.toStdString();
        EXPECT_EQ(chart.rankLabels.size(), 2u) << absent.toStdString();
        EXPECT_EQ(chart.segments,
                  (std::vector<RankChart::Segment>{{u"语文"_s, {1500, 800, 5500, 1100}, red}}))
            << absent.toStdString();
    }
}

TEST(RankChart, OneExamHasASingleMarkerInTheMiddleAndNoLine)
{
    const RankChart chart = rankChart(
        request({u"一模"_s}, {{u"语文"_s, red, {u"30"_s}}, {u"数学"_s, blue, {u"60"_s}}}));
    EXPECT_EQ(chart.dotted, (std::vector<RankChart::Line>{{4500, 3500, 4500, 500}}));
    EXPECT_EQ(chart.points, (std::vector<RankChart::Point>{{u"语文"_s, 4500, 800, red},
                                                           {u"数学"_s, 4500, 1100, blue}}));
    EXPECT_TRUE(chart.segments.empty());
}

TEST(RankChart, ColumnsAreDrawnInTheOrderGiven)
{
    const RankChart chart =
        rankChart(request({u"一"_s, u"二"_s}, {{u"语文"_s, red, {u"30"_s, u"30"_s}},
                                               {u"数学"_s, blue, {u"60"_s, u"60"_s}}}));
    QStringList columns;
    for (const RankChart::Point& point : chart.points)
        columns.append(point.column);
    EXPECT_EQ(columns, (QStringList{u"语文"_s, u"语文"_s, u"数学"_s, u"数学"_s}));
    EXPECT_EQ(chart.segments,
              (std::vector<RankChart::Segment>{{u"语文"_s, {2500, 800, 6500, 800}, red},
                                               {u"数学"_s, {2500, 1100, 6500, 1100}, blue}}));
}

TEST(RankChart, WithoutATickedColumnEverythingButTheNoteAndTheRanksIsThere)
{
    const RankChart chart = rankChart(request(fourExams, {}));
    EXPECT_EQ(chart.note, std::nullopt);
    EXPECT_TRUE(chart.points.empty());
    EXPECT_TRUE(chart.rankLabels.empty());
    EXPECT_EQ(chart.dotted.size(), 4u);
    EXPECT_EQ(chart.name, u"王五"_s);
}

TEST(RankChart, TheNoteSaysTheHeadCountAlsoWhereNoRankIs)
{
    EXPECT_EQ(rankChart(request({u"一模"_s}, {{u"语文"_s, red, {u"-1"_s}}})).note, u"共300人"_s);
}

TEST(RankChart, AStudentWithoutExamsHasAFrameAndANameAlone)
{
    const RankChart chart = rankChart(request({}, {{u"语文"_s, red, {}}}));
    EXPECT_EQ(chart.frame, (RankChart::Line{500, 500, 8500, 3500}));
    EXPECT_TRUE(chart.dotted.empty());
    EXPECT_EQ(chart.note, std::nullopt);
    EXPECT_EQ(chart.name, u"王五"_s);
}

TEST(RankChart, WithoutAHeadCountPointsLieAtTheTopAndNoLineJoinsThem)
{
    RankChartRequest nobody = request({u"一"_s, u"二"_s}, {{u"语文"_s, red, {u"30"_s, u"60"_s}}});
    nobody.headCount = 0;
    const RankChart chart = rankChart(nobody);
    EXPECT_EQ(heights(chart), (std::vector<double>{0, 0}));
    EXPECT_TRUE(chart.segments.empty());
    EXPECT_EQ(chart.note, u"共0人"_s);
    EXPECT_EQ(chart.rankLabels.front().bottom, -100);
}

TEST(RankChart, ARankBehindTheHeadCountLiesBelowTheFrame)
{
    const RankChart chart = rankChart(request({u"一模"_s}, {{u"语文"_s, red, {u"360"_s}}}));
    EXPECT_EQ(heights(chart), (std::vector<double>{4100}));
}

TEST(RankChart, ASurfaceThatIsTooSmallTurnsTheFrameRound)
{
    RankChartRequest small = request({u"一"_s, u"二"_s}, {{u"语文"_s, red, {u"150"_s, u"300"_s}}});
    small.width = 600;
    small.height = 800;
    const RankChart chart = rankChart(small);
    EXPECT_EQ(chart.frame, (RankChart::Line{500, 500, 100, 300}));
    EXPECT_EQ(heights(chart), (std::vector<double>{400, 300}));
    // The first two points of a column of width -400 that still lie right of 0.
    EXPECT_EQ(chart.segments,
              (std::vector<RankChart::Segment>{{u"语文"_s, {400, 400, 200, 300}, red}}));
}

TEST(RankChart, APointLeftOfTheSurfaceIsNotJoined)
{
    RankChartRequest small = request({u"一"_s, u"二"_s}, {{u"语文"_s, red, {u"150"_s, u"300"_s}}});
    small.width = -1000;
    EXPECT_TRUE(rankChart(small).segments.empty());
}

TEST(RankChart, LabelsAreCentredInTheMarginsWhateverTheirHeight)
{
    const RankChart chart = rankChart(request(fourExams, {}));
    EXPECT_EQ(chart.examLabelTop(150), 3450);
    EXPECT_EQ(chart.examLabelTop(350), 3550);
    EXPECT_EQ(RankChart::nameTop(200), 150);
}

} // namespace

} // namespace individual
