#pragma once

#include "platform/grid/FlexGrid.h"

namespace shell {

// Widths of the result grid that the user dragged. They are kept from one start to the next by the
// column's heading and, among equal headings, its place.

/// Keeps the width that the column has now.
void keepWidth(const grid::FlexGrid& grid, int col);

/// Gives the columns of a newly filled grid the widths that were kept for them.
void restoreWidths(grid::FlexGrid& grid);

} // namespace shell
