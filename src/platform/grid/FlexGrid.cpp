#include "platform/grid/FlexGrid.h"

#include <algorithm>

#include "platform/grid/GridSort.h"
#include "platform/runtime/Error.h"

namespace grid {

using namespace Qt::StringLiterals;

namespace {

/// The key under which a size or alignment of all rows or columns is kept.
constexpr int AllLines = -1;

void setLine(std::map<int, int>& lines, int line, int number)
{
    if (line == AllLines)
        lines.clear();
    lines[line] = number;
}

int lineNumber(const std::map<int, int>& lines, int line, int otherwise)
{
    auto found = lines.find(line);
    if (found == lines.end())
        found = lines.find(AllLines);
    return found == lines.end() ? otherwise : found->second;
}

/// Forgets what was set for the lines from `count` on; without any line, what was set for all too.
void dropLines(std::map<int, int>& lines, int count)
{
    lines.erase(count == 0 ? lines.begin() : lines.lower_bound(count), lines.end());
}

void mark(std::set<int>& lines, int line, bool on)
{
    if (on)
        lines.insert(line);
    else
        lines.erase(line);
}

void keepWithin(int& line, int count)
{
    line = std::clamp(line, 0, std::max(count - 1, 0));
}

enum class Whole { Included, Excluded };

/// Throws if there is no such line; AllLines stands for the whole of them where that is `Included`.
void checkLine(int line, int count, Whole whole = Whole::Included)
{
    const int least = whole == Whole::Included ? AllLines : 0;
    if (line < least || line >= count)
        throw runtime::Error(u"第 %1 行（列）在表格之外。"_s.arg(line));
}

/// Puts the lines into this order.
template <class Line> void arrange(std::vector<Line>& lines, const std::vector<size_t>& order)
{
    std::vector<Line> arranged;
    arranged.reserve(lines.size());
    for (const size_t line : order)
        arranged.push_back(std::move(lines[line]));
    lines = std::move(arranged);
}

void checkCount(int count)
{
    if (count < 0)
        throw runtime::Error(u"表格的行数或列数不能是 %1。"_s.arg(count));
}

} // namespace

FlexGrid::FlexGrid() : m_cells(2, std::vector<QString>(2)), m_cols(2) {}

void FlexGrid::setRows(int rows)
{
    checkCount(rows);
    if (rows < Rows()) {
        dropLines(m_rowHeights, rows);
        m_mergeRows.erase(m_mergeRows.lower_bound(rows), m_mergeRows.end());
        m_rowData.resize(std::min(m_rowData.size(), size_t(rows)));
    }
    m_cells.resize(std::min(m_cells.size(), size_t(rows)));
    // No row stands without its cells, even where the memory ends.
    while (m_cells.size() < size_t(rows))
        m_cells.emplace_back(size_t(m_cols));
    for (int* line : {&Row, &RowSel, &TopRow})
        keepWithin(*line, rows);
}

void FlexGrid::setCols(int cols)
{
    checkCount(cols);
    if (cols < m_cols) {
        dropLines(m_colWidths, cols);
        dropLines(m_colAlignments, cols);
        m_mergeCols.erase(m_mergeCols.lower_bound(cols), m_mergeCols.end());
    }
    if (cols != m_cols) {
        for (std::vector<QString>& row : m_cells)
            row.resize(size_t(cols));
    }
    m_cols = cols;
    for (int* line : {&Col, &ColSel})
        keepWithin(*line, cols);
}

void FlexGrid::setColWidth(int col, int twips)
{
    checkLine(col, m_cols);
    setLine(m_colWidths, col, twips);
}

int FlexGrid::ColWidth(int col) const
{
    checkLine(col, m_cols);
    return lineNumber(m_colWidths, col, DefaultColWidth);
}

void FlexGrid::setRowHeight(int row, int twips)
{
    checkLine(row, Rows());
    setLine(m_rowHeights, row, twips);
}

int FlexGrid::RowHeight(int row) const
{
    checkLine(row, Rows());
    return lineNumber(m_rowHeights, row, DefaultRowHeight);
}

void FlexGrid::setColAlignment(int col, int alignment)
{
    checkLine(col, m_cols);
    setLine(m_colAlignments, col, alignment);
}

int FlexGrid::ColAlignment(int col) const
{
    checkLine(col, m_cols);
    return lineNumber(m_colAlignments, col, DefaultColAlignment);
}

void FlexGrid::setMergeRow(int row, bool merge)
{
    checkLine(row, Rows(), Whole::Excluded);
    mark(m_mergeRows, row, merge);
}

bool FlexGrid::MergeRow(int row) const
{
    return m_mergeRows.contains(row);
}

void FlexGrid::setMergeCol(int col, bool merge)
{
    checkLine(col, m_cols, Whole::Excluded);
    mark(m_mergeCols, col, merge);
}

bool FlexGrid::MergeCol(int col) const
{
    return m_mergeCols.contains(col);
}

void FlexGrid::setRowData(int row, int number)
{
    checkLine(row, Rows(), Whole::Excluded);
    if (m_rowData.size() <= size_t(row))
        m_rowData.resize(size_t(row) + 1);
    m_rowData[size_t(row)] = number;
}

int FlexGrid::RowData(int row) const
{
    checkLine(row, Rows(), Whole::Excluded);
    return size_t(row) < m_rowData.size() ? m_rowData[size_t(row)] : 0;
}

void FlexGrid::Sort(int code)
{
    if (code == 0)
        return;
    if (code < 0 || code > 6)
        throw runtime::Error(u"不支持的排序方式 %1。"_s.arg(code));
    if (Col < 0 || Col >= m_cols)
        throw runtime::Error(u"排序的列 %1 在表格之外。"_s.arg(Col));
    const SortKind kind = SortKind((code + 1) / 2);
    const SortOrder order = code % 2 == 1 ? SortOrder::Ascending : SortOrder::Descending;
    const std::vector<size_t> rows =
        sortedRows(m_cells, size_t(std::clamp(FixedRows, 0, Rows())), size_t(Col), kind, order);
    m_rowData.resize(m_cells.size());
    arrange(m_cells, rows);
    arrange(m_rowData, rows);
}

void FlexGrid::refuseCell(int row, int col) const
{
    throw runtime::Error(u"单元格（第 %1 行，第 %2 列）在表格之外。"_s.arg(row).arg(col));
}

} // namespace grid
