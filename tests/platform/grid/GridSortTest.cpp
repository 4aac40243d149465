#include "platform/grid/GridSort.h"

#include <gtest/gtest.h>

#include "platform/grid/FlexGrid.h"
#include "platform/runtime/Error.h"
#include "support/PrintQString.h"
#include "support/ScriptedDialogs.h"

using grid::FlexGrid;
using grid::SortKind;
using grid::SortOrder;
using namespace Qt::StringLiterals;

namespace {

/// A grid with a heading row and one row per cell of the first column; the second column numbers
/// them.
FlexGrid gridOf(const QStringList& cells)
{
    FlexGrid grid;
    grid.setRows(int(cells.size()) + 1);
    grid.setTextMatrix(0, 0, u"分数"_s);
    for (int i = 0; i < cells.size(); ++i) {
        grid.setTextMatrix(i + 1, 0, cells[i]);
        grid.setTextMatrix(i + 1, 1, QString::number(i + 1));
    }
    return grid;
}

QString order(const FlexGrid& grid)
{
    QStringList numbers;
    for (int row = 1; row < grid.Rows(); ++row)
        numbers.append(grid.TextMatrix(row, 1));
    return numbers.join(u',');
}

struct SortCase
{
    const char* name;
    QStringList cells;
    SortKind kind;
    SortOrder sortOrder;
    QString expected;
};

class MFGSort : public testing::TestWithParam<SortCase>
{
};

TEST_P(MFGSort, PutsTheRowsInOrder)
{
    const support::ScriptedDialogs dialogs;
    FlexGrid grid = gridOf(GetParam().cells);
    grid::MFGSort(grid, 0, GetParam().kind, GetParam().sortOrder);
    EXPECT_EQ(order(grid), GetParam().expected);
    EXPECT_EQ(grid.TextMatrix(0, 0), u"分数"_s);
    EXPECT_EQ(dialogs.shown, QStringList());
}

INSTANTIATE_TEST_SUITE_P(Kinds, MFGSort,
                         testing::Values(SortCase{"NumericAscending",
                                                  {u"100"_s, u"9"_s, u"-1"_s, u"9.5"_s},
                                                  SortKind::Numeric,
                                                  SortOrder::Ascending,
                                                  u"3,2,4,1"_s},
                                         SortCase{"NumericDescending",
                                                  {u"100"_s, u"9"_s, u"-1"_s, u"9.5"_s},
                                                  SortKind::Numeric,
                                                  SortOrder::Descending,
                                                  u"1,4,2,3"_s},
                                         SortCase{"EqualRowsStay",
                                                  {u"80"_s, u"90"_s, u"80"_s, u"90"_s},
                                                  SortKind::Numeric,
                                                  SortOrder::Descending,
                                                  u"2,4,1,3"_s},
                                         SortCase{"TextsReadAsTheirHead",
                                                  {u"缺考"_s, u"5 分"_s, u""_s, u"-2"_s},
                                                  SortKind::Numeric,
                                                  SortOrder::Ascending,
                                                  u"4,1,3,2"_s},
                                         SortCase{"TextIgnoresCase",
                                                  {u"b"_s, u"A"_s, u"a"_s, u"10"_s},
                                                  SortKind::Text,
                                                  SortOrder::Ascending,
                                                  u"4,2,3,1"_s},
                                         SortCase{"TextDescending",
                                                  {u"10"_s, u"9"_s},
                                                  SortKind::Text,
                                                  SortOrder::Descending,
                                                  u"2,1"_s},
                                         SortCase{"GenericOfNumbers",
                                                  {u"10"_s, u"9"_s},
                                                  SortKind::Generic,
                                                  SortOrder::Ascending,
                                                  u"2,1"_s},
                                         SortCase{"GenericOfTexts",
                                                  {u"10"_s, u"9"_s, u"x"_s},
                                                  SortKind::Generic,
                                                  SortOrder::Ascending,
                                                  u"1,2,3"_s}),
                         [](const testing::TestParamInfo<SortCase>& tested) {
                             return std::string(tested.param.name);
                         });

TEST(MFGSortFailures, AColumnOutsideIsShownAndTheFormerColumnSorts)
{
    const support::ScriptedDialogs dialogs;
    FlexGrid grid = gridOf({u"2"_s, u"1"_s});
    grid.Col = 0;
    grid::MFGSort(grid, 7, SortKind::Numeric, SortOrder::Ascending);
    EXPECT_EQ(dialogs.failures, QStringList{u"列 7 在表格之外。 - Sub MFGSort/MDLMsFlexGrid"_s});
    EXPECT_EQ(grid.Col, 0);
    EXPECT_EQ(order(grid), u"2,1"_s);
}

TEST(MFGSortFailures, AGridOfHeadingsAloneSortsToItself)
{
    const support::ScriptedDialogs dialogs;
    FlexGrid grid = gridOf({});
    grid.FixedRows = 2;
    grid::MFGSort(grid, 1, SortKind::Numeric, SortOrder::Descending);
    EXPECT_EQ(grid.Col, 1);
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST(SortKindOf, ANumberThatIsMissingKeepsAColumnOneOfNumbers)
{
    EXPECT_EQ(sortKindOf(gridOf({u"9"_s, u""_s, u"-1.5"_s}), 0), SortKind::Numeric);
    EXPECT_EQ(sortKindOf(gridOf({u""_s, u""_s}), 0), SortKind::Numeric);
    EXPECT_EQ(sortKindOf(gridOf({u"9"_s, u"缺考"_s}), 0), SortKind::Text);
    EXPECT_EQ(sortKindOf(gridOf({u"9"_s, u" "_s}), 0), SortKind::Text);
}

TEST(FlexGridSort, KnowsTheCodesOfTheControl)
{
    FlexGrid grid = gridOf({u"9"_s, u"100"_s});
    grid.Col = 0;
    grid.Sort(4);
    EXPECT_EQ(order(grid), u"2,1"_s);
    grid.Sort(3);
    EXPECT_EQ(order(grid), u"1,2"_s);
    grid.Sort(0);
    EXPECT_EQ(order(grid), u"1,2"_s);
    EXPECT_THROW(grid.Sort(7), runtime::Error);
}

TEST(RowData, GoesWithItsRow)
{
    FlexGrid grid = gridOf({u"2"_s, u"1"_s, u"3"_s});
    grid.setRowData(1, 20);
    grid.setRowData(3, 30);
    grid.Col = 0;
    grid.Sort(3);
    EXPECT_EQ(grid.RowData(0), 0);
    EXPECT_EQ(grid.RowData(1), 0);
    EXPECT_EQ(grid.RowData(2), 20);
    EXPECT_EQ(grid.RowData(3), 30);
    grid.setRows(3);
    grid.setRows(4);
    EXPECT_EQ(grid.RowData(3), 0);
    EXPECT_THROW(grid.RowData(4), runtime::Error);
    EXPECT_THROW(grid.setRowData(-1, 1), runtime::Error);
}

} // namespace
