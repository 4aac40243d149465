#include "platform/grid/MoveRows.h"

#include <gtest/gtest.h>

#include "platform/grid/FlexGrid.h"
#include "support/PrintQString.h"
#include "support/ScriptedDialogs.h"

using grid::FlexGrid;
using namespace Qt::StringLiterals;

namespace {

const QString tag = u" - Sub MoveMFGData/MDLMsFlexGrid"_s;

/// Heading "H" and the rows "a" to "e", each twice over two columns.
FlexGrid letters()
{
    FlexGrid grid;
    grid.setRows(6);
    const QString texts = u"Habcde"_s;
    for (int row = 0; row < 6; ++row) {
        grid.setTextMatrix(row, 0, texts.mid(row, 1));
        grid.setTextMatrix(row, 1, texts.mid(row, 1));
    }
    return grid;
}

QString rowsOf(const FlexGrid& grid)
{
    QString text;
    for (int row = 0; row < grid.Rows(); ++row) {
        EXPECT_EQ(grid.TextMatrix(row, 0), grid.TextMatrix(row, 1)) << row;
        text += grid.TextMatrix(row, 0);
    }
    return text;
}

struct MoveCase
{
    const char* name;
    int first;
    int last;
    int offset;
    QString rows;
    int newFirst;
    int newLast;
};

class MoveMFGData : public testing::TestWithParam<MoveCase>
{
};

TEST_P(MoveMFGData, MovesTheBlockAndItsBounds)
{
    const support::ScriptedDialogs dialogs;
    FlexGrid grid = letters();
    int first = GetParam().first;
    int last = GetParam().last;
    grid::MoveMFGData(grid, first, last, GetParam().offset);
    EXPECT_EQ(rowsOf(grid), GetParam().rows);
    EXPECT_EQ(first, GetParam().newFirst);
    EXPECT_EQ(last, GetParam().newLast);
    EXPECT_EQ(dialogs.shown, QStringList());
}

INSTANTIATE_TEST_SUITE_P(
    Blocks, MoveMFGData,
    testing::Values(MoveCase{"BlockUpByOne", 2, 3, 1, u"Hbcade"_s, 1, 2},
                    MoveCase{"BlockDownByOne", 2, 3, -1, u"Hadbce"_s, 3, 4},
                    MoveCase{"OneRowUp", 4, 4, 1, u"Habdce"_s, 3, 3},
                    MoveCase{"BlockUpByTwo", 3, 5, 2, u"Hcdeab"_s, 1, 3},
                    MoveCase{"BlockDownByTwo", 1, 2, -2, u"Hcdabe"_s, 3, 4},
                    MoveCase{"ReversedBoundsStayReversed", 3, 2, 1, u"Hbcade"_s, 2, 1},
                    MoveCase{"TopRowUpDoesNothing", 1, 2, 1, u"Habcde"_s, 1, 2},
                    MoveCase{"TopRowUpReversedDoesNothing", 2, 1, 1, u"Habcde"_s, 2, 1},
                    MoveCase{"LastRowDownDoesNothing", 4, 5, -1, u"Habcde"_s, 4, 5},
                    MoveCase{"OffsetZeroChangesNothing", 2, 3, 0, u"Habcde"_s, 2, 3}),
    [](const testing::TestParamInfo<MoveCase>& tested) { return std::string(tested.param.name); });

TEST(MoveMFGDataTwice, RepeatedMovesGoOnWithTheSameBlock)
{
    const support::ScriptedDialogs dialogs;
    FlexGrid grid = letters();
    int first = 4;
    int last = 5;
    for (int i = 0; i < 4; ++i)
        grid::MoveMFGData(grid, first, last, 1);
    EXPECT_EQ(rowsOf(grid), u"Hdeabc"_s);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(last, 2);
}

TEST(MoveMFGDataFailures, ARowOutsideTheTableIsShownByItsNumber)
{
    const support::ScriptedDialogs dialogs;
    FlexGrid grid = letters();
    int first = 0;
    int last = 0;
    grid::MoveMFGData(grid, first, last, 1);
    EXPECT_EQ(dialogs.failures,
              (QStringList{u"第 0 行在表格之外。"_s + tag, u"第 -1 行在表格之外。"_s + tag}));
    EXPECT_EQ(rowsOf(grid), u"Habcde"_s);
}

TEST(MoveMFGDataFailures, ANewPlaceOutsideTheGridIsShownForEachCell)
{
    const support::ScriptedDialogs dialogs;
    FlexGrid grid = letters();
    int first = 2;
    int last = 2;
    grid::MoveMFGData(grid, first, last, 3);
    const QString cell = u"单元格（第 -1 行，第 %1 列）在表格之外。"_s + tag;
    EXPECT_EQ(dialogs.failures,
              (QStringList{u"第 -1 行在表格之外。"_s + tag, u"第 0 行在表格之外。"_s + tag,
                           cell.arg(0), cell.arg(1)}));
    EXPECT_EQ(rowsOf(grid), u"Haacde"_s);
}

} // namespace
