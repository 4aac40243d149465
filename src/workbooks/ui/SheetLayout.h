#pragma once

#include "workbooks/model/Worksheet.h"

// Blocks and lines of a sheet as its window and its printed pages need them.

namespace excel {

/// The smallest block from A1 on that holds all cells and merges.
CellRange usedBlock(const Worksheet& sheet);

/// The used block, and what lies under the drawings.
CellRange shownBlock(const Worksheet& sheet);

/// How the cells of a sheet look; answers also once its workbook was closed.
const CellFormat& formatOf(const Worksheet& sheet, int row, int column);

/// The line between a cell and its right or lower neighbour, whichever of the two has it.
LineStyle lineRight(const Worksheet& sheet, int row, int column);
LineStyle lineBelow(const Worksheet& sheet, int row, int column);

/// The line along a side of a block, as its first cell there says.
CellBorders bordersOf(const Worksheet& sheet, const CellRange& block);

/// True if any cell has a line.
bool hasBorders(const Worksheet& sheet);

} // namespace excel
