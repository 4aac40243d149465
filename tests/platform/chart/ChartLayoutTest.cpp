#include "platform/chart/ChartLayout.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using chart::Growth;
using chart::LineChart;
using chart::ValueScale;

void expectSame(const QRectF& found, const QRectF& expected)
{
    EXPECT_EQ(found, expected) << found.x() << ' ' << found.y() << ' ' << found.width() << ' '
                               << found.height();
}

TEST(ChartLayout, ThePlotLeavesRoomForTitlesNamesAndTheLabelAtTheEndOfALine)
{
    // 54 for the value axis, 60 at the right, 26 for the title, 30 for names, 12 without names.
    expectSame(chart::plotInside({372, 300}, Growth::Downward), {54, 56, 252, 226});
    expectSame(chart::plotInside({372, 300}, Growth::Upward), {54, 26, 252, 238});
}

TEST(ChartLayout, TheAreaOfAChartBeginsThreePointsInsideItsFrame)
{
    expectSame(chart::plotInFrame({372, 300}, Growth::Downward), {57, 59, 252, 226});
}

TEST(ChartLayout, AFrameWithoutRoomHasAPlotOfNoSize)
{
    expectSame(chart::plotInside({100, 40}, Growth::Downward), {54, 56, 0, 0});
    expectSame(chart::plotInside({0, 0}, Growth::Upward), {54, 26, 0, 0});
}

struct ScaleCase
{
    std::vector<std::optional<double>> values;
    std::optional<double> minimum;
    std::optional<double> maximum;
    ValueScale scale;
};

void PrintTo(const ScaleCase& one, std::ostream* out)
{
    *out << one.scale.minimum << " to " << one.scale.maximum;
}

class Scales : public testing::TestWithParam<ScaleCase>
{
};

TEST_P(Scales, FollowTheirBoundsElseTheValues)
{
    LineChart chart;
    chart.values = GetParam().values;
    chart.axis.minimum = GetParam().minimum;
    chart.axis.maximum = GetParam().maximum;
    const ValueScale found = chart::scaleOf(chart);
    EXPECT_EQ(found.minimum, GetParam().scale.minimum);
    EXPECT_EQ(found.maximum, GetParam().scale.maximum);
    EXPECT_EQ(found.step, GetParam().scale.step);
}

constexpr double infinity = std::numeric_limits<double>::infinity();

INSTANTIATE_TEST_SUITE_P(
    ChartLayout, Scales,
    testing::Values(ScaleCase{{12, 250}, 1, 300, {1, 300, 50}},
                    ScaleCase{{12, 999}, 1, 300, {1, 300, 50}}, ScaleCase{{3}, 1, 1, {1, 2, 0.1}},
                    ScaleCase{{3}, 1, 0, {1, 2, 0.1}}, ScaleCase{{}, {}, {}, {0, 1, 0.1}},
                    ScaleCase{{-3, 7}, {}, {}, {-3, 7, 1}},
                    ScaleCase{{95, std::nullopt, 430}, {}, {}, {0, 450, 50}},
                    ScaleCase{{5, 1e300, infinity, std::nan("")}, {}, {}, {0, 5, 0.5}},
                    ScaleCase{{5}, 1, {}, {1, 5, 0.5}}));

TEST(ChartLayout, MarksBeginAtTheMinimumAndEndWithinTheScale)
{
    EXPECT_EQ(chart::marksOf({1, 300, 50}), (std::vector<double>{1, 51, 101, 151, 201, 251}));
    EXPECT_EQ(chart::marksOf({0, 5, 5}), (std::vector<double>{0, 5}));
    EXPECT_EQ(chart::marksOf({0, 1, 0.1}).size(), 11U);
}

TEST(ChartLayout, DownwardTheMinimumIsAtTheUpperEdgeUpwardAtTheLower)
{
    const ValueScale ranks{1, 301, 50};
    EXPECT_EQ(chart::shareOf(1, ranks, Growth::Downward), 0);
    EXPECT_EQ(chart::shareOf(301, ranks, Growth::Downward), 1);
    EXPECT_EQ(chart::shareOf(76, ranks, Growth::Downward), 0.25);
    EXPECT_EQ(chart::shareOf(76, ranks, Growth::Upward), 0.75);
    EXPECT_LT(chart::shareOf(-1, ranks, Growth::Downward), 0);
}

TEST(ChartLayout, OnlyValuesBetweenTheBoundsAreOnTheScale)
{
    const ValueScale ranks{1, 300, 50};
    EXPECT_TRUE(chart::isOnScale(1, ranks));
    EXPECT_TRUE(chart::isOnScale(300, ranks));
    EXPECT_FALSE(chart::isOnScale(-1, ranks));
    EXPECT_FALSE(chart::isOnScale(301, ranks));
    EXPECT_FALSE(chart::isOnScale(std::nan(""), ranks));
}

TEST(ChartLayout, EachCategoryAndEachValueHasASlotAndStandsInItsMiddle)
{
    LineChart chart;
    EXPECT_EQ(chart::slotCount(chart), 0);
    chart.categories = {u"一"_s, u"二"_s};
    EXPECT_EQ(chart::slotCount(chart), 2);
    chart.values = {1, 2, std::nullopt};
    EXPECT_EQ(chart::slotCount(chart), 3);
    EXPECT_EQ(chart::slotShare(0, 1), 0.5);
    EXPECT_EQ(chart::slotShare(1, 4), 0.375);
}

} // namespace
