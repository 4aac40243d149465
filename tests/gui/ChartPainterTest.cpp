#include "platform/chart/paint/ChartPainter.h"

#include <algorithm>

#include <QApplication>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include "platform/chart/ChartLayout.h"
#include "platform/chart/ChartLook.h"
#include "platform/chart/paint/FittedText.h"
#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;
using chart::Growth;
using chart::LineChart;

const QSizeF frameSize(400, 300);
constexpr double marginPoints = 20;

/// A student's ranks in three exams of 300 students, with a fourth that was missed.
LineChart ranks()
{
    LineChart chart;
    chart.title = u"张三排名分析(共300人)"_s;
    chart.axis.title = u"名次"_s;
    chart.axis.minimum = 1;
    chart.axis.maximum = 300;
    chart.axis.growth = Growth::Downward;
    chart.categories = {u"期中"_s, u"期末"_s, u"一模"_s, u"二模"_s};
    chart.values = {60, 200, std::nullopt, 120};
    return chart;
}

/// A chart painted with a margin around its frame; places are asked for in points of the frame.
class Painted
{
public:
    explicit Painted(const LineChart& chart, double scale = 2, const QSizeF& points = frameSize)
        : m_scale(scale),
          m_image(sizeFor(points), QImage::Format_RGB32),
          m_plot(chart::plotInFrame(points, chart.axis.growth)),
          m_growth(chart.axis.growth),
          m_valueScale(chart::scaleOf(chart))
    {
        m_image.fill(Qt::green);
        QPainter painter(&m_image);
        chart::ChartPlace place;
        place.points = points;
        m_frame = QRectF(dotAt({0, 0}), points * scale).toRect();
        place.frame = m_frame;
        place.scale = scale;
        place.font = QApplication::font();
        chart::paintChart(painter, chart, place);
    }

    const QRectF& plot() const { return m_plot; }
    QColor at(const QPointF& place) const { return m_image.pixelColor(dotAt(place).toPoint()); }

    /// Where a value of one of four categories stands.
    QPointF pointOf(int slot, double value) const
    {
        return {m_plot.left() + chart::slotShare(slot, 4) * m_plot.width(),
                m_plot.top() + chart::shareOf(value, m_valueScale, m_growth) * m_plot.height()};
    }

    int count(const QRectF& area, const QColor& color) const
    {
        const QRect dots =
            QRect(dotAt(area.topLeft()).toPoint(), dotAt(area.bottomRight()).toPoint())
            & m_image.rect();
        int found = 0;
        for (int y = dots.top(); y <= dots.bottom(); ++y) {
            for (int x = dots.left(); x <= dots.right(); ++x)
                found += m_image.pixelColor(x, y) == color ? 1 : 0;
        }
        return found;
    }
    int series(const QRectF& area) const
    {
        return count(area, QColor::fromRgb(QRgb(chart::seriesColor)));
    }
    int text(const QRectF& area) const { return count(area, Qt::black); }

    /// Dots outside the frame that were touched.
    int spilt() const
    {
        int touched = 0;
        for (int y = 0; y < m_image.height(); ++y) {
            for (int x = 0; x < m_image.width(); ++x) {
                const bool outside = !m_frame.contains(x, y);
                touched += outside && m_image.pixelColor(x, y) != QColor(Qt::green) ? 1 : 0;
            }
        }
        return touched;
    }

private:
    QSize sizeFor(const QSizeF& points) const
    {
        return ((points + QSizeF(2 * marginPoints, 2 * marginPoints)) * m_scale).toSize();
    }
    QPointF dotAt(const QPointF& points) const
    {
        return (points + QPointF(marginPoints, marginPoints)) * m_scale;
    }

    double m_scale;
    QImage m_image;
    QRect m_frame;
    QRectF m_plot;
    Growth m_growth;
    chart::ValueScale m_valueScale;
};

class OnAnyDevice : public testing::TestWithParam<double>
{
};

