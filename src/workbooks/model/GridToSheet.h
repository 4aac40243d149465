#pragma once

#include "platform/grid/FlexGrid.h"
#include "workbooks/model/Worksheet.h"

namespace excel {

/// A block of a grid, rows and columns counted from 0, both ends included.
struct GridBlock
{
    int firstRow;
    int lastRow;
    int firstCol;
    int lastCol;
};

/// Copies a block to a sheet from sheet row `row` (counted from 1) and column 1 on: runs of
/// equal texts merged in the rows and columns that the grid marks for it, empty ones too, texts, a
/// continuous border. Where runs of rows and of columns meet, they grow together only over one and
/// the same text; otherwise the run of the row stays unmerged. `row` becomes the first row behind
/// the empty row that follows. Failures are passed over, so that a stream without a sheet is left
/// out while its row counter runs on.
void GridBlockToSheet(const grid::FlexGrid& grid, Worksheet* sheet, int& row,
                      const GridBlock& block);

} // namespace excel
