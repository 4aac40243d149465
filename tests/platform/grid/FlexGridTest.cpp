#include "platform/grid/FlexGrid.h"

#include <gtest/gtest.h>

#include "platform/grid/GridText.h"
#include "platform/runtime/Error.h"
#include "support/PrintQString.h"

using namespace Qt::StringLiterals;
using grid::FlexGrid;

namespace {

TEST(FlexGrid, StartsWithTwoRowsAndColumnsOneOfEachFixed)
{
    const FlexGrid grid;
    EXPECT_EQ(grid.Rows(), 2);
    EXPECT_EQ(grid.Cols(), 2);
    EXPECT_EQ(grid.FixedRows, 1);
    EXPECT_EQ(grid.FixedCols, 1);
    EXPECT_EQ(grid.TextMatrix(1, 1), QString());
}

TEST(FlexGrid, CellsThatStayKeepTheirTextsWhenTheGridGrowsOrShrinks)
{
    FlexGrid grid;
    grid.setTextMatrix(0, 0, u"班级"_s);
    grid.setTextMatrix(1, 1, u"90"_s);
    grid.setRows(4);
    grid.setCols(3);
    EXPECT_EQ(gridText(grid), u"班级\t\t\n\t90\t\n\t\t\n\t\t\n"_s);
    grid.setRows(1);
    grid.setCols(1);
    grid.setRows(2);
    grid.setCols(2);
    EXPECT_EQ(gridText(grid), u"班级\t\n\t\n"_s);
}

TEST(FlexGrid, CanBeEmptyAndGrowAgainByRowsFirst)
{
    FlexGrid grid;
    grid.setRows(0);
    grid.setCols(0);
    grid.setRows(2);
    grid.setCols(3);
    grid.setTextMatrix(1, 2, u"x"_s);
    EXPECT_EQ(gridText(grid), u"\t\t\n\t\tx\n"_s);
}

TEST(FlexGrid, RefusesACellOutsideAndNegativeCounts)
{
    FlexGrid grid;
    for (const auto& [row, col] : {std::pair{-1, 0}, {2, 0}, {0, -1}, {0, 2}}) {
        EXPECT_THROW(grid.TextMatrix(row, col), runtime::Error) << row << "," << col;
        EXPECT_THROW(grid.setTextMatrix(row, col, u"x"_s), runtime::Error) << row << "," << col;
    }
    EXPECT_THROW(grid.setRows(-1), runtime::Error);
    EXPECT_THROW(grid.setCols(-1), runtime::Error);
    EXPECT_EQ(grid.Rows(), 2);
}

TEST(FlexGrid, AWidthForAllColumnsForgetsSingleOnesAndHoldsForNewColumns)
{
    FlexGrid grid;
    EXPECT_EQ(grid.ColWidth(0), FlexGrid::DefaultColWidth);
    grid.setColWidth(0, 500);
    grid.setColWidth(-1, 750);
    EXPECT_EQ(grid.ColWidth(0), 750);
    grid.setColWidth(1, 900);
    grid.setCols(3);
    EXPECT_EQ(grid.ColWidth(1), 900);
    EXPECT_EQ(grid.ColWidth(2), 750);
    EXPECT_THROW(grid.setColWidth(3, 1), runtime::Error);
    EXPECT_THROW(grid.setColWidth(-2, 1), runtime::Error);
}

TEST(FlexGrid, HeightsAndAlignmentsFollowTheSameRule)
{
    FlexGrid grid;
    EXPECT_EQ(grid.RowHeight(1), FlexGrid::DefaultRowHeight);
    EXPECT_EQ(grid.ColAlignment(1), FlexGrid::DefaultColAlignment);
    grid.setRowHeight(-1, 300);
    grid.setRowHeight(1, 4 * grid.RowHeight(0));
    grid.setColAlignment(-1, 4);
    EXPECT_EQ(grid.RowHeight(0), 300);
    EXPECT_EQ(grid.RowHeight(1), 1200);
    EXPECT_EQ(grid.ColAlignment(1), 4);
    EXPECT_THROW(grid.setRowHeight(2, 1), runtime::Error);
    EXPECT_THROW(grid.setColAlignment(2, 1), runtime::Error);
}

TEST(FlexGrid, RowsAndColumnsThatGoTakeTheirMarksAndSizesWithThem)
{
    FlexGrid grid;
    grid.setRows(6);
    grid.setCols(3);
    grid.setMergeRow(0, true);
    grid.setMergeRow(5, true);
    grid.setMergeCol(2, true);
    grid.setRowHeight(5, 960);
    grid.setColWidth(-1, 750);
    grid.setColWidth(2, 1100);
    grid.setRows(5);
    grid.setCols(2);
    grid.setRows(6);
    grid.setCols(3);
    EXPECT_EQ(grid.mergeRows(), (std::set<int>{0}));
    EXPECT_EQ(grid.mergeCols(), (std::set<int>{}));
    EXPECT_EQ(grid.RowHeight(5), FlexGrid::DefaultRowHeight);
    EXPECT_EQ(grid.ColWidth(2), 750);
    grid.setCols(0);
    EXPECT_TRUE(grid.colWidths().empty());
}

TEST(FlexGrid, MergeMarksAreSetAndTakenBack)
{
    FlexGrid grid;
    grid.setMergeRow(1, true);
    grid.setMergeCol(0, true);
    EXPECT_TRUE(grid.MergeRow(1));
    EXPECT_FALSE(grid.MergeRow(0));
    EXPECT_TRUE(grid.MergeCol(0));
    grid.setMergeRow(1, false);
    grid.setMergeCol(0, false);
    EXPECT_FALSE(grid.MergeRow(1));
    EXPECT_FALSE(grid.MergeCol(0));
    EXPECT_THROW(grid.setMergeRow(2, true), runtime::Error);
    EXPECT_THROW(grid.setMergeCol(-1, true), runtime::Error);
}

TEST(FlexGrid, TheCurrentCellStaysInsideAShrinkingGrid)
{
    FlexGrid grid;
    grid.setRows(10);
    grid.Row = grid.RowSel = grid.TopRow = 9;
    grid.setRows(3);
    grid.setCols(1);
    EXPECT_EQ(grid.Row, 2);
    EXPECT_EQ(grid.RowSel, 2);
    EXPECT_EQ(grid.TopRow, 2);
    EXPECT_EQ(grid.Col, 0);
    EXPECT_EQ(grid.ColSel, 0);
}

} // namespace
