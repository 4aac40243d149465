#pragma once

#include <vector>

#include <QRectF>

#include "platform/chart/LineChart.h"

namespace chart {

// Where the parts of a chart stand, in points. What is measured from the chart's area begins
// `areaOffset` right of and below the corner of its frame.

constexpr double areaOffset = 3;

// Heights of the rooms for the chart's title, at its top, and for two lines of names beside the
// plot.
constexpr double titleRoom = 26;
constexpr double namesRoom = 30;

/// The inside of the plot, without the texts around it, of a chart whose frame has this size: in
/// points from the chart's area, never of a negative size. Titles and labels of the axes have their
/// room around it, and what stands at the end of a line its own on the right. The categories stand
/// where the scale begins: above the plot where values grow downward.
QRectF plotInside(const QSizeF& frame, Growth growth);

/// The same in points from the frame's corner.
QRectF plotInFrame(const QSizeF& frame, Growth growth);

/// What the axis of values shows. `maximum` is above `minimum`, `step` above 0.
struct ValueScale
{
    double minimum = 0;
    double maximum = 1;
    double step = 1;
};

/// The axis's own bounds where it has them, else bounds around the values; a step of 1, 2 or 5
/// times a power of ten that gives ten steps at most. Values beyond 1e15 are passed over.
ValueScale scaleOf(const LineChart& chart);

/// The values at which the scale is marked, from its minimum on.
std::vector<double> marksOf(const ValueScale& scale);

/// How far below the plot's upper edge a value lies, as a share of its height: 0 to 1 for values of
/// the scale.
double shareOf(double value, const ValueScale& scale, Growth growth);

/// True for a value from the scale's minimum to its maximum.
bool isOnScale(double value, const ValueScale& scale);

/// The categories that the chart has room for: one for each name and each value.
int slotCount(const LineChart& chart);

/// The middle of a category's slot, counted from 0, as a share of the plot's width.
double slotShare(int category, int categories);

} // namespace chart
