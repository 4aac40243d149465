#include <gtest/gtest.h>

#include "platform/runtime/Error.h"
#include "support/PrintQString.h"
#include "workbooks/model/Workbook.h"

using namespace Qt::StringLiterals;
using excel::CellRange;
using excel::HorizontalAlignment;
using excel::LineStyle;
using Ranges = std::vector<CellRange>;

namespace {

class SheetRangeTest : public testing::Test
{
protected:
    excel::Workbook book;
    excel::Worksheet& sheet = book.addSheet(u"统计"_s);
};

} // namespace

TEST_F(SheetRangeTest, AlignmentOfAllCellsReachesEmptyAndFormattedOnes)
{
    sheet.setCell(1, 1, 5);
    sheet.Range(2, 2, 3, 3).setBorders(LineStyle::Continuous);
    sheet.Cells().setHorizontalAlignment(HorizontalAlignment::Center);
    for (const auto& [row, column] : {std::pair{1, 1}, {2, 2}, {1048576, 16384}})
        EXPECT_EQ(sheet.format(row, column).horizontalAlignment, HorizontalAlignment::Center);
    EXPECT_EQ(sheet.format(2, 2).borders.left, LineStyle::Continuous);
    EXPECT_EQ(sheet.format(1, 1).borders.left, LineStyle::None);
    EXPECT_EQ(sheet.table().row(1000), nullptr);
}

TEST_F(SheetRangeTest, FormatsOfABlockAddUpAndAreKeptOnce)
{
    sheet.setCell(2, 3, u"中"_s);
    sheet.Range(4, 5, 1, 2).setBorders(LineStyle::Continuous);
    sheet.Range(2, 3, 2, 3).setFontBold(true);
    sheet.Range(1, 1, 2, 3).setFontSize(16);
    EXPECT_EQ(sheet.Cells(2, 3).text(), u"中"_s);
    EXPECT_TRUE(sheet.format(2, 3).bold);
    EXPECT_EQ(sheet.format(2, 3).fontSize, 16);
    EXPECT_EQ(sheet.format(2, 3).borders.bottom, LineStyle::Continuous);
    EXPECT_EQ(sheet.format(4, 5).borders.top, LineStyle::Continuous);
    EXPECT_EQ(sheet.format(4, 5).fontSize, 11);
    EXPECT_EQ(sheet.format(5, 5), excel::CellFormat());
    EXPECT_EQ(sheet.formats().count(), 6);
    EXPECT_EQ(sheet.lastUsedRow(), 4);
    EXPECT_EQ(sheet.lastUsedColumn(), 5);
}

TEST_F(SheetRangeTest, AFormatFillsTheGapsBetweenCells)
{
    for (const int column : {9, 2, 5})
        sheet.setCell(1, column, column);
    sheet.Range(1, 1, 1, 6).setWrapText(true);
    for (int column = 1; column <= 9; ++column)
        EXPECT_EQ(sheet.format(1, column).wrapText, column <= 6) << column;
    EXPECT_EQ(sheet.Cells(1, 5).toDouble(), 5);
    EXPECT_TRUE(sheet.Cells(1, 3).isNull());
    EXPECT_EQ(sheet.table().row(1)->cells.size(), 7u);
}

TEST_F(SheetRangeTest, AnEmptiedCellKeepsItsFormat)
{
    sheet.setCell(1, 1, 5);
    sheet.Range(1, 1, 1, 1).setBorders(LineStyle::Continuous);
    sheet.setCell(1, 1, {});
    EXPECT_TRUE(sheet.Cells(1, 1).isNull());
    EXPECT_EQ(sheet.format(1, 1).borders.left, LineStyle::Continuous);
}

TEST_F(SheetRangeTest, AMergeOfOneCellIsNone)
{
    sheet.Range(3, 3, 3, 3).setMergeCells(true);
    EXPECT_EQ(sheet.merges().all(), Ranges{});
}

TEST_F(SheetRangeTest, MergesThatTouchGrowTogether)
{
    sheet.Range(1, 1, 2, 1).setMergeCells(true);
    sheet.Range(5, 5, 6, 6).setMergeCells(true);
    sheet.Range(2, 1, 2, 3).setMergeCells(true);
    EXPECT_EQ(sheet.merges().all(), (Ranges{{5, 5, 6, 6}, {1, 1, 2, 3}}));
    sheet.Range(2, 3, 5, 5).setMergeCells(true);
    EXPECT_EQ(sheet.merges().all(), (Ranges{{1, 1, 6, 6}}));
}

TEST_F(SheetRangeTest, MergesAreTakenApart)
{
    sheet.Range(1, 1, 2, 2).setMergeCells(true);
    sheet.Range(4, 1, 5, 1).setMergeCells(true);
    sheet.Range(2, 2, 2, 9).setMergeCells(false);
    EXPECT_EQ(sheet.merges().all(), (Ranges{{4, 1, 5, 1}}));
}

TEST_F(SheetRangeTest, SettledMergesDoNotOverlap)
{
    const struct
    {
        Ranges merges;
        Ranges settled;
    } rows[] = {
        {{{1, 1, 1, 1}}, {}},
        {{{3, 1, 4, 2}, {1, 1, 2, 2}}, {{1, 1, 2, 2}, {3, 1, 4, 2}}},
        {{{1, 1, 3, 1}, {3, 1, 3, 5}}, {{1, 1, 3, 1}}},
        {{{2, 2, 2, 4}, {2, 1, 2, 2}}, {{2, 1, 2, 2}}},
        {{{1, 1, 9, 1}, {1, 3, 9, 3}, {5, 1, 6, 3}}, {{1, 1, 9, 1}, {1, 3, 9, 3}}},
        {{{1, 1, 2, 9}, {3, 1, 3, 2}, {3, 2, 4, 3}}, {{1, 1, 2, 9}, {3, 1, 3, 2}}},
        {{{1, 1, 2, 2}, {1, 1, 2, 2}}, {{1, 1, 2, 2}}},
        {{{1, 5, 2, 6}, {1, 1, 9, 16384}}, {{1, 1, 9, 16384}}},
    };
    for (const auto& row : rows) {
        excel::Workbook other;
        excel::Worksheet& damaged = other.addSheet(u"S"_s);
        for (const CellRange& merge : row.merges)
            damaged.merges().add(merge);
        EXPECT_EQ(damaged.merges().settled(), row.settled);
    }
}

TEST_F(SheetRangeTest, BlocksLieInsideTheGrid)
{
    EXPECT_THROW(sheet.Range(0, 1, 1, 1), runtime::Error);
    EXPECT_THROW(sheet.Range(1, 1, 1, 16385), runtime::Error);
    EXPECT_THROW(sheet.merges().add({1, 1, 1, 16385}), runtime::Error);
    EXPECT_EQ(sheet.merges().all().size(), 0u);
}
