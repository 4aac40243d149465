#pragma once

#include <QFont>
#include <QRectF>

#include "platform/chart/LineChart.h"

class QPainter;

namespace chart {

/// Where a chart is painted. The layout follows from the size in points; the frame may be wider or
/// higher than these at the device's scale, where its edges are those of cells.
struct ChartPlace
{
    QSizeF points;
    QRectF frame;     ///< in the painter's dots
    double scale = 1; ///< dots in a point, for texts and lines
    QFont font;       ///< of all texts; they have sizes of their own
};

/// Paints a chart, and nothing outside its frame: a white area with its title, the plot with the
/// scale and its gridlines, the names of the categories at the plot's edge where the scale begins,
/// and the line with diamonds and labels. Names that are too long take two lines and are cut; of
/// very many each second or third is shown.
void paintChart(QPainter& painter, const LineChart& chart, const ChartPlace& place);

} // namespace chart
