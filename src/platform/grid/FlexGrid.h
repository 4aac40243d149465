#pragma once

#include <map>
#include <set>
#include <utility>
#include <vector>

#include <QString>

namespace grid {

/// A cell by its row and column.
struct CellPlace
{
    int row;
    int col;

    friend bool operator==(const CellPlace&, const CellPlace&) = default;
};

/// A table of texts with fixed headings, as plain data. Rows and columns count from 0, sizes are in
/// twips (1/1440 inch).
class FlexGrid
{
public:
    /// The control's start: 2 rows, 2 columns, one of each fixed.
    FlexGrid();

    int Rows() const { return int(m_cells.size()); }
    int Cols() const { return m_cols; }
    /// Cells that stay keep their texts, new ones are empty. Throws runtime::Error below 0.
    /// Rows and columns that go take their sizes, alignments and merge marks with them.
    void setRows(int rows);
    void setCols(int cols);

    /// A cell outside the grid throws runtime::Error, for reading and for writing.
    const QString& TextMatrix(int row, int col) const
    {
        check(row, col);
        return m_cells[size_t(row)][size_t(col)];
    }
    void setTextMatrix(int row, int col, QString text)
    {
        check(row, col);
        m_cells[size_t(row)][size_t(col)] = std::move(text);
    }

    /// Width of a column; -1 as column sets all of them and forgets the single ones.
    void setColWidth(int col, int twips);
    /// The width set for the column, else that for all, else DefaultColWidth.
    int ColWidth(int col) const;
    /// -1 as row sets all of them, likewise.
    void setRowHeight(int row, int twips);
    int RowHeight(int row) const;
    /// The control's code (1 left, 4 centre, 7 right); -1 as column sets all of them, likewise.
    void setColAlignment(int col, int alignment);
    /// The code set for the column, else that for all, else 9: numbers right, texts left.
    int ColAlignment(int col) const;

    /// A number that belongs to the row: sorting takes it along, and it goes with the row. 0 for a
    /// row that was given none.
    void setRowData(int row, int number);
    int RowData(int row) const;

    /// Widths as they were set, -1 for "all columns".
    const std::map<int, int>& colWidths() const { return m_colWidths; }

    void setMergeRow(int row, bool merge);
    bool MergeRow(int row) const;
    void setMergeCol(int col, bool merge);
    bool MergeCol(int col) const;
    const std::set<int>& mergeRows() const { return m_mergeRows; }
    const std::set<int>& mergeCols() const { return m_mergeCols; }

    int FixedRows = 1;
    int FixedCols = 1;
    /// The control's code; 0 merges nothing.
    int MergeCells = 0;
    int Row = 1;
    int Col = 1;
    int RowSel = 1;
    int ColSel = 1;
    int TopRow = 1;
    bool WordWrap = false;
    bool Redraw = true;
    bool Visible = true;
    /// In points.
    double FontSize = 9;

    static constexpr int DefaultColWidth = 960;
    static constexpr int DefaultRowHeight = 240;
    static constexpr int DefaultColAlignment = 9;

    /// Sorts the rows behind the fixed ones by column `Col`, equal rows staying in their order, by
    /// the control's code: 1/2 generic (numeric if all cells are numbers, otherwise text), 3/4
    /// numeric (cells read by Val), 5/6 text ignoring case, each ascending/descending; 0 sorts
    /// nothing. Throws runtime::Error for another code or a `Col` outside the grid.
    void Sort(int code);

private:
    void check(int row, int col) const
    {
        if (row < 0 || row >= Rows() || col < 0 || col >= m_cols)
            refuseCell(row, col);
    }
    [[noreturn]] void refuseCell(int row, int col) const;

    std::vector<std::vector<QString>> m_cells;
    int m_cols = 0;
    /// As many as rows up to the last one that was given a number.
    std::vector<int> m_rowData;
    std::map<int, int> m_colWidths;
    std::map<int, int> m_rowHeights;
    std::map<int, int> m_colAlignments;
    std::set<int> m_mergeRows;
    std::set<int> m_mergeCols;
};

} // namespace grid
