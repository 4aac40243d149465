#include <QApplication>
#include <QLabel>
#include <QPainter>
#include <QScrollBar>

#include <gtest/gtest.h>

#include "gui/WorkbookFixture.h"
#include "platform/chart/ChartLayout.h"
#include "platform/chart/ChartLook.h"
#include "workbooks/model/Points.h"
#include "workbooks/ui/SheetLayout.h"
#include "workbooks/ui/SheetPages.h"

namespace {

using namespace Qt::StringLiterals;
using excel::CellRange;
using excel::Chart;
using excel::Worksheet;

const QColor series = QColor::fromRgb(QRgb(chart::seriesColor));
const QColor plotBorder = QColor::fromRgb(QRgb(chart::plotBorderColor));

// The cells that a chart of the tests covers, and where its exams and ranks stand.
constexpr CellRange under{7, 1, 26, 8};
constexpr excel::ChartSource source{{3, 2, 5, 2}, {3, 3, 5, 3}};

/// Three exams of 100 students with the ranks 20, 80 and 50, and a chart of them under them.
Chart& addRanks(Worksheet& sheet)
{
    const QStringList exams{u"期中"_s, u"期末"_s, u"一模"_s};
    const int ranks[] = {20, 80, 50};
    for (int i = 0; i < 3; ++i) {
        sheet.setCell(3 + i, 2, exams[i]);
        sheet.setCell(3 + i, 3, ranks[i]);
    }
    Chart& chart = sheet.addChart(sheet.Range(under).place());
    chart::LineChart design;
    design.title = u"张三排名分析(共100人)"_s;
    design.axis = {u"名次"_s, 15, 1, 100, chart::Growth::Downward};
    chart.setDesign(design);
    chart.setSource(source);
    return chart;
}

/// The dashed line at the average rank and the label at its end.
double addAverage(Worksheet& sheet, const Chart& chart)
{
    const double y =
        chart.Top() + chart::areaOffset + chart.InsideTop() + 50 * chart.InsideHeight() / 100;
    const double x = chart.Left() + chart::areaOffset + chart.InsideLeft();
    excel::DrawnLine& line = sheet.addLine({x, y}, {x + chart.InsideWidth(), y});
    line.setDashStyle(excel::DashStyle::Dash);
    line.setWeight(1);
    sheet.addLabel({x + chart.InsideWidth(), y, 20, 12}).setText(u"平均50"_s);
    return y;
}

/// Where a rank of an exam lies, in points from the sheet's corner.
QPointF pointOf(const Chart& chart, int exam, double rank)
{
    const chart::ValueScale scale{1, 100, 10};
    return {chart.Left() + chart::areaOffset + chart.InsideLeft()
                + chart::slotShare(exam, 3) * chart.InsideWidth(),
            chart.Top() + chart::areaOffset + chart.InsideTop()
                + chart::shareOf(rank, scale, chart::Growth::Downward) * chart.InsideHeight()};
}

/// An image of cells in which places are asked for in points.
class Seen
{
public:
    Seen(QImage image, double scale) : m_image(std::move(image)), m_scale(scale) {}

    QColor at(const QPointF& place) const
    {
        return m_image.pixelColor((place * m_scale).toPoint());
    }
    /// Dots of a colour that are not farther than this from a place.
    int around(const QPointF& place, double points, const QColor& color) const
    {
        return count({place - QPointF(points, points), QSizeF(2 * points, 2 * points)}, color);
    }
    /// Dots of an area that are not of a colour, such as those of a text.
    int unlike(const QRectF& area, const QColor& color) const
    {
        return dotsOf(area).width() * dotsOf(area).height() - count(area, color);
    }
    int count(const QRectF& area, const QColor& color) const
    {
        const QRect dots = dotsOf(area);
        int found = 0;
        for (int y = dots.top(); y <= dots.bottom(); ++y) {
            for (int x = dots.left(); x <= dots.right(); ++x)
                found += m_image.pixelColor(x, y) == color ? 1 : 0;
        }
        return found;
    }

private:
    QRect dotsOf(const QRectF& area) const
    {
        return QRectF(area.topLeft() * m_scale, area.size() * m_scale).toRect() & m_image.rect();
    }

