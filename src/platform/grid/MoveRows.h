#pragma once

namespace grid {

class FlexGrid;

/// Moves the texts of the block of rows by `offset` rows, upward if it is positive; both bounds
/// come back as the block's new ones. Does nothing for row 1 upward and for the last row downward.
/// A row whose number, or whose new place, is outside the grid is a failure shown in a message.
void MoveMFGData(FlexGrid& grid, int& firstRow, int& lastRow, int offset);

} // namespace grid
