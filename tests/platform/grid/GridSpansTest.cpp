#include "platform/grid/GridSpans.h"

#include <gtest/gtest.h>

namespace {

using grid::FlexGrid;
using grid::GridSpan;

/// A grid without fixed cells, filled from rows of letters.
FlexGrid gridOf(const std::vector<QString>& rows)
{
    FlexGrid grid;
    grid.FixedRows = 0;
    grid.FixedCols = 0;
    grid.MergeCells = 2;
    grid.setRows(int(rows.size()));
    grid.setCols(int(rows.front().size()));
    for (int row = 0; row < grid.Rows(); ++row) {
        for (int col = 0; col < grid.Cols(); ++col)
            grid.setTextMatrix(row, col, rows[size_t(row)].mid(col, 1));
    }
    return grid;
}

TEST(GridSpans, RunsOfEqualTextsInMarkedRowsAreOneBlock)
{
    FlexGrid grid = gridOf({QStringLiteral("aabcc"), QStringLiteral("xxxxx")});
    grid.setMergeRow(0, true);
    EXPECT_EQ(gridSpans(grid), (std::vector<GridSpan>{{0, 0, 1, 2}, {0, 3, 1, 2}}));
}

TEST(GridSpans, RunsOfEqualTextsInMarkedColumnsAreOneBlock)
{
    FlexGrid grid = gridOf({QStringLiteral("ax"), QStringLiteral("ay"), QStringLiteral("bz")});
    grid.setMergeCol(0, true);
    EXPECT_EQ(gridSpans(grid), (std::vector<GridSpan>{{0, 0, 2, 1}}));
}

TEST(GridSpans, NeverCrossTheEdgeOfTheFixedCells)
{
    FlexGrid grid = gridOf({QStringLiteral("aaa"), QStringLiteral("aaa"), QStringLiteral("aaa")});
    grid.FixedRows = 1;
    grid.FixedCols = 1;
    grid.setMergeRow(2, true);
    grid.setMergeCol(0, true);
    EXPECT_EQ(gridSpans(grid), (std::vector<GridSpan>{{2, 1, 1, 2}, {1, 0, 2, 1}}));
}

TEST(GridSpans, ColumnsLeaveAloneWhatARowTook)
{
    FlexGrid grid = gridOf({QStringLiteral("aa"), QStringLiteral("ax"), QStringLiteral("ay")});
    grid.setMergeRow(0, true);
    grid.setMergeCol(0, true);
    EXPECT_EQ(gridSpans(grid), (std::vector<GridSpan>{{0, 0, 1, 2}, {1, 0, 2, 1}}));
}

TEST(GridSpans, WithoutMergingThereAreNone)
{
    FlexGrid grid = gridOf({QStringLiteral("aa")});
    grid.setMergeRow(0, true);
    grid.MergeCells = 0;
    EXPECT_TRUE(gridSpans(grid).empty());
}

} // namespace