    QImage m_image;
    double m_scale;
};

class SheetDrawings : public support::WorkbookFixture
{
protected:
    SheetDrawings() { window().resize(1000, 900); }

    Seen seen()
    {
        QApplication::processEvents();
        const QImage image = view().viewport()->grab().toImage();
        const double scale = view().logicalDpiY() / excel::pointsPerInch;
        return {image, scale * image.devicePixelRatio()};
    }
    QRect cell(int row, int column)
    {
        return view().visualRect(view().model()->index(row - 1, column - 1));
    }
    QString pictureOf(const QColor& color)
    {
        QImage image(40, 40, QImage::Format_RGB32);
        image.fill(color);
        EXPECT_TRUE(image.save(file(u"picture.png"_s)));
        return file(u"picture.png"_s);
    }
};

/// A page of the sheet, whose first cell stands at the image's corner.
Seen printed(const Worksheet& sheet, int page = 0, int dotsPerInch = 200,
             const QSizeF& area = {600, 500})
{
    const double scale = dotsPerInch / excel::pointsPerInch;
    QImage image((area * scale).toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    image.setDotsPerMeterX(qRound(dotsPerInch / 0.0254));
    image.setDotsPerMeterY(qRound(dotsPerInch / 0.0254));
    QPainter painter(&image);
    excel::SheetPages(sheet, area).paint(painter, page, scale);
    painter.end();
    return {image, scale};
}

TEST_F(SheetDrawings, AChartIsFilledFromTheCellsThatStandThereNow)
{
    const Chart& chart = addRanks(sheet(1));
    window().refresh();
    EXPECT_GT(seen().around(pointOf(chart, 1, 80), 1.5, series), 0);
    EXPECT_EQ(seen().around(pointOf(chart, 1, 30), 1.5, series), 0);
    sheet(1).setCell(4, 3, 30);
    window().refresh();
    EXPECT_EQ(seen().around(pointOf(chart, 1, 80), 1.5, series), 0);
    EXPECT_GT(seen().around(pointOf(chart, 1, 30), 1.5, series), 0);
}

TEST_F(SheetDrawings, AFrameEndsAtTheCellsThatItWasMadeOf)
{
    sheet(1).setColumnWidth(1, 35, 4.6);
    sheet(1).setRowHeight(9, 20.3);
    sheet(1).setRowHeight(10, 7.7);
    addRanks(sheet(1));
    window().refresh();
    view().setColumnWidth(2, 100); // as the user drags it
    const QRect area = cell(under.firstRow, 1) | cell(under.lastRow, under.lastColumn);
    const QImage image = view().viewport()->grab().toImage();
    const auto at = [&](int x, int y) {
        const QPointF dot = QPointF(x + 0.5, y + 0.5) * image.devicePixelRatio();
        return image.pixelColor(int(dot.x()), int(dot.y()));
    };
    const QColor line = Qt::black;
    const QPoint middle = area.center() + QPoint(0, 7);
    EXPECT_EQ(at(area.left(), middle.y()), line);
    EXPECT_EQ(at(middle.x(), area.top()), line);
    EXPECT_EQ(at(area.right(), middle.y()), line);
    EXPECT_EQ(at(middle.x(), area.bottom()), line);
    EXPECT_EQ(at(area.right() - 2, middle.y()), QColor(Qt::white));
    EXPECT_NE(at(area.right() + 1, middle.y()), line);
    EXPECT_NE(at(middle.x(), area.bottom() + 1), line);
}

TEST_F(SheetDrawings, LineAndLabelLieAtTheAverageOfTheChart)
{
    const Chart& chart = addRanks(sheet(1));
    const double y = addAverage(sheet(1), chart);
    window().refresh();
    const double left = pointOf(chart, 0, 1).x();
    const double end = chart.Left() + chart::areaOffset + chart.InsideLeft() + chart.InsideWidth();
    for (const Seen& one : {seen(), printed(sheet(1))}) {
        const QRectF along(left, y - 1, 60, 2);
        EXPECT_GT(one.count(along, Qt::black), 20);
        EXPECT_LT(one.count(along, Qt::black), one.count(along, Qt::white)); // it is dashed
        EXPECT_EQ(one.count({left, y - 4, 15, 3}, Qt::black), 0);
        EXPECT_GT(one.unlike({end + 1, y, 30, 12}, Qt::white), 40);
    }
}

TEST_F(SheetDrawings, APageHasEveryPartWithinTwoPointsOfItsPlaceOnTheSheet)
{
    const Chart& chart = addRanks(sheet(1));
    addAverage(sheet(1), chart);
    for (const int dotsPerInch : {96, 200, 600}) {
        const Seen page = printed(sheet(1), 0, dotsPerInch);
        EXPECT_GT(page.around(pointOf(chart, 0, 20), 1, series), 0);
        EXPECT_GT(page.around(pointOf(chart, 1, 80), 1, series), 0);
        const QRectF place = chart.place();
        EXPECT_GT(page.around({place.right(), place.center().y()}, 1, Qt::black), 0);
        EXPECT_EQ(page.around({place.right() + 3, place.center().y()}, 1, Qt::black), 0);
        const double plotEnd =
            place.left() + chart::areaOffset + chart.InsideLeft() + chart.InsideWidth();
        EXPECT_GT(page.around({plotEnd, place.center().y() - 20}, 1, plotBorder), 0);
    }
}

TEST_F(SheetDrawings, ALineMayRunInAnyDirectionInItsColour)
{
    sheet(1).addLine({200, 60}, {100, 160}).setColor(0xff0000);
    excel::DrawnLine& thick = sheet(1).addLine({250, 60}, {250, 160});
    thick.setWeight(8);
    window().refresh();
    EXPECT_GT(seen().around({150, 110}, 1.5, Qt::red), 0);
    EXPECT_EQ(seen().around({130, 90}, 3, Qt::red), 0);
    EXPECT_GT(seen().around({253, 110}, 0.5, Qt::black), 0);
}

TEST_F(SheetDrawings, ALaterDrawingLiesOverAnEarlierOne)
{
    excel::Picture& below = sheet(1).insertPicture(pictureOf(Qt::red));
    below.setTop(120);
    const Chart& chart = addRanks(sheet(1));
    window().refresh();
    const QPointF both(10, 125);
    ASSERT_TRUE(chart.place().contains(both));
    EXPECT_EQ(seen().at(both), QColor(Qt::white));
    sheet(1).insertPicture(pictureOf(Qt::blue)).setTop(120);
    window().refresh();
    EXPECT_EQ(seen().at(both), QColor(Qt::blue));
}

TEST_F(SheetDrawings, ChartsAreWhitePaperUnderADarkThemeToo)
{
    const Chart& chart = addRanks(sheet(1));
    sheet(1).addLabel({chart.Left() + 20, chart.Top() + 20, 20, 12}).setText(u"在图上"_s);
    sheet(1).addLabel({20, 400, 20, 12}).setText(u"不在图上"_s);
    QPalette dark = view().palette();
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Text, QColor(240, 240, 240));
    view().setPalette(dark);
    window().refresh();
    const Seen all = seen();
    EXPECT_EQ(all.at(chart.place().topLeft() + QPointF(5, 5)), QColor(Qt::white));
    EXPECT_GT(all.count({chart.Left() + 20, chart.Top() + 20, 30, 12}, Qt::black), 0);
    EXPECT_GT(all.count({20, 400, 40, 12}, QColor(240, 240, 240)), 5);
}

TEST_F(SheetDrawings, ALabelIsReadWholeWhereItIsWiderThanItsPlace)
{
    sheet(1).addLabel({100, 100, 20, 12}).setText(u"平均123.45"_s);
    window().refresh();
    const QRectF behind(135, 100, 15, 12);
    ASSERT_GT(seen().unlike(behind, view().palette().color(QPalette::Base)), 40);
}

TEST_F(SheetDrawings, TheWindowReachesAChartBelowTheLastCell)
{
    Chart& chart = addRanks(sheet(1));
    chart.setTop(3000);
    window().refresh();
    view().verticalScrollBar()->setValue(view().verticalScrollBar()->maximum());
    const int bottom = view().rowAt(view().viewport()->height() - 1);
    EXPECT_GE(bottom + 1, sheet(1).geometry().rowAt(chart.place().bottom()));
    EXPECT_EQ(view().sheetModel().used().lastRow, 5);
}

TEST_F(SheetDrawings, MovingAndResizingAreSeenAndHaveToBeSaved)
{
    Chart& chart = addRanks(sheet(1));
    window().refresh();
    book.setSaved(true);
    chart.setLeft(30);
    EXPECT_FALSE(book.Saved());
    window().refresh();
    EXPECT_GT(seen().around(pointOf(chart, 0, 20), 1.5, series), 0);
    book.setSaved(true);
    chart.setHeight(200);
    EXPECT_FALSE(book.Saved());
    window().refresh();
    EXPECT_GT(seen().around(pointOf(chart, 1, 80), 1.5, series), 0);
}

TEST_F(SheetDrawings, TheStatusBarNamesTheChartOverTheCurrentCell)
{
    addRanks(sheet(1));
    window().refresh();
    auto* text = part<QLabel>(u"CellText"_s);
    clickCell(4, 3);
    EXPECT_EQ(text->text(), u"C4  80"_s);
    clickCell(12, 4);
    EXPECT_EQ(text->text(), u"D12    [图表] 张三排名分析(共100人)"_s);
}

TEST_F(SheetDrawings, AWorkbookClosedFromOutsideShowsNothingMore)
{
    addRanks(sheet(1));
    window().refresh();
    book.Close();
    view().setCurrentIndex(view().model()->index(11, 3));
    EXPECT_EQ(seen().count({0, 0, 300, 300}, series), 0);
}

TEST_F(SheetDrawings, APageForWhatLiesBelowAndBesideTheCells)
{
    Worksheet& one = sheet(2);
    EXPECT_EQ(excel::shownBlock(one), (CellRange{1, 1, 1, 1}));
    one.addChart(one.Range(7, 1, 30, 8).place());
    EXPECT_EQ(excel::shownBlock(one), (CellRange{1, 1, 30, 8}));
    one.addLine({10, 10}, {10, one.geometry().rowTop(31) + 1});
    EXPECT_EQ(excel::shownBlock(one), (CellRange{1, 1, 31, 8}));
    one.addLabel({one.geometry().columnLeft(10), 0, 1, 1});
    EXPECT_EQ(excel::shownBlock(one), (CellRange{1, 1, 31, 10}));
}

TEST_F(SheetDrawings, AManualBreakBeginsThePageOfTheNextStudent)
{
    Worksheet& one = sheet(1);
    addRanks(one);
    one.addPageBreak(27);
    one.setCell(27, 1, u"李四"_s);
    Chart& second = one.addChart(one.Range(33, 1, 52, 8).place());
    second.setDesign({});
    const excel::SheetPages pages(one, {600, 500});
    ASSERT_EQ(pages.count(), 2);
    EXPECT_EQ(pages.cells(0), (CellRange{1, 1, 26, 8}));
    EXPECT_EQ(pages.cells(1), (CellRange{27, 1, 52, 8}));
    const double top = one.geometry().rowTop(27);
    const QPointF edge(second.place().right(), second.place().center().y() - top);
    EXPECT_GT(printed(one, 1).around(edge, 1, Qt::black), 0);
    EXPECT_EQ(printed(one, 1).count({0, 0, 600, 500}, series), 0);
}

} // namespace
