#include "platform/grid/GridSort.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <span>

#include "platform/grid/FlexGrid.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"

namespace grid {

using namespace Qt::StringLiterals;

namespace {

bool isNumber(const QString& text)
{
    bool number = false;
    text.toDouble(&number);
    return number;
}

/// Sorts the places by the keys that stand at them; equal keys stay in their order.
template <class Key, class Less>
void sortByKeys(std::span<size_t> places, SortOrder order, const std::vector<Key>& keys, Less less)
{
    const bool descending = order == SortOrder::Descending;
    std::stable_sort(places.begin(), places.end(), [&](size_t a, size_t b) {
        return descending ? less(keys[b], keys[a]) : less(keys[a], keys[b]);
    });
}

void sortNumbers(std::span<size_t> places, SortOrder order, const std::vector<QString>& cells)
{
    std::vector<double> keys;
    keys.reserve(cells.size());
    for (const QString& cell : cells)
        keys.push_back(runtime::Val(cell));
    sortByKeys(places, order, keys, std::less<>());
}

void sortTexts(std::span<size_t> places, SortOrder order, const std::vector<QString>& cells)
{
    sortByKeys(places, order, cells, [](const QString& a, const QString& b) {
        return a.compare(b, Qt::CaseInsensitive) < 0;
    });
}

} // namespace

std::vector<size_t> sortedRows(const std::vector<std::vector<QString>>& rows, size_t first,
                               size_t col, SortKind kind, SortOrder order)
{
    std::vector<QString> cells;
    cells.reserve(rows.size());
    for (const std::vector<QString>& row : rows)
        cells.push_back(row[col]);
    std::vector<size_t> places(rows.size());
    std::iota(places.begin(), places.end(), size_t(0));
    const std::span<size_t> sorted = std::span(places).subspan(first);
    const bool numeric =
        kind == SortKind::Numeric
        || (kind == SortKind::Generic
            && std::all_of(cells.begin() + std::ptrdiff_t(first), cells.end(), isNumber));
    if (numeric)
        sortNumbers(sorted, order, cells);
    else
        sortTexts(sorted, order, cells);
    return places;
}

SortKind sortKindOf(const FlexGrid& grid, int col)
{
    for (int row = grid.FixedRows; row < grid.Rows(); ++row) {
        const QString& text = grid.TextMatrix(row, col);
        if (!text.isEmpty() && !isNumber(text))
            return SortKind::Text;
    }
    return SortKind::Numeric;
}

void MFGSort(FlexGrid& grid, int column, SortKind kind, SortOrder order)
{
    const runtime::Trap trap{" - Sub MFGSort/MDLMsFlexGrid"};
    trap([&] {
        if (column < 0 || column >= grid.Cols())
            throw runtime::Error(u"列 %1 在表格之外。"_s.arg(column));
        grid.Col = column;
    });
    trap([&] { grid.Sort(int(kind) * 2 - (order == SortOrder::Ascending ? 1 : 0)); });
}

} // namespace grid
