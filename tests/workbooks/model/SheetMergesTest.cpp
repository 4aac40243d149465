#include "workbooks/model/SheetMerges.h"

#include <gtest/gtest.h>

#include "platform/runtime/Error.h"

using excel::CellRange;
using Ranges = std::vector<CellRange>;

TEST(SheetMerges, ABlockGrowsOverAllThatItTouchesInTurn)
{
    excel::SheetMerges merges;
    merges.unite({1, 1, 1, 3});
    merges.unite({3, 3, 9, 4});
    merges.unite({20, 1, 21, 1});
    merges.unite({1, 3, 3, 3});
    EXPECT_EQ(merges.all(), (Ranges{{20, 1, 21, 1}, {1, 1, 9, 4}}));
}

TEST(SheetMerges, TallBlocksAreFoundFromTheirLastRow)
{
    excel::SheetMerges merges;
    merges.add({1, 2, 1000, 2});
    for (int row = 2; row < 900; row += 2)
        merges.unite({row, 4, row, 5});
    merges.split({1000, 1, 1000, 3});
    EXPECT_EQ(merges.all().size(), 449u);
    merges.split({1, 1, 1000, 5});
    EXPECT_TRUE(merges.isEmpty());
}

TEST(SheetMerges, WhatIsSettledFollowsEveryChange)
{
    excel::SheetMerges merges;
    merges.unite({5, 1, 6, 1});
    EXPECT_EQ(merges.settled(), (Ranges{{5, 1, 6, 1}}));
    merges.unite({1, 1, 2, 1});
    EXPECT_EQ(merges.settled(), (Ranges{{1, 1, 2, 1}, {5, 1, 6, 1}}));
    merges.split({5, 1, 5, 1});
    EXPECT_EQ(merges.settled(), (Ranges{{1, 1, 2, 1}}));
    merges.clear();
    EXPECT_TRUE(merges.settled().empty());
}

TEST(SheetMerges, TellsTheBlockThatHoldsACell)
{
    excel::SheetMerges merges;
    merges.unite({1, 1, 1, 3});
    merges.unite({2, 5, 900, 6});
    merges.unite({4, 1, 5, 2});
    const auto at = [&merges](int row, int column) {
        const CellRange* found = merges.at(row, column);
        return found == nullptr ? CellRange{0, 0, 0, 0} : *found;
    };
    EXPECT_EQ(at(1, 3), (CellRange{1, 1, 1, 3}));
    EXPECT_EQ(at(5, 1), (CellRange{4, 1, 5, 2}));
    EXPECT_EQ(at(900, 6), (CellRange{2, 5, 900, 6}));
    for (const auto& [row, column] : {std::pair{1, 4}, {2, 1}, {6, 1}, {901, 5}})
        EXPECT_EQ(merges.at(row, column), nullptr) << row << ',' << column;
}

TEST(SheetMerges, BlocksLieInsideTheGrid)
{
    excel::SheetMerges merges;
    EXPECT_THROW(merges.add({0, 1, 1, 1}), runtime::Error);
    EXPECT_THROW(merges.unite({1, 1, 1, excel::lastGridColumn + 1}), runtime::Error);
}
