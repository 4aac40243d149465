#pragma once

namespace chart {

// How a chart looks on screen, on paper and in files. Its colours, as 0xRRGGBB, are those of paper,
// whatever the program's theme; sizes are in points.

constexpr int areaColor = 0xffffff;
constexpr int textColor = 0x000000;
constexpr int axisColor = 0x000000;
constexpr int plotBorderColor = 0x808080;
constexpr int gridlineColor = 0xc0c0c0;
constexpr int seriesColor = 0x000080;

constexpr double textSize = 10;
constexpr double thinLine = 0.75;
constexpr double seriesLine = 1;
constexpr double markerSize = 5;

} // namespace chart
