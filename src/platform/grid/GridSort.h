#pragma once

#include <vector>

#include <QString>

namespace grid {

class FlexGrid;

enum class SortKind { Generic = 1, Numeric = 2, Text = 3 };
enum class SortOrder { Ascending = 1, Descending = 2 };

/// The places of all rows in their new order, those before `first` staying: the others are sorted
/// by their cells in column `col`, equal rows staying in their order. Generic is numeric if all of
/// these cells are numbers, otherwise text; numeric reads them by Val, text ignores case.
std::vector<size_t> sortedRows(const std::vector<std::vector<QString>>& rows, size_t first,
                               size_t col, SortKind kind, SortOrder order);

/// How a column is sorted that users read: as numbers if all cells below the headings are numbers
/// or empty, otherwise as text.
SortKind sortKindOf(const FlexGrid& grid, int col);

/// Sets the grid's `Col` and sorts by it. A failure is shown in a message; a column outside the
/// grid leaves `Col`, and the sort goes by the former one.
void MFGSort(FlexGrid& grid, int column, SortKind kind, SortOrder order);

} // namespace grid
