#pragma once

#include <map>
#include <vector>

#include <QRectF>

#include "workbooks/model/CellRange.h"
#include "workbooks/model/CellTable.h"
#include "workbooks/model/Changes.h"
#include "workbooks/model/FormatTable.h"
#include "workbooks/model/SheetMerges.h"

namespace excel {

enum class RowState { Shown, Hidden };

/// Neighbouring columns with the same properties; the width is in characters of the default font, 0
/// for the standard one.
struct ColumnRange
{
    int first = 1;
    int last = 1;
    double width = 0;
    bool hidden = false;
};

/// How wide and high the columns and rows of a sheet are and where they begin. Edges are computed
/// once and kept until something before them changes. Throws runtime::Error outside the grid.
class SheetGeometry
{
public:
    /// Height of a row without content, in points.
    static constexpr double standardRowHeight = 13.5;
    /// In characters of the default font.
    static constexpr double standardColumnWidth = 8.375;

    SheetGeometry(CellTable& cells, const FormatTable& formats, const SheetMerges& merges,
                  Changes& changes)
        : m_cells(cells), m_formats(formats), m_merges(merges), m_changes(changes)
    {
    }

    bool isRowHidden(int row) const;
    void setRowState(int row, RowState state);
    /// In points; Row::defaultHeight if it was never set.
    double rowHeight(int row) const;
    /// In points, 0 to 409; throws runtime::Error otherwise.
    void setRowHeight(int row, double points);
    /// For readers: no change of the workbook. The height, in points, stays what it was if this is
    /// none; one beyond the limit becomes the largest.
    void addRow(int row, float height, RowState state);
    /// In points: the height that was set, else what the cells of the row need, 0 for a hidden row.
    double shownRowHeight(int row) const;
    /// Of the rows 1 to `count`.
    std::vector<double> shownRowHeights(int count) const;

    /// Columns with a width of their own or hidden, from left to right: what was set last, equal
    /// neighbours together. Their widths are never 0.
    std::vector<ColumnRange> columns() const;
    /// For readers: no change of the workbook. A width that is none becomes the standard one, one
    /// beyond the limit the largest.
    void addColumns(const ColumnRange& columns);
    /// In characters of the default font, 0 hides; throws runtime::Error outside 0 to 255.
    void setColumnWidth(int first, int last, double width);
    /// In characters: standardColumnWidth if it was never set, 0 for a hidden column.
    double shownColumnWidth(int column) const;
    /// In points, of the columns 1 to `count`.
    std::vector<double> columnPoints(int count) const;

    /// Upper edge of a row, left edge of a column, in points from the sheet's corner; behind the
    /// last one its end.
    double rowTop(int row) const;
    double columnLeft(int column) const;
    /// A block's place, in points from the sheet's corner.
    QRectF place(const CellRange& block) const;
    /// The row and column that a place in points from the sheet's corner lies in.
    int rowAt(double place) const;
    int columnAt(double place) const;

    /// Heights from this row on may be others, since its content, format or merges changed.
    void rowChanged(int row);
    /// Forgets the columns.
    void clear();

private:
    double neededHeight(int number, const Row& row) const;
    double neededHeight(int row, const Cell& cell, const CellFormat& format) const;

    CellTable& m_cells; // which keeps the heights
    const FormatTable& m_formats;
    const SheetMerges& m_merges;
    Changes& m_changes;
    std::map<int, ColumnRange> m_columns; // by their last column; they do not overlap
    /// As many edges as were asked for yet, from that of row and column 1 on.
    mutable std::vector<double> m_rowEdges{0};
    mutable std::vector<double> m_columnEdges{0};
};

} // namespace excel
