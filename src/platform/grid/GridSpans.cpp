#include "platform/grid/GridSpans.h"

namespace grid {

namespace {

/// Merging free of what stands to the left of a column; every other code takes it into account.
constexpr int MergeFree = 1;

/// Finds the blocks from the top left to the bottom right.
class Blocks
{
public:
    explicit Blocks(const FlexGrid& grid) : m_grid(grid) {}

    std::vector<GridSpan> all()
    {
        std::vector<GridSpan> spans;
        for (int row = 0; row < m_grid.Rows(); ++row) {
            if (m_grid.MergeRow(row))
                takeRow(row, spans);
            else
                takeMarkedColumns(row, spans);
        }
        return spans;
    }

private:
    void takeRow(int row, std::vector<GridSpan>& spans)
    {
        for (int col = 0; col < m_grid.Cols();) {
            const int end = runEnd(row, col);
            take({row, col, 1, end - col}, spans);
            col = end;
        }
    }

    void takeMarkedColumns(int row, std::vector<GridSpan>& spans)
    {
        for (const int col : m_grid.mergeCols())
            take({row, col, 1, 1}, spans);
    }

    /// Grows the block downward and keeps it, unless a block from above holds it already.
    void take(GridSpan span, std::vector<GridSpan>& spans)
    {
        if (span.row > 0 && continues(span, span.row - 1, span.row))
            return;
        while (span.row + span.rows < m_grid.Rows()
               && continues(span, span.row + span.rows - 1, span.row + span.rows))
            ++span.rows;
        if (span.rows > 1 || span.cols > 1)
            spans.push_back(span);
    }

    /// Whether the columns of the block form one with each other in both rows, one below the other.
    bool continues(const GridSpan& span, int upper, int lower) const
    {
        if (lower == m_grid.FixedRows || !isRun(upper, span) || !isRun(lower, span))
            return false;
        for (int col = span.col; col < span.col + span.cols; ++col) {
            if (!m_grid.MergeCol(col) || !same(upper, col, lower, col))
                return false;
        }
        return m_grid.MergeCells == MergeFree || sameToTheLeft(span.col, upper, lower);
    }

    bool sameToTheLeft(int col, int upper, int lower) const
    {
        for (const int left : m_grid.mergeCols()) {
            if (left < col && !same(upper, left, lower, left))
                return false;
        }
        return true;
    }

    /// Whether the row's run at the block's first column has the block's width.
    bool isRun(int row, const GridSpan& span) const
    {
        const bool marked = m_grid.MergeRow(row);
        if (marked && span.col > 0 && joined(row, span.col - 1))
            return false;
        return (marked ? runEnd(row, span.col) : span.col + 1) == span.col + span.cols;
    }

    int runEnd(int row, int col) const
    {
        int end = col + 1;
        while (end < m_grid.Cols() && joined(row, end - 1))
            ++end;
        return end;
    }

    /// Whether a cell of a marked row merges with its right neighbour.
    bool joined(int row, int col) const
    {
        return col + 1 != m_grid.FixedCols && same(row, col, row, col + 1);
    }

    /// Empty cells are not the same: there is nothing to show once.
    bool same(int row, int col, int otherRow, int otherCol) const
    {
        const QString& text = m_grid.TextMatrix(row, col);
        return !text.isEmpty() && text == m_grid.TextMatrix(otherRow, otherCol);
    }

    const FlexGrid& m_grid;
};

} // namespace

std::vector<GridSpan> gridSpans(const FlexGrid& grid)
{
    if (grid.MergeCells == 0 || (grid.mergeRows().empty() && grid.mergeCols().empty()))
        return {};
    return Blocks(grid).all();
}

} // namespace grid
