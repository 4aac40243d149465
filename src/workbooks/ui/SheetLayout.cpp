#include "workbooks/ui/SheetLayout.h"

#include <algorithm>

namespace excel {

CellRange usedBlock(const Worksheet& sheet)
{
    CellRange used{1, 1, sheet.lastUsedRow(), sheet.lastUsedColumn()};
    for (const CellRange& merge : sheet.merges().settled()) {
        used.lastRow = std::max(used.lastRow, merge.lastRow);
        used.lastColumn = std::max(used.lastColumn, merge.lastColumn);
    }
    return used;
}

namespace {

/// The last line that begins before a place, which itself lies in `line`.
int lastBefore(double place, int line, double begin)
{
    return line > 1 && begin >= place ? line - 1 : line;
}

} // namespace

CellRange shownBlock(const Worksheet& sheet)
{
    CellRange block = usedBlock(sheet);
    QPointF end;
    for (const Drawing& drawing : sheet.drawings()) {
        const QPointF corner = shapeOf(drawing).place().bottomRight();
        end = {std::max(end.x(), corner.x()), std::max(end.y(), corner.y())};
    }
    const SheetGeometry& geometry = sheet.geometry();
    const int row = geometry.rowAt(end.y());
    const int column = geometry.columnAt(end.x());
    block.lastRow = std::max(block.lastRow, lastBefore(end.y(), row, geometry.rowTop(row)));
    block.lastColumn =
        std::max(block.lastColumn, lastBefore(end.x(), column, geometry.columnLeft(column)));
    return block;
}

const CellFormat& formatOf(const Worksheet& sheet, int row, int column)
{
    return sheet.formats().format(sheet.table().format(row, column));
}

namespace {

/// The stronger one of the lines that two neighbours draw at their common edge.
LineStyle joined(LineStyle one, LineStyle other)
{
    if (one == LineStyle::Continuous || other == LineStyle::None)
        return one;
    return other;
}

} // namespace

LineStyle lineRight(const Worksheet& sheet, int row, int column)
{
    const LineStyle own = formatOf(sheet, row, column).borders.right;
    return column == lastGridColumn ? own
                                    : joined(own, formatOf(sheet, row, column + 1).borders.left);
}

LineStyle lineBelow(const Worksheet& sheet, int row, int column)
{
    const LineStyle own = formatOf(sheet, row, column).borders.bottom;
    return row == lastGridRow ? own : joined(own, formatOf(sheet, row + 1, column).borders.top);
}

CellBorders bordersOf(const Worksheet& sheet, const CellRange& block)
{
    CellBorders lines;
    lines.left = block.firstColumn > 1 ? lineRight(sheet, block.firstRow, block.firstColumn - 1)
                                       : formatOf(sheet, block.firstRow, 1).borders.left;
    lines.top = block.firstRow > 1 ? lineBelow(sheet, block.firstRow - 1, block.firstColumn)
                                   : formatOf(sheet, 1, block.firstColumn).borders.top;
    lines.right = lineRight(sheet, block.firstRow, block.lastColumn);
    lines.bottom = lineBelow(sheet, block.lastRow, block.firstColumn);
    return lines;
}

bool hasBorders(const Worksheet& sheet)
{
    for (int number = 0; number < sheet.formats().count(); ++number) {
        if (sheet.formats().format(number).borders != CellBorders())
            return true;
    }
    return false;
}

} // namespace excel
