#pragma once

#include <vector>

#include "platform/grid/FlexGrid.h"

namespace grid {

/// A block of cells that is shown as one.
struct GridSpan
{
    int row;
    int col;
    int rows;
    int cols;

    friend bool operator==(const GridSpan&, const GridSpan&) = default;
};

/// The blocks that the grid's merge settings make: runs of equal texts along the marked rows, and down
/// the marked columns. A run never crosses the edge between fixed and other cells, blocks do not
/// overlap, and what a marked row took a column leaves alone.
std::vector<GridSpan> gridSpans(const FlexGrid& grid);

} // namespace grid
