#include "platform/grid/ui/FlexGridModel.h"

#include <QApplication>
#include <QPalette>

namespace grid {

FlexGridModel::FlexGridModel(const FlexGrid& grid, QObject* parent)
    : QAbstractTableModel(parent), m_grid(grid), m_rows(grid.Rows()), m_cols(grid.Cols())
{
}

int FlexGridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int FlexGridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_cols;
}

bool FlexGridModel::isFixed(const QModelIndex& index) const
{
    return index.row() < m_grid.FixedRows || index.column() < m_grid.FixedCols;
}

QVariant FlexGridModel::data(const QModelIndex& index, int role) const
{
    if (index.row() >= m_grid.Rows() || index.column() >= m_grid.Cols())
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole: return m_grid.TextMatrix(index.row(), index.column());
    case Qt::TextAlignmentRole:
        // The control's code 4 is the middle.
        return int(Qt::AlignVCenter
                   | (m_grid.ColAlignment(index.column()) == 4 ? Qt::AlignHCenter : Qt::AlignLeft));
    case Qt::BackgroundRole:
        return isFixed(index) ? QVariant(QApplication::palette().button()) : QVariant();
    case Qt::ForegroundRole:
        return isFixed(index) ? QVariant(QApplication::palette().buttonText()) : QVariant();
    default: return {};
    }
}

void FlexGridModel::reload()
{
    beginResetModel();
    m_rows = m_grid.Rows();
    m_cols = m_grid.Cols();
    endResetModel();
}

} // namespace grid
