#include "export/RankChart.h"

#include "platform/chart/ChartLayout.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"

namespace exporting {

using namespace Qt::StringLiterals;

namespace {

chart::LineChart design(const RankChart& asked)
{
    chart::LineChart design;
    design.title = asked.title;
    design.titleSize = 12;
    design.axis.title = u"名次"_s;
    design.axis.titleSize = 15;
    design.axis.minimum = 1;
    design.axis.maximum = double(asked.studentCount);
    design.axis.growth = chart::Growth::Downward;
    design.hasMarkers = true;
    design.hasDataLabels = true;
    return design;
}

void drawAverage(excel::Worksheet& sheet, const excel::Chart& chart, const RankChart& asked)
{
    if (asked.studentCount == 0)
        throw runtime::Error(u"除数为零。"_s);
    const double y = chart.Top() + chart::areaOffset + chart.InsideTop()
                     + asked.averageRank * chart.InsideHeight() / double(asked.studentCount);
    const double x = chart.Left() + chart::areaOffset + chart.InsideLeft();
    const double end = x + chart.InsideWidth();
    excel::DrawnLine& line = sheet.addLine({x, y}, {end, y});
    line.setDashStyle(excel::DashStyle::Dash);
    line.setWeight(1);
    line.setColor(0);
    sheet.addLabel({end, y, 20, 12}).setText(u"平均"_s + runtime::doubleText(asked.averageRank));
}

} // namespace

PlotRoom HuiTu(excel::Worksheet& sheet, const RankChart& asked)
{
    const runtime::Trap trap{" - Sub HuiTu/FormDaoChu"};
    excel::Chart* chart = nullptr;
    trap([&] {
        const int end = asked.chartTop + asked.chartRows - 1;
        chart = &sheet.addChart(sheet.Range(asked.chartTop, 1, end, asked.chartColumns).place());
    });
    if (chart == nullptr)
        return PlotRoom::None;
    // That a column is missing is told once for all charts of a run.
    if (asked.labelColumn > 0 && asked.rankColumn > 0 && asked.lastRow >= asked.firstRow) {
        trap([&] {
            const auto cells = [&](int column) {
                return sheet.Range(asked.firstRow, column, asked.lastRow, column).area();
            };
            chart->setSource({cells(asked.labelColumn), cells(asked.rankColumn)});
        });
    }
    trap([&] { chart->setDesign(design(asked)); });
    trap([&] { drawAverage(sheet, *chart, asked); });
    return chart->InsideHeight() > 0 ? PlotRoom::Enough : PlotRoom::None;
}

} // namespace exporting
