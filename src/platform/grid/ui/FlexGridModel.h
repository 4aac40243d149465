#pragma once

#include <QAbstractTableModel>

#include "platform/grid/FlexGrid.h"

namespace grid {

/// A FlexGrid as Qt's views see it; fixed cells are rows and columns like the others.
class FlexGridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    FlexGridModel(const FlexGrid& grid, QObject* parent);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    /// The grid was filled anew.
    void reload();

    /// One cell got another text.
    void reloadCell(int row, int col);

private:
    const FlexGrid& m_grid;
    /// What the views were told; the grid itself may have changed since.
    int m_rows = 0;
    int m_cols = 0;
};

} // namespace grid