TEST_P(OnAnyDevice, EveryPartStandsAtItsPlaceInPoints)
{
    LineChart chart = ranks();
    chart.hasMarkers = false;
    const Painted painted(chart, GetParam());
    const QRectF plot = painted.plot();
    const QRectF sides[] = {{plot.right() - 1, plot.top() + 2, 2, plot.height() - 4},
                            {plot.left() + 2, plot.bottom() - 1, plot.width() - 4, 2}};
    for (const QRectF& side : sides) {
        const double least = std::max(side.width(), side.height()) * GetParam() / 2;
        EXPECT_GT(painted.count(side, QColor(0x80, 0x80, 0x80)), least);
    }
    const double grid = painted.pointOf(0, 151).y();
    EXPECT_GT(painted.count({plot.left() + 2, grid - 1, plot.width() - 4, 2},
                            QColor::fromRgb(QRgb(chart::gridlineColor))),
              plot.width() / 2);
    chart.hasMarkers = true;
    const Painted marked(chart, GetParam());
    EXPECT_GT(marked.series({marked.pointOf(1, 200) - QPointF(1, 1), QSizeF(2, 2)}), 0);
    EXPECT_EQ(marked.spilt(), 0);
}

INSTANTIATE_TEST_SUITE_P(ChartPainter, OnAnyDevice,
                         testing::Values(1, 96 / 72.0, 2, 200 / 72.0, 600 / 72.0));

TEST(ChartPainter, TheAreaIsWhitePaperWithABorderInItsFrame)
{
    const Painted painted(ranks());
    EXPECT_EQ(painted.at({5, 295}), QColor(Qt::white));
    EXPECT_EQ(painted.at({0.25, 150}), QColor(Qt::black));
    EXPECT_EQ(painted.at({399.5, 150}), QColor(Qt::black));
    EXPECT_EQ(painted.at(painted.pointOf(2, 180)), QColor(Qt::white));
    EXPECT_EQ(painted.spilt(), 0);
}

TEST(ChartPainter, TheLineJoinsNeighboursAndHasAGapAtAMissingValue)
{
    const Painted painted(ranks());
    const auto between = [&](double left, double right) {
        return painted.series({left, painted.plot().top(), right - left, painted.plot().height()});
    };
    const double first = painted.pointOf(0, 1).x();
    const double second = painted.pointOf(1, 1).x();
    EXPECT_GT(between(first + 10, second - 10), 0);
    EXPECT_EQ(between(second + 10, painted.pointOf(3, 1).x() - 10), 0);
}

TEST(ChartPainter, AStudentWithOneExamHasASinglePoint)
{
    LineChart chart = ranks();
    chart.categories = {u"期中"_s};
    chart.values = {150.5};
    const Painted painted(chart);
    const QPointF middle = painted.plot().center();
    EXPECT_GT(painted.series({middle - QPointF(4, 4), QSizeF(8, 8)}), 30);
    EXPECT_EQ(painted.series({painted.plot().topLeft(), middle - QPointF(8, 0)}), 0);
}

TEST(ChartPainter, NothingOfTheLineLeavesThePlot)
{
    LineChart chart = ranks();
    chart.values = {-1, 200, 5000, -1e300};
    chart.hasDataLabels = true;
    const Painted painted(chart);
    const QRectF plot = painted.plot();
    EXPECT_EQ(painted.series({0, 0, frameSize.width(), plot.top() - 1}), 0);
    EXPECT_EQ(painted.series({0, plot.bottom() + 1, frameSize.width(), 20}), 0);
    EXPECT_GT(painted.series({plot.left(), plot.top() + 2, plot.width() / 4, 20}), 0);
    EXPECT_EQ(painted.spilt(), 0);
}

TEST(ChartPainter, NamesStandAboveThePlotWhereValuesGrowDownwardElseBelow)
{
    LineChart chart = ranks();
    chart.title.clear();
    const auto texts = [](const Painted& painted) {
        const QRectF plot = painted.plot();
        return std::pair(painted.text({plot.left(), plot.top() - 20, plot.width(), 15}) > 0,
                         painted.text({plot.left(), plot.bottom() + 5, plot.width(), 8}) > 0);
    };
    EXPECT_EQ(texts(Painted(chart)), std::pair(true, false));
    chart.axis.growth = Growth::Upward;
    EXPECT_EQ(texts(Painted(chart)), std::pair(false, true));
}

