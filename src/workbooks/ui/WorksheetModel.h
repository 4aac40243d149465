#pragma once

#include <QAbstractTableModel>

#include "workbooks/model/Worksheet.h"

namespace excel {

/// A sheet as Qt's views see it: the used cells, those under drawings, and some empty ones around
/// them. Cells are read when they are asked for; row and column 0 of the model are row 1 and column
/// A of the sheet.
class WorksheetModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit WorksheetModel(QObject* parent) : QAbstractTableModel(parent) {}

    /// Shows this sheet from now on, or nothing. The sheet must outlive that, though its workbook
    /// may be closed.
    void show(const Worksheet* sheet);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    const Worksheet* sheet() const { return m_sheet; }
    /// The block that holds all cells and merges.
    const CellRange& used() const { return m_used; }

    runtime::Value value(int row, int column) const;
    /// True for a cell of a merged block that shows another one, its first.
    bool isCovered(int row, int column) const;
    /// The shown text, also where a merge shows it once for several cells; no other one under it.
    QString copiedText(int row, int column) const;
    const CellFormat& format(int row, int column) const;

private:
    const Worksheet* m_sheet = nullptr;
    CellRange m_used;
    int m_rows = 0;
    int m_columns = 0;
};

} // namespace excel
