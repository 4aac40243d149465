#pragma once

#include <optional>

#include "platform/chart/LineChart.h"
#include "workbooks/model/CellRange.h"
#include "workbooks/model/Shape.h"

namespace excel {

class Worksheet;

/// The cells that a chart shows: blocks of one column (or row) each, of the same number of cells.
struct ChartSource
{
    CellRange categories;
    CellRange values;

    friend bool operator==(const ChartSource&, const ChartSource&) = default;
};

/// A line chart over the cells, of one series.
class Chart : public Shape
{
public:
    using Shape::Shape;

    /// Titles, axis, markers and labels; categories and values are those of the cells.
    const chart::LineChart& design() const { return m_design; }
    void setDesign(chart::LineChart design);

    /// Nothing for a chart without data.
    const std::optional<ChartSource>& source() const { return m_source; }
    void setSource(const ChartSource& source);

    // The plot without the texts around it, in points from the chart's area, which begins
    // chart::areaOffset inside its place.

    double InsideLeft() const { return inside().x(); }
    double InsideTop() const { return inside().y(); }
    double InsideWidth() const { return inside().width(); }
    double InsideHeight() const { return inside().height(); }

private:
    QRectF inside() const;

    chart::LineChart m_design;
    std::optional<ChartSource> m_source;
};

/// The chart with the categories and values that its cells hold now. A cell that is empty has no
/// point, and a text counts as 0.
chart::LineChart filledChart(const Worksheet& sheet, const Chart& chart);

} // namespace excel
