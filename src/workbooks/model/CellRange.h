#pragma once

#include <QString>

namespace excel {

/// Size of a sheet's grid; rows and columns count from 1.
constexpr int lastGridRow = 1048576;
constexpr int lastGridColumn = 16384;

/// A block of cells, both corners included.
struct CellRange
{
    int firstRow = 1;
    int firstColumn = 1;
    int lastRow = 1;
    int lastColumn = 1;

    bool contains(int row, int column) const
    {
        return row >= firstRow && row <= lastRow && column >= firstColumn && column <= lastColumn;
    }
    bool touches(const CellRange& other) const
    {
        return firstRow <= other.lastRow && other.firstRow <= lastRow
               && firstColumn <= other.lastColumn && other.firstColumn <= lastColumn;
    }
    bool isOneCell() const { return firstRow == lastRow && firstColumn == lastColumn; }

    friend bool operator==(const CellRange&, const CellRange&) = default;
};

/// The whole grid.
constexpr CellRange wholeGrid{1, 1, lastGridRow, lastGridColumn};

/// The letters of a column: "A" for 1, "XFD" for 16384.
QString columnName(int column);

[[noreturn]] void refuseCell(int row, int column);

/// Throws runtime::Error for a cell outside the grid.
inline void checkCell(int row, int column)
{
    if (!wholeGrid.contains(row, column))
        refuseCell(row, column);
}

} // namespace excel
