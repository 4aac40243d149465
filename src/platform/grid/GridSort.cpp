#include "platform/grid/FlexGrid.h"

#include <algorithm>
#include <functional>

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

void FlexGrid::Sort(int code)
{
    if (code == 0)
        return;
    if (code < 0 || code > 6)
        throw runtime::Error(u"不支持的排序方式 %1。"_s.arg(code));
    if (Col < 0 || Col >= m_cols)
        throw runtime::Error(u"排序的列 %1 在表格之外。"_s.arg(Col));
    const size_t first = size_t(std::clamp(FixedRows, 0, Rows()));
    std::vector<QString> cells;
    for (size_t row = first; row < m_cells.size(); ++row)
        cells.push_back(m_cells[row][size_t(Col)]);
    const SortKind kind = SortKind((code + 1) / 2);
    const SortOrder order = code % 2 == 1 ? SortOrder::Ascending : SortOrder::Descending;
    const bool numeric =
        kind == SortKind::Numeric
        || (kind == SortKind::Generic && std::all_of(cells.begin(), cells.end(), isNumber));
    if (numeric)
        sortNumbers(m_cells, first, order, cells);
    else
        sortTexts(m_cells, first, order, cells);
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
