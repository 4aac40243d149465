#pragma once

#include <vector>

#include <QRectF>

#include "platform/chart/LineChart.h"

namespace chart {

// Where the parts of a chart stand, in points. What is measured from the chart's area begins
// `areaOffset` right of and below the corner of its frame.

constexpr double areaOffset = 3;

/// The inside of the plot, without the texts around it, of a chart whose frame has this size: in
/// points from the chart's area, never of a negative size. Titles and labels of the axes have their
/// room around it, and what stands at the end of a line its own on the right.
QRectF plotInside(const QSizeF& frame);

/// The same in points from the frame's corner.
QRectF plotInFrame(const QSizeF& frame);

/// What the axis of values shows. `maximum` is above `minimum`, `step` above 0.
struct ValueScale
{
    double minimum = 0;
    double maximum = 1;
    double step = 1;
};

/// The axis's own bounds where it has them, else bounds around the values; a step of 1, 2 or 5
/// times a power of ten that gives ten steps at most.
ValueScale scaleOf(const LineChart& chart);

/// The values at which the scale is marked, from its minimum on.
std::vector<double> marksOf(const ValueScale& scale);

/// How far below the plot's upper edge a value lies, as a share of its height: 0 to 1 for values of
/// the scale.
double shareOf(double value, const ValueScale& scale, Growth growth);

/// The middle of a category's slot, counted from 0, as a share of the plot's width.
double slotShare(int category, int categories);

} // namespace chart
