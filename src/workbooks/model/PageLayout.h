#pragma once

namespace excel {

enum class Orientation { Portrait = 1, Landscape = 2 };

/// Codes of the paper sizes that are used here; a layout may hold any other code too.
namespace paper {
constexpr int a4 = 9;
constexpr int b5 = 13;
} // namespace paper

/// How a sheet is printed. Margins are in points.
struct PageLayout
{
    double LeftMargin = 50.4;
    double RightMargin = 50.4;
    double TopMargin = 54;
    double BottomMargin = 54;
    excel::Orientation Orientation = excel::Orientation::Portrait;
    int PaperSize = paper::a4;

    friend bool operator==(const PageLayout&, const PageLayout&) = default;
};

} // namespace excel
