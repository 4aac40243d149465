#pragma once

#include <QRect>

#include "platform/grid/FlexGrid.h"

namespace grid {

/// A block of cells (x: columns, y: rows) for a spreadsheet: cells separated by tabs, each row
/// ended by CRLF; a cell with a break, a tab or a quotation mark stands in quotation marks. Columns
/// of no width are left out.
QString tabbedText(const FlexGrid& grid, const QRect& block);

/// The same as an HTML table. Numbers that a spreadsheet would shorten (0805, 19 digits) are marked
/// as texts.
QString htmlTable(const FlexGrid& grid, const QRect& block);

} // namespace grid
