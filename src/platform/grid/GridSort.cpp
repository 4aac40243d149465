#include "platform/grid/GridSort.h"

#include <algorithm>
#include <functional>

#include "platform/grid/FlexGrid.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"

namespace grid {

using namespace Qt::StringLiterals;

namespace {

using Rows = std::vector<std::vector<QString>>;

bool isNumber(const QString& text)
{
    bool number = false;
    text.toDouble(&number);
    return number;
}

/// Puts the rows from `first` on into the order of their keys; equal keys stay in their order.
template <class Key, class Less>
void sortByKeys(Rows& rows, size_t first, SortOrder order, const std::vector<Key>& keys, Less less)
{
    std::vector<size_t> places(keys.size());
    for (size_t i = 0; i < places.size(); ++i)
        places[i] = i;
    const bool descending = order == SortOrder::Descending;
    std::stable_sort(places.begin(), places.end(), [&](size_t a, size_t b) {
        return descending ? less(keys[b], keys[a]) : less(keys[a], keys[b]);
    });
    Rows sorted;
    sorted.reserve(places.size());
    for (const size_t place : places)
        sorted.push_back(std::move(rows[first + place]));
    std::move(sorted.begin(), sorted.end(), rows.begin() + std::ptrdiff_t(first));
}

void sortNumbers(Rows& rows, size_t first, SortOrder order, const std::vector<QString>& cells)
{
    std::vector<double> keys;
    keys.reserve(cells.size());
    for (const QString& cell : cells)
        keys.push_back(runtime::Val(cell));
    sortByKeys(rows, first, order, keys, std::less<>());
}

void sortTexts(Rows& rows, size_t first, SortOrder order, const std::vector<QString>& cells)
{
    sortByKeys(rows, first, order, cells, [](const QString& a, const QString& b) {
        return a.compare(b, Qt::CaseInsensitive) < 0;
    });
}

} // namespace

void sortRows(std::vector<std::vector<QString>>& rows, size_t first, size_t col, SortKind kind,
              SortOrder order)
{
    std::vector<QString> cells;
    for (size_t row = first; row < rows.size(); ++row)
        cells.push_back(rows[row][col]);
    const bool numeric =
        kind == SortKind::Numeric
        || (kind == SortKind::Generic && std::all_of(cells.begin(), cells.end(), isNumber));
    if (numeric)
        sortNumbers(rows, first, order, cells);
    else
        sortTexts(rows, first, order, cells);
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
