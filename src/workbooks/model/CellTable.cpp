#include "workbooks/model/CellTable.h"

#include <algorithm>

namespace excel {

namespace {

// A row most often has as many cells as the one before; wide rows among narrow ones are rare.
constexpr size_t mostReserved = 64;

bool beforeColumn(const Cell& cell, int column)
{
    return cell.column() < column;
}

/// Adds empty cells so that each of these columns has one.
void fillGaps(std::vector<Cell>& cells, int first, int last)
{
    const auto begin = std::lower_bound(cells.begin(), cells.end(), first, beforeColumn);
    const auto end = std::lower_bound(begin, cells.end(), last + 1, beforeColumn);
    if (end - begin == last + 1 - first)
        return;
    std::vector<Cell> filled;
    filled.reserve(size_t(last + 1 - first));
    auto old = begin;
    for (int column = first; column <= last; ++column) {
        if (old != end && old->column() == column)
            filled.push_back(*old++);
        else
            filled.emplace_back(column);
    }
    cells.insert(cells.erase(begin, end), filled.begin(), filled.end());
}

/// Leaves the last one of several cells with the same column.
void keepLastOfEach(std::vector<Cell>& cells)
{
    size_t kept = 0;
    for (size_t i = 0; i < cells.size(); ++i) {
        if (i + 1 < cells.size() && cells[i + 1].column() == cells[i].column())
            continue;
        if (kept != i)
            cells[kept] = cells[i];
        ++kept;
    }
    cells.erase(cells.begin() + std::ptrdiff_t(kept), cells.end());
}

void settleRow(Row& row)
{
    const auto byColumn = [](const Cell& a, const Cell& b) { return a.column() < b.column(); };
    if (!std::is_sorted(row.cells.begin(), row.cells.end(), byColumn))
        std::stable_sort(row.cells.begin(), row.cells.end(), byColumn);
    keepLastOfEach(row.cells);
}

} // namespace

const Row* CellTable::row(int number) const
{
    const size_t page = size_t(number - 1) / rowsPerPage;
    if (page >= m_pages.size() || m_pages[page] == nullptr)
        return nullptr;
    return &(*m_pages[page])[size_t(number - 1) % rowsPerPage];
}

bool CellTable::lacksPageFor(int row) const
{
    return this->row(row) == nullptr;
}

int CellTable::nextRow(int row) const
{
    size_t page = size_t(row - 1) / rowsPerPage;
    if (page < m_pages.size() && m_pages[page] != nullptr)
        return row;
    while (page < m_pages.size() && m_pages[page] == nullptr)
        ++page;
    return page < m_pages.size() ? int(page) * rowsPerPage + 1 : rowLimit() + 1;
}

Row& CellTable::makeRow(int number)
{
    const size_t page = size_t(number - 1) / rowsPerPage;
    if (page >= m_pages.size())
        m_pages.resize(page + 1);
    if (m_pages[page] == nullptr)
        m_pages[page] = std::make_unique<Page>();
    return (*m_pages[page])[size_t(number - 1) % rowsPerPage];
}

const Cell* CellTable::find(int row, int column) const
{
    const Row* found = this->row(row);
    if (found == nullptr || found->cells.empty())
        return nullptr;
    const std::vector<Cell>& cells = found->cells;
    // Most rows are filled from column 1 without gaps.
    const size_t likely = std::min(size_t(column), cells.size()) - 1;
    if (cells[likely].column() == column)
        return &cells[likely];
    const auto place = std::lower_bound(cells.begin(), cells.end(), column, beforeColumn);
    return place != cells.end() && place->column() == column ? &*place : nullptr;
}

runtime::Value CellTable::value(int row, int column) const
{
    const Cell* found = find(row, column);
    return found != nullptr ? found->value() : runtime::Value();
}

int CellTable::format(int row, int column) const
{
    const Cell* found = find(row, column);
    return found != nullptr ? found->format() : 0;
}

void CellTable::set(int row, int column, const runtime::Value& value)
{
    if (value.isNull()) {
        clearValue(row, column);
        return;
    }
    std::vector<Cell>& cells = makeRow(row).cells;
    if (cells.empty())
        cells.reserve(std::min(m_lastRowSize, mostReserved));
    const auto place = cells.empty() || cells.back().column() < column
                           ? cells.end()
                           : std::lower_bound(cells.begin(), cells.end(), column, beforeColumn);
    if (place != cells.end() && place->column() == column) {
        place->setValue(value, m_store);
    } else {
        cells.insert(place, Cell(column))->setValue(value, m_store);
        m_lastRowSize = cells.size();
    }
    markUsed(row, column);
}

void CellTable::clearValue(int row, int column)
{
    if (this->row(row) == nullptr)
        return;
    std::vector<Cell>& cells = makeRow(row).cells;
    const auto place = std::lower_bound(cells.begin(), cells.end(), column, beforeColumn);
    if (place == cells.end() || place->column() != column)
        return;
    if (place->format() == 0)
        cells.erase(place);
    else
        place->setValue({}, m_store);
}

void CellTable::changeFormats(const CellRange& block, const std::function<int(int)>& next)
{
    for (int row = block.firstRow; row <= block.lastRow; ++row) {
        std::vector<Cell>& cells = makeRow(row).cells;
        fillGaps(cells, block.firstColumn, block.lastColumn);
        auto cell = std::lower_bound(cells.begin(), cells.end(), block.firstColumn, beforeColumn);
        for (; cell != cells.end() && cell->column() <= block.lastColumn; ++cell)
            cell->setFormat(next(cell->format()));
    }
    markUsed(block.lastRow, block.lastColumn);
}

Cell& CellTable::appendCell(int row, int column)
{
    std::vector<Cell>& cells = makeRow(row).cells;
    if (cells.empty())
        cells.reserve(std::min(m_lastRowSize, mostReserved));
    else if (cells.back().column() >= column)
        m_disordered = true;
    m_lastRowSize = cells.size() + 1;
    markUsed(row, column);
    return cells.emplace_back(column);
}

void CellTable::append(int row, int column, const runtime::Value& value)
{
    appendCell(row, column).setValue(value, m_store);
}

void CellTable::appendShared(int row, int column, const QString& text)
{
    appendCell(row, column).setShared(text);
}

void CellTable::settle()
{
    if (!m_disordered)
        return;
    for (const std::unique_ptr<Page>& page : m_pages) {
        if (page != nullptr)
            std::for_each(page->begin(), page->end(), settleRow);
    }
    m_disordered = false;
}

void CellTable::markUsed(int row, int column)
{
    m_lastRow = std::max(m_lastRow, row);
    m_lastColumn = std::max(m_lastColumn, column);
}

void CellTable::clear()
{
    *this = CellTable();
}

} // namespace excel
