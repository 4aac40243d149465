#pragma once

namespace excel {

// Sizes of sheets and papers are in points.
constexpr double pointsPerInch = 72;
constexpr double pointsPerPixel = 0.75;

} // namespace excel
