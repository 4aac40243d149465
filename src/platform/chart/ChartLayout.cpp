#include "platform/chart/ChartLayout.h"

#include <algorithm>
#include <cmath>

namespace chart {

namespace {

// Rooms around the inside of the plot, in points: the value axis with its title on the left, a
// label such as 平均 123.45 on the right, nothing at the side without names.
constexpr double roomLeft = 54;
constexpr double roomRight = 60;
constexpr double edgeRoom = 12;

constexpr int mostSteps = 10;
constexpr double largestValue = 1e15;

double niceStep(double range)
{
    const double rough = range / mostSteps;
    const double power = std::pow(10, std::floor(std::log10(rough)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= rough)
            return factor * power;
    }
    return 10 * power;
}

struct Bounds
{
    double low;
    double high;
};

Bounds boundsOf(const std::vector<std::optional<double>>& values)
{
    Bounds bounds{0, 0};
    bool found = false;
    for (const std::optional<double>& value : values) {
        if (!value || !(std::abs(*value) <= largestValue))
            continue;
        bounds.low = found ? std::min(bounds.low, *value) : *value;
        bounds.high = found ? std::max(bounds.high, *value) : *value;
        found = true;
    }
    return bounds;
}

} // namespace

QRectF plotInside(const QSizeF& frame, Growth growth)
{
    const bool namesAbove = growth == Growth::Downward;
    const double above = titleRoom + (namesAbove ? namesRoom : 0);
    const double below = namesAbove ? edgeRoom : namesRoom;
    const double width = std::max(0.0, frame.width() - 2 * areaOffset - roomLeft - roomRight);
    const double height = std::max(0.0, frame.height() - 2 * areaOffset - above - below);
    return {roomLeft, above, width, height};
}

QRectF plotInFrame(const QSizeF& frame, Growth growth)
{
    return plotInside(frame, growth).translated(areaOffset, areaOffset);
}

ValueScale scaleOf(const LineChart& chart)
{
    const Bounds found = boundsOf(chart.values);
    ValueScale scale;
    scale.minimum = chart.axis.minimum.value_or(std::min(0.0, found.low));
    scale.maximum = chart.axis.maximum.value_or(found.high);
    if (!(scale.maximum > scale.minimum))
        scale.maximum = scale.minimum + 1;
    scale.step = niceStep(scale.maximum - scale.minimum);
    if (!chart.axis.maximum) {
        const double steps = std::ceil((scale.maximum - scale.minimum) / scale.step);
        scale.maximum = scale.minimum + steps * scale.step;
    }
    return scale;
}

std::vector<double> marksOf(const ValueScale& scale)
{
    std::vector<double> marks;
    const int steps = int(std::floor((scale.maximum - scale.minimum) / scale.step + 1e-9));
    for (int i = 0; i <= steps; ++i)
        marks.push_back(scale.minimum + i * scale.step);
    return marks;
}

double shareOf(double value, const ValueScale& scale, Growth growth)
{
    const double above = (value - scale.minimum) / (scale.maximum - scale.minimum);
    return growth == Growth::Downward ? above : 1 - above;
}

bool isOnScale(double value, const ValueScale& scale)
{
    return value >= scale.minimum && value <= scale.maximum;
}

int slotCount(const LineChart& chart)
{
    return int(std::max(chart.categories.size(), qsizetype(chart.values.size())));
}

double slotShare(int category, int categories)
{
    return (category + 0.5) / categories;
}

} // namespace chart