TEST(ChartPainter, TitlesAndNumbersStandInTheirRooms)
{
    const LineChart all = ranks();
    const QRectF plot = Painted(all).plot();
    const QRectF titleRoom(100, 4, 200, 20);
    const QRectF axisRoom(3, plot.top(), 18, plot.height());
    const QRectF numbers(25, plot.top(), plot.left() - 25 - 4, plot.height());
    EXPECT_GT(Painted(all).text(titleRoom), 0);
    EXPECT_GT(Painted(all).text(axisRoom), 0);
    EXPECT_GT(Painted(all).text(numbers), 0);
    LineChart bare = all;
    bare.title.clear();
    bare.axis.title.clear();
    EXPECT_EQ(Painted(bare).text(titleRoom), 0);
    EXPECT_EQ(Painted(bare).text(axisRoom), 0);
}

TEST(ChartPainter, LabelsStandAboveTheirPointsAndBelowThemAtTheUpperEdge)
{
    LineChart chart = ranks();
    chart.values = {1, 200, std::nullopt, 120};
    const auto ink = [&](int slot, double value, double below) {
        const Painted painted(chart);
        const QPointF point = painted.pointOf(slot, value) + QPointF(0, below);
        return painted.text({point - QPointF(8, 4), QSizeF(16, 8)});
    };
    EXPECT_EQ(ink(1, 200, -10), 0);
    chart.hasDataLabels = true;
    EXPECT_GT(ink(1, 200, -10), 0);
    EXPECT_EQ(ink(1, 200, 10), 0);
    EXPECT_GT(ink(0, 1, 10), 0);
}

TEST(ChartPainter, AChartWithoutDataOrRoomHasNoPoints)
{
    LineChart empty = ranks();
    empty.categories.clear();
    empty.values.clear();
    EXPECT_EQ(Painted(empty).series({0, 0, 400, 300}), 0);
    EXPECT_EQ(Painted(ranks(), 2, {110, 60}).series({0, 0, 110, 60}), 0);
    EXPECT_EQ(Painted(ranks(), 2, {110, 0}).spilt(), 0);
    EXPECT_EQ(Painted(ranks(), 2, {1, 1}).spilt(), 0);
}

TEST(ChartPainter, HostileTextsStayInTheirRooms)
{
    LineChart chart = ranks();
    const QString hostile = u"'--\n"_s + QString(10000, u'长');
    chart.title = hostile;
    chart.axis.title = hostile;
    chart.categories = {hostile, hostile, u"一模"_s};
    const Painted painted(chart);
    EXPECT_EQ(painted.spilt(), 0);
    const QRectF plot = painted.plot();
    EXPECT_EQ(painted.text({plot.left() + 2, plot.top() + 2, plot.width() - 4, 20}), 0);
    EXPECT_EQ(painted.text({plot.left() - 20, 30, 18, plot.top() - 40}), 0);
}

TEST(FittedText, TakesOneLineWhereItFitsElseTwoOfWhichTheSecondIsCut)
{
    const QFont font = QApplication::font();
    const QImage device(1, 1, QImage::Format_RGB32);
    const double room = QFontMetricsF(font, &device).horizontalAdvance(u"考试考试"_s) + 1;
    const auto lines = [&](const QString& text) {
        return chart::twoLines(text, font, &device, room);
    };
    EXPECT_EQ(lines({}), QStringList());
    EXPECT_EQ(lines(u" \n "_s), QStringList());
    EXPECT_EQ(lines(u"期\n中"_s), QStringList(u"期 中"_s));
    EXPECT_EQ(lines(u"期中考试"_s), QStringList(u"期中考试"_s));
    EXPECT_EQ(lines(u"期中考试成绩"_s), QStringList({u"期中考试"_s, u"成绩"_s}));
    EXPECT_EQ(lines(u"期中考试期中考试期中"_s), QStringList({u"期中考试"_s, u"期中考…"_s}));
}

} // namespace
