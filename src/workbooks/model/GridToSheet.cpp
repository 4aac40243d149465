#include "workbooks/model/GridToSheet.h"

#include "platform/runtime/Trap.h"
#include "workbooks/model/Worksheet.h"

namespace excel {

using runtime::Trap;

namespace {

/// Calls `merge(first, last)` for each run of two or more equal texts among the cells from `first`
/// to `last`.
template <class TextAt, class Merge>
void eachRun(int first, int last, const TextAt& textAt, const Merge& merge)
{
    for (int start = first; start <= last;) {
        int end = start;
        while (end < last && textAt(end + 1) == textAt(start))
            ++end;
        if (end > start)
            merge(start, end);
        start = end + 1;
    }
}

/// One copy: grid cells on the left, sheet cells on the right.
class BlockCopy
{
public:
    BlockCopy(const grid::FlexGrid& grid, Worksheet& sheet, int row, const GridBlock& block)
        : m_grid(grid), m_sheet(sheet), m_row(row), m_block(block)
    {
    }

    void run() const
    {
        for (int col = m_block.firstCol; col <= m_block.lastCol; ++col) {
            if (m_grid.MergeCol(col))
                mergeColumn(col);
        }
        for (int row = m_block.firstRow; row <= m_block.lastRow; ++row) {
            if (m_grid.MergeRow(row))
                mergeRow(row);
        }
        copyTexts();
        m_passOver([&] {
            m_sheet
                .Range(sheetRow(m_block.firstRow), 1, sheetRow(m_block.lastRow),
                       sheetColumn(m_block.lastCol))
                .setBorders(LineStyle::Continuous);
        });
    }

private:
    int sheetRow(int row) const { return m_row + row - m_block.firstRow; }
    int sheetColumn(int col) const { return 1 + col - m_block.firstCol; }

    /// Merges cells of one text, unless a merge that they meet would grow over another one.
    void merge(int firstRow, int firstCol, int lastRow, int lastCol) const
    {
        m_passOver([&] {
            const CellRange run{sheetRow(firstRow), sheetColumn(firstCol), sheetRow(lastRow),
                                sheetColumn(lastCol)};
            const CellRange merged = m_sheet.merges().grown(run);
            if (merged == run || hasOneText(merged))
                m_sheet.Range(run).setMergeCells(true);
        });
    }

    bool hasOneText(const CellRange& cells) const
    {
        const int top = m_block.firstRow + cells.firstRow - m_row;
        const int left = m_block.firstCol + cells.firstColumn - 1;
        const int bottom = top + cells.lastRow - cells.firstRow;
        const int right = left + cells.lastColumn - cells.firstColumn;
        if (top < m_block.firstRow || bottom > m_block.lastRow || right > m_block.lastCol)
            return false;
        const QString& text = m_grid.TextMatrix(top, left);
        for (int row = top; row <= bottom; ++row) {
            for (int col = left; col <= right; ++col) {
                if (m_grid.TextMatrix(row, col) != text)
                    return false;
            }
        }
        return true;
    }

    void mergeColumn(int col) const
    {
        eachRun(
            m_block.firstRow, m_block.lastRow, [&](int row) { return m_grid.TextMatrix(row, col); },
            [&](int first, int last) { merge(first, col, last, col); });
    }

    void mergeRow(int row) const
    {
        eachRun(
            m_block.firstCol, m_block.lastCol, [&](int col) { return m_grid.TextMatrix(row, col); },
            [&](int first, int last) { merge(row, first, row, last); });
    }

    void copyTexts() const
    {
        for (int row = m_block.firstRow; row <= m_block.lastRow; ++row) {
            for (int col = m_block.firstCol; col <= m_block.lastCol; ++col) {
                m_passOver([&] {
                    m_sheet.setCellText(sheetRow(row), sheetColumn(col),
                                        m_grid.TextMatrix(row, col));
                });
            }
        }
    }

    const grid::FlexGrid& m_grid;
    Worksheet& m_sheet;
    int m_row;
    GridBlock m_block;
    Trap m_passOver = Trap::silent();
};

} // namespace

void GridBlockToSheet(const grid::FlexGrid& grid, Worksheet* sheet, int& row,
                      const GridBlock& block)
{
    if (sheet)
        BlockCopy(grid, *sheet, row, block).run();
    row += block.lastRow - block.firstRow + 2;
}

} // namespace excel
