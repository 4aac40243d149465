#include "workbooks/ui/WorksheetModel.h"

#include "workbooks/ui/CellDisplay.h"
#include "workbooks/ui/SheetLayout.h"

namespace excel {

using namespace Qt::StringLiterals;

namespace {

// Empty cells that are shown beside the used ones and those under drawings, and the least that is
// shown.
constexpr int moreRows = 20;
constexpr int leastRows = 60;
constexpr int moreColumns = 3;
constexpr int leastColumns = 26;

} // namespace

void WorksheetModel::show(const Worksheet* sheet)
{
    beginResetModel();
    m_sheet = sheet;
    m_used = sheet ? usedBlock(*sheet) : CellRange();
    const CellRange shown = sheet ? shownBlock(*sheet) : CellRange();
    m_rows = sheet ? std::clamp(shown.lastRow + moreRows, leastRows, lastGridRow) : 0;
    m_columns =
        sheet ? std::clamp(shown.lastColumn + moreColumns, leastColumns, lastGridColumn) : 0;
    endResetModel();
}

int WorksheetModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int WorksheetModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_columns;
}

// The table itself never fails, also when the workbook was closed behind the window's back.
runtime::Value WorksheetModel::value(int row, int column) const
{
    return m_sheet->table().value(row, column);
}

bool WorksheetModel::isCovered(int row, int column) const
{
    const CellRange* merge = m_sheet->merges().at(row, column);
    return merge != nullptr && (row != merge->firstRow || column != merge->firstColumn);
}

QString WorksheetModel::copiedText(int row, int column) const
{
    const runtime::Value own = value(row, column);
    if (own.isNull() || !isCovered(row, column))
        return displayText(own);
    const CellRange* merge = m_sheet->merges().at(row, column);
    return own == value(merge->firstRow, merge->firstColumn) ? displayText(own) : QString();
}

const CellFormat& WorksheetModel::format(int row, int column) const
{
    return formatOf(*m_sheet, row, column);
}

QVariant WorksheetModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || m_sheet == nullptr)
        return {};
    const int row = index.row() + 1;
    const int column = index.column() + 1;
    switch (role) {
    case Qt::DisplayRole:
        return displayText(value(row, column));
    case Qt::TextAlignmentRole:
        return int(displayAlignment(format(row, column), value(row, column)));
    default:
        return {};
    }
}

QVariant WorksheetModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    return orientation == Qt::Horizontal ? columnName(section + 1) : QString::number(section + 1);
}

} // namespace excel
