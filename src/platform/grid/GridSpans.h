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

/// The blocks that the grid's merge settings make, by row and column of their first cell: runs of
/// equal texts along the marked rows and down the marked columns, and both where a run repeats
/// below itself. A run never crosses the edge between fixed and other cells, and empty cells do not
/// merge. MergeCells 1 merges down a column freely; 2 (restricted to rows) only where the marked
/// columns to its left have equal texts too.
std::vector<GridSpan> gridSpans(const FlexGrid& grid);

} // namespace grid
