#include "platform/grid/GridSpans.h"

namespace grid {

namespace {

/// Collects blocks and remembers which cells they took.
class Collector
{
public:
    explicit Collector(const FlexGrid& grid)
        : m_grid(grid), m_taken(size_t(grid.Rows()) * size_t(grid.Cols()), 0)
    {
    }

    void alongRow(int row)
    {
        for (int begin = 0; begin < m_grid.Cols();) {
            int end = begin + 1;
            while (end < m_grid.Cols() && end != m_grid.FixedCols && same(row, begin, row, end))
                ++end;
            take({row, begin, 1, end - begin});
            begin = end;
        }
    }

    void downColumn(int col)
    {
        for (int begin = 0; begin < m_grid.Rows();) {
            int end = begin + 1;
            while (end < m_grid.Rows() && end != m_grid.FixedRows && same(begin, col, end, col)
                   && !taken(begin, col) && !taken(end, col))
                ++end;
            take({begin, col, end - begin, 1});
            begin = end;
        }
    }

    std::vector<GridSpan> spans;

private:
    bool same(int row, int col, int otherRow, int otherCol) const
    {
        return m_grid.TextMatrix(row, col) == m_grid.TextMatrix(otherRow, otherCol);
    }

    char& taken(int row, int col) { return m_taken[size_t(row) * size_t(m_grid.Cols()) + size_t(col)]; }

    void take(const GridSpan& span)
    {
        if (span.rows * span.cols < 2)
            return;
        for (int row = span.row; row < span.row + span.rows; ++row) {
            for (int col = span.col; col < span.col + span.cols; ++col)
                taken(row, col) = 1;
        }
        spans.push_back(span);
    }

    const FlexGrid& m_grid;
    std::vector<char> m_taken;
};

} // namespace

std::vector<GridSpan> gridSpans(const FlexGrid& grid)
{
    Collector collector(grid);
    if (grid.MergeCells == 0)
        return {};
    for (const int row : grid.mergeRows()) {
        if (row < grid.Rows())
            collector.alongRow(row);
    }
    for (const int col : grid.mergeCols()) {
        if (col < grid.Cols())
            collector.downColumn(col);
    }
    return collector.spans;
}

} // namespace grid
