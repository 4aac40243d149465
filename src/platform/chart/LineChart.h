#pragma once

#include <optional>
#include <vector>

#include <QString>
#include <QStringList>

namespace chart {

/// Which way larger values lie.
enum class Growth { Upward, Downward };

/// The axis of the values. A bound that is not set follows the values.
struct ValueAxis
{
    QString title;
    double titleSize = 15; ///< in points; the title is bold
    std::optional<double> minimum;
    std::optional<double> maximum;
    Growth growth = Growth::Upward;

    friend bool operator==(const ValueAxis&, const ValueAxis&) = default;
};

/// A chart of one line over categories, as plain data.
struct LineChart
{
    QString title;
    double titleSize = 12; ///< in points; the title is bold
    ValueAxis axis;
    QStringList categories;
    /// One for each category. One that is missing has no point, and the line has a gap there.
    std::vector<std::optional<double>> values;
    bool hasMarkers = true;
    bool hasDataLabels = false;

    friend bool operator==(const LineChart&, const LineChart&) = default;
};

} // namespace chart
