#include "individual/paint/RankChartPainter.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include "individual/paint/PaintingApplication.h"
#include "support/PrintQString.h"

namespace individual {

namespace {

constexpr double dotsPerTwip = 96.0 / 1440;
constexpr int red = 0x0000FF;
constexpr int blue = 0xFF0000;

RankChart chartOf(std::vector<RankedColumn> columns)
{
    return rankChart(
        {9000, 4000, u"王五"_s, RankKind::Grade, {u"一模"_s, u"二模"_s}, std::move(columns), 300});
}

QImage painted(const RankChart& chart, const ChartInk& ink = {}, double scale = dotsPerTwip)
{
    QImage image(int(9000 * scale) + 100, int(4000 * scale) + 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    RankChartPainter(chart, scale, QGuiApplication::font(), ink).paint(painter);
    return image;
}

QColor at(const QImage& image, double x, double y)
{
    return image.pixelColor(int(x * dotsPerTwip), int(y * dotsPerTwip));
}

bool isNear(const QColor& one, const QColor& other)
{
    return std::abs(one.red() - other.red()) + std::abs(one.green() - other.green())
               + std::abs(one.blue() - other.blue())
           < 150;
}

/// How many dots of the area are of this colour, or nearly so at the edges of letters.
int dots(const QImage& image, const QRect& area, const QColor& color)
{
    int found = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            found += isNear(image.pixelColor(x, y), color) ? 1 : 0;
    }
    return found;
}

bool isEmpty(const QImage& image, const QRect& area)
{
    QImage white(area.size(), QImage::Format_RGB32);
    white.fill(Qt::white);
    return image.copy(area) == white;
}

TEST(RankChartPainter, HasFontsForChineseNames)
{
    EXPECT_TRUE(PaintingApplication::hasChineseGlyphs());
}

TEST(RankChartPainter, PointsAndLinesHaveTheColourOfTheirColumn)
{
    const QImage image = painted(chartOf({{u"语文"_s, red, {u"150"_s, u"150"_s}}}));
    EXPECT_EQ(at(image, 2500, 2000), QColor(255, 0, 0));
    EXPECT_EQ(at(image, 6500, 2000), QColor(255, 0, 0));
    EXPECT_GT(at(image, 4700, 2000).red(), 200);
    EXPECT_LT(at(image, 4700, 2000).green(), 150);
}

TEST(RankChartPainter, ALaterColumnLiesOverAnEarlierOne)
{
    const QImage image = painted(
        chartOf({{u"语文"_s, red, {u"150"_s, u"150"_s}}, {u"数学"_s, blue, {u"150"_s, u"150"_s}}}));
    EXPECT_EQ(at(image, 2500, 2000), QColor(0, 0, 255));
    EXPECT_EQ(at(image, 6500, 2000), QColor(0, 0, 255));
}

TEST(RankChartPainter, FrameAndTextsHaveTheInkThatIsGiven)
{
    const ChartInk ink{Qt::green, Qt::magenta};
    const QImage image = painted(chartOf({}), ink);
    EXPECT_GT(dots(image, {33, 33, 1, 100}, Qt::green), 90);
    EXPECT_GT(dots(image, {280, 0, 40, 32}, Qt::magenta), 5) << "the name";
    EXPECT_GT(dots(image, {150, 234, 40, 33}, Qt::magenta), 5) << "an exam";
}

TEST(RankChartPainter, TheNoteStandsInTheCornerOnceThereIsOne)
{
    const QRect corner(4, 4, 60, 26);
    EXPECT_TRUE(isEmpty(painted(chartOf({})), corner));
    EXPECT_FALSE(isEmpty(painted(chartOf({{u"语文"_s, red, {}}})), corner));
}

TEST(RankChartPainter, ARankStandsAboveItsPointInItsColour)
{
    const QImage image = painted(chartOf({{u"语文"_s, blue, {u"150"_s}}}));
    const QRect above(155, 110, 24, 16);
    EXPECT_GT(dots(image, above, QColor(0, 0, 255)), 2);
}

TEST(RankChartPainter, NothingLiesOutsideTheSurface)
{
    RankChart chart = chartOf({{u"语文"_s, red, {u"400"_s, u"500"_s}}});
    chart.name = QString(10'000, u'长');
    chart.examLabels.front().text = QString(10'000, u'长');
    const QImage image = painted(chart);
    EXPECT_TRUE(isEmpty(image, {601, 0, 90, 360}));
    EXPECT_TRUE(isEmpty(image, {0, 268, 690, 90}));
}

TEST(RankChartPainter, EverythingGrowsWithTheScale)
{
    const QImage image =
        painted(chartOf({{u"语文"_s, red, {u"150"_s, u"150"_s}}}), {}, 3 * dotsPerTwip);
    EXPECT_EQ(image.pixelColor(500, 400), QColor(255, 0, 0));
    EXPECT_EQ(image.pixelColor(504, 403), QColor(255, 0, 0)) << "within the marker";
    EXPECT_EQ(image.pixelColor(507, 407), QColor(Qt::white)) << "outside of it";
}

TEST(RankChartPainter, ColoursAreReadWithRedInTheLowestByte)
{
    EXPECT_EQ(chartColor(0x112233), QColor(0x33, 0x22, 0x11));
}

} // namespace

} // namespace individual
