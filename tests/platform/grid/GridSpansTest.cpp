#include "platform/grid/GridSpans.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using grid::FlexGrid;
using grid::GridSpan;
using grid::gridSpans;

namespace grid {

static void PrintTo(const GridSpan& span, std::ostream* out)
{
    *out << span.row << ',' << span.col << ' ' << span.rows << 'x' << span.cols;
}

} // namespace grid

namespace {

/// A grid without fixed cells; rows are divided by "/", each letter is a cell, "." an empty one.
FlexGrid gridOf(const QString& text)
{
    const QStringList rows = text.split(u'/');
    FlexGrid grid;
    grid.FixedRows = grid.FixedCols = 0;
    grid.MergeCells = 2;
    grid.setRows(int(rows.size()));
    grid.setCols(int(rows.front().size()));
    for (int row = 0; row < grid.Rows(); ++row) {
        for (int col = 0; col < grid.Cols(); ++col) {
            const QString cell = rows[row].mid(col, 1);
            grid.setTextMatrix(row, col, cell == u"." ? QString() : cell);
        }
    }
    return grid;
}

using Spans = std::vector<GridSpan>;

TEST(GridSpans, NothingMergesWithoutAMarkOrWithoutTheSetting)
{
    FlexGrid grid = gridOf(u"aa/aa"_s);
    EXPECT_EQ(gridSpans(grid), Spans{});
    grid.setMergeRow(0, true);
    grid.MergeCells = 0;
    EXPECT_EQ(gridSpans(grid), Spans{});
}

TEST(GridSpans, EqualNeighboursOfAMarkedRowAreOneBlock)
{
    FlexGrid grid = gridOf(u"aabccc/aabccc"_s);
    grid.setMergeRow(0, true);
    EXPECT_EQ(gridSpans(grid), (Spans{{0, 0, 1, 2}, {0, 3, 1, 3}}));
}

TEST(GridSpans, EqualNeighboursOfAMarkedColumnAreOneBlock)
{
    FlexGrid grid = gridOf(u"ax/ax/bx/bx/bx"_s);
    grid.setMergeCol(0, true);
    EXPECT_EQ(gridSpans(grid), (Spans{{0, 0, 2, 1}, {2, 0, 3, 1}}));
}

TEST(GridSpans, AColumnLeavesAloneWhatARowTook)
{
    FlexGrid grid = gridOf(u"aa/ax/ay"_s);
    grid.setMergeRow(0, true);
    grid.setMergeCol(0, true);
    EXPECT_EQ(gridSpans(grid), (Spans{{0, 0, 1, 2}, {1, 0, 2, 1}}));
}

TEST(GridSpans, EmptyCellsStayApart)
{
    FlexGrid grid = gridOf(u"..a/..a"_s);
    grid.setMergeRow(0, true);
    grid.setMergeCol(0, true);
    EXPECT_EQ(gridSpans(grid), Spans{});
}

TEST(GridSpans, ABlockNeverCrossesTheEdgeOfTheFixedCells)
{
    FlexGrid grid = gridOf(u"aaaa/aaaa/aaaa"_s);
    grid.FixedRows = 1;
    grid.FixedCols = 2;
    grid.setMergeRow(0, true);
    grid.setMergeCol(0, true);
    EXPECT_EQ(gridSpans(grid), (Spans{{0, 0, 1, 2}, {0, 2, 1, 2}, {1, 0, 2, 1}}));
}

TEST(GridSpans, AHeadingOfTwoRowsMergesDownWhereItsColumnIsMarked)
{
    // A title, and below it headings with the class beside them.
    FlexGrid grid = gridOf(u"tttt/cyyz/c123/1xxx"_s);
    grid.setMergeRow(0, true);
    grid.setMergeRow(1, true);
    grid.setMergeCol(0, true);
    EXPECT_EQ(gridSpans(grid), (Spans{{0, 0, 1, 4}, {1, 0, 2, 1}, {1, 1, 1, 2}}));
}

TEST(GridSpans, ARunThatRepeatsBelowItselfInMarkedColumnsIsOneBlock)
{
    FlexGrid grid = gridOf(u"aab/aab/axb"_s);
    for (const int line : {0, 1}) {
        grid.setMergeRow(line, true);
        grid.setMergeCol(line, true);
    }
    EXPECT_EQ(gridSpans(grid), (Spans{{0, 0, 2, 2}}));
}

TEST(GridSpans, RestrictedAColumnMergesOnlyWithinTheBlocksToItsLeft)
{
    FlexGrid grid = gridOf(u"1e/1e/2e/2f"_s);
    grid.setMergeCol(0, true);
    grid.setMergeCol(1, true);
    EXPECT_EQ(gridSpans(grid), (Spans{{0, 0, 2, 1}, {0, 1, 2, 1}, {2, 0, 2, 1}}));
    grid.MergeCells = 1;
    EXPECT_EQ(gridSpans(grid), (Spans{{0, 0, 2, 1}, {0, 1, 3, 1}, {2, 0, 2, 1}}));
}

} // namespace
