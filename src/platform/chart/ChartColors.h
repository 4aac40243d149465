#pragma once

namespace chart {

// A chart's colours, as 0xRRGGBB: those of paper, whatever the program's theme.

constexpr int areaColor = 0xffffff;
constexpr int textColor = 0x000000;
constexpr int axisColor = 0x000000;
constexpr int plotBorderColor = 0x808080;
constexpr int gridlineColor = 0xc0c0c0;
constexpr int seriesColor = 0x000080;

} // namespace chart
