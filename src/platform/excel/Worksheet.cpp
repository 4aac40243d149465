#include "platform/excel/Worksheet.h"

#include "platform/excel/Workbook.h"
#include "platform/runtime/Error.h"

namespace excel {

using namespace Qt::StringLiterals;

void Worksheet::refuseClosed()
{
    throw runtime::Error(u"工作簿已经关闭。"_s);
}

void Worksheet::refusePlace(int row, int column)
{
    throw runtime::Error(u"工作表中没有第 %1 行第 %2 列的单元格。"_s.arg(row).arg(column));
}

void Worksheet::close()
{
    m_book = nullptr;
    m_cells.clear();
    m_merged = {};
    m_columns = {};
}

const QString& Worksheet::Name() const
{
    check();
    return m_name;
}

void Worksheet::setName(const QString& name)
{
    check();
    m_name = name;
}

void Worksheet::setCell(int row, int column, runtime::Value value)
{
    check(row, column);
    m_cells.set(row, column, std::move(value));
}

bool Worksheet::AutoFilterMode() const
{
    check();
    return m_autoFilter.has_value();
}

void Worksheet::AutoFilter()
{
    check();
    if (!m_autoFilter)
        return;
    const int end = std::min(m_autoFilter->lastRow, lastGridRow);
    for (int row = m_autoFilter->firstRow + 1; row <= end; ++row) {
        if (m_cells.lacksPageFor(row))
            row += CellTable::rowsPerPage - 1 - (row - 1) % CellTable::rowsPerPage;
        else
            m_cells.makeRow(row).hidden = false;
    }
    m_autoFilter.reset();
}

void Worksheet::setAutoFilter(const CellRange& range)
{
    check(range.firstRow, range.firstColumn);
    m_autoFilter = range;
}

void Worksheet::Activate()
{
    check();
    m_book->setActiveSheet(*this);
}

int Worksheet::lastUsedRow() const
{
    check();
    return std::max(1, m_cells.lastRow());
}

int Worksheet::lastUsedColumn() const
{
    check();
    return std::max(1, m_cells.lastColumn());
}

const std::vector<CellRange>& Worksheet::mergedRanges() const
{
    check();
    return m_merged;
}

void Worksheet::merge(const CellRange& range)
{
    check(range.firstRow, range.firstColumn);
    check(range.lastRow, range.lastColumn);
    m_merged.push_back(range);
}

bool Worksheet::isRowHidden(int row) const
{
    check(row, 1);
    const Row* found = m_cells.row(row);
    return found != nullptr && found->hidden;
}

void Worksheet::setRowState(int row, RowState state)
{
    check(row, 1);
    m_cells.makeRow(row).hidden = state == RowState::Hidden;
}

double Worksheet::rowHeight(int row) const
{
    check(row, 1);
    const Row* found = m_cells.row(row);
    return double(found != nullptr ? found->height : Row::defaultHeight);
}

void Worksheet::setRowHeight(int row, double points)
{
    check(row, 1);
    m_cells.makeRow(row).height = float(points);
}

const std::vector<ColumnRange>& Worksheet::columns() const
{
    check();
    return m_columns;
}

void Worksheet::addColumns(const ColumnRange& columns)
{
    check(1, columns.first);
    check(1, columns.last);
    m_columns.push_back(columns);
}

Visibility Worksheet::visibility() const
{
    check();
    return m_visibility;
}

void Worksheet::setVisibility(Visibility visibility)
{
    check();
    m_visibility = visibility;
}

} // namespace excel
