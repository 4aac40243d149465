#pragma once

#include <QJsonObject>

#include "workbooks/model/Workbook.h"

namespace excel {

/// How much of a workbook its JSON tells.
enum class BookDetail { Cells, CellsPagesAndDrawings };

/// A workbook as JSON, for programs that look at what was filled in: "sheets", the names in order,
/// and "content" by name: "cells" ("row,column" to text), "merges" and "borders" (blocks
/// [row, column, last row, last column]). Rows and columns count from 1.
///
/// With pages and drawings also "widths" (column to characters), "breaks" (rows above which a page
/// breaks), "page", "charts" and "shapes". Places are in points from the sheet's corner, the inside
/// of a chart's plot from the chart's area; a "frame" is the block of cells that a chart covers. A
/// bound of an axis that follows the values is null.
QJsonObject bookJson(Workbook& book, BookDetail detail = BookDetail::Cells);

} // namespace excel
