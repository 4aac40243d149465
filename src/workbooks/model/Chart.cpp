#include "workbooks/model/Chart.h"

#include "platform/chart/ChartLayout.h"
#include "workbooks/model/Worksheet.h"

namespace excel {

namespace {

template <class Take>
void eachCell(const Worksheet& sheet, const CellRange& block, const Take& take)
{
    for (int row = block.firstRow; row <= block.lastRow; ++row) {
        for (int column = block.firstColumn; column <= block.lastColumn; ++column)
            take(sheet.Cells(row, column));
    }
}

} // namespace

void Chart::setDesign(chart::LineChart design)
{
    m_design = std::move(design);
    noteChange();
}

void Chart::setSource(const ChartSource& source)
{
    m_source = source;
    noteChange();
}

QRectF Chart::inside() const
{
    return chart::plotInside(place().size(), m_design.axis.growth);
}

chart::LineChart filledChart(const Worksheet& sheet, const Chart& chart)
{
    chart::LineChart filled = chart.design();
    filled.categories.clear();
    filled.values.clear();
    if (!chart.source())
        return filled;
    eachCell(sheet, chart.source()->categories,
             [&](const runtime::Value& value) { filled.categories.append(value.text()); });
    eachCell(sheet, chart.source()->values, [&](const runtime::Value& value) {
        filled.values.push_back(value.isNull() ? std::nullopt : std::optional(value.toDouble()));
    });
    return filled;
}

} // namespace excel
