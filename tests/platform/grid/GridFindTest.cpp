#include "platform/grid/GridFind.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"

using grid::CellPlace;
using grid::FlexGrid;
using namespace Qt::StringLiterals;

namespace {

/// Each cell holds its row and column, "1,2".
FlexGrid numbered()
{
    FlexGrid grid;
    grid.setRows(4);
    grid.setCols(3);
    for (int row = 0; row < grid.Rows(); ++row) {
        for (int col = 0; col < grid.Cols(); ++col)
            grid.setTextMatrix(row, col, u"%1,%2"_s.arg(row).arg(col));
    }
    return grid;
}

TEST(GridFind, GoesOnRowByRowAndAroundTheEnd)
{
    const FlexGrid grid = numbered();
    const CellPlace from{2, 1};
    EXPECT_EQ(findCell(grid, from, u",1"_s, Qt::AscendingOrder), (CellPlace{3, 1}));
    EXPECT_EQ(findCell(grid, from, u"1,"_s, Qt::AscendingOrder), (CellPlace{1, 0}));
    EXPECT_EQ(findCell(grid, from, u",1"_s, Qt::DescendingOrder), (CellPlace{1, 1}));
    EXPECT_EQ(findCell(grid, from, u"3,"_s, Qt::DescendingOrder), (CellPlace{3, 2}));
    EXPECT_EQ(findCell(grid, from, u"2,1"_s, Qt::AscendingOrder), from) << "itself comes last";
}

TEST(GridFind, WithoutACellToStartFromItBeginsAtTheFirst)
{
    EXPECT_EQ(findCell(numbered(), std::nullopt, u","_s, Qt::AscendingOrder), (CellPlace{0, 0}));
}

TEST(GridFind, PassesOverHiddenColumnsAndIgnoresCase)
{
    FlexGrid grid = numbered();
    grid.setColWidth(1, 0);
    EXPECT_EQ(findCell(grid, std::nullopt, u",1"_s, Qt::AscendingOrder), std::nullopt);
    grid.setTextMatrix(3, 2, u"Abc"_s);
    EXPECT_EQ(findCell(grid, std::nullopt, u"aB"_s, Qt::AscendingOrder), (CellPlace{3, 2}));
}

TEST(GridFind, AMergedBlockIsOneCell)
{
    FlexGrid grid = numbered();
    grid.MergeCells = 2;
    grid.setMergeRow(2, true);
    grid.setMergeCol(0, true);
    for (int col = 1; col < 3; ++col)
        grid.setTextMatrix(2, col, u"甲"_s);
    for (int row = 1; row < 4; ++row)
        grid.setTextMatrix(row, 0, u"甲"_s);
    std::optional<CellPlace> at;
    std::vector<CellPlace> found;
    for (int i = 0; i < 3; ++i) {
        at = findCell(grid, at, u"甲"_s, Qt::AscendingOrder);
        found.push_back(at.value_or(CellPlace{-1, -1}));
    }
    EXPECT_EQ(found, (std::vector<CellPlace>{{1, 0}, {2, 1}, {1, 0}}));
    EXPECT_EQ(findCell(grid, CellPlace{2, 2}, u"甲"_s, Qt::DescendingOrder), (CellPlace{2, 1}));
}

TEST(GridFind, NoTextAndNoCellsAreFoundNowhere)
{
    FlexGrid grid = numbered();
    EXPECT_EQ(findCell(grid, std::nullopt, u""_s, Qt::AscendingOrder), std::nullopt);
    grid.setRows(0);
    EXPECT_EQ(findCell(grid, std::nullopt, u"1"_s, Qt::AscendingOrder), std::nullopt);
}

} // namespace
