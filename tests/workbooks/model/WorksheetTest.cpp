#include <gtest/gtest.h>

#include "support/ErrorOf.h"
#include "support/PrintQString.h"
#include "workbooks/model/Workbook.h"

using namespace Qt::StringLiterals;
using excel::CellRange;
using runtime::Value;
using support::errorOf;

namespace {

class WorksheetTest : public testing::Test
{
protected:
    excel::Workbook book;
    excel::Worksheet& sheet = book.addSheet(u"成绩"_s);
};

} // namespace

TEST_F(WorksheetTest, AnEmptyCellIsNull)
{
    EXPECT_TRUE(sheet.Cells(1, 1).isNull());
    EXPECT_TRUE(sheet.Cells(1048576, 16384).isNull());
}

TEST_F(WorksheetTest, CellsKeepWhatWasPutInInAnyOrder)
{
    sheet.setCell(3, 5, u"e"_s);
    sheet.setCell(3, 2, u"b"_s);
    sheet.setCell(1, 2, 1.5);
    sheet.setCell(3, 5, u"again"_s);
    EXPECT_EQ(sheet.Cells(3, 5), Value(u"again"_s));
    EXPECT_EQ(sheet.Cells(3, 2), Value(u"b"_s));
    EXPECT_EQ(sheet.Cells(1, 2), Value(1.5));
    EXPECT_TRUE(sheet.Cells(3, 3).isNull());
    EXPECT_TRUE(sheet.Cells(3, 6).isNull());
}

TEST_F(WorksheetTest, NullEmptiesACell)
{
    sheet.setCell(2, 2, 7.0);
    sheet.setCell(2, 2, Value());
    EXPECT_TRUE(sheet.Cells(2, 2).isNull());
    EXPECT_TRUE(sheet.table().row(2)->cells.empty());
}

TEST_F(WorksheetTest, TheFarEndOfTheGridIsACellLikeAnyOther)
{
    sheet.setCell(1048576, 16384, u"end"_s);
    EXPECT_EQ(sheet.Cells(1048576, 16384), Value(u"end"_s));
    EXPECT_EQ(sheet.lastUsedRow(), 1048576);
    EXPECT_EQ(sheet.lastUsedColumn(), 16384);
    EXPECT_EQ(sheet.table().row(1000000), nullptr);
}

TEST_F(WorksheetTest, OutsideTheGridThereIsNoCell)
{
    for (const auto& [row, column] : {std::pair{0, 1}, {1, 0}, {1048577, 1}, {1, 16385}, {-5, 1}}) {
        EXPECT_THROW(sheet.Cells(row, column), runtime::Error) << row << ',' << column;
        EXPECT_THROW(sheet.setCell(row, column, 1.0), runtime::Error) << row << ',' << column;
    }
}

TEST_F(WorksheetTest, AMissingCellIsTold)
{
    EXPECT_EQ(errorOf([&] { sheet.Cells(0, 1); }), u"工作表中没有第 0 行第 1 列的单元格。"_s);
}

TEST_F(WorksheetTest, TheLastCellOfAnEmptySheetIsA1)
{
    EXPECT_EQ(sheet.lastUsedRow(), 1);
    EXPECT_EQ(sheet.lastUsedColumn(), 1);
}

TEST_F(WorksheetTest, AppendedCellsSettleWithTheLastOneOfAPlace)
{
    excel::CellTable table;
    table.append(1, 3, u"old"_s);
    table.append(1, 1, u"first"_s);
    table.append(1, 3, u"new"_s);
    table.settle();
    ASSERT_EQ(table.row(1)->cells.size(), 2u);
    EXPECT_EQ(table.value(1, 1), Value(u"first"_s));
    EXPECT_EQ(table.value(1, 3), Value(u"new"_s));
}

TEST_F(WorksheetTest, SwitchingTheFilterOffShowsTheRowsThatItHid)
{
    sheet.setAutoFilter(CellRange{1, 1, 600, 2});
    sheet.setRowState(2, excel::RowState::Hidden);
    sheet.setRowState(600, excel::RowState::Hidden);
    sheet.setRowState(601, excel::RowState::Hidden);
    EXPECT_TRUE(sheet.AutoFilterMode());
    sheet.AutoFilter();
    EXPECT_FALSE(sheet.AutoFilterMode());
    EXPECT_FALSE(sheet.geometry().isRowHidden(2));
    EXPECT_FALSE(sheet.geometry().isRowHidden(600));
    EXPECT_TRUE(sheet.geometry().isRowHidden(601));
}

TEST_F(WorksheetTest, SwitchingTheFilterOffIsAChange)
{
    sheet.setAutoFilter(CellRange{1, 1, 9, 2});
    book.setSaved(true);
    sheet.AutoFilter();
    EXPECT_FALSE(book.Saved());
    book.setSaved(true);
    sheet.AutoFilter();
    EXPECT_TRUE(book.Saved()) << "there was none any more";
}

TEST_F(WorksheetTest, WithoutAFilterNothingIsSwitched)
{
    sheet.setRowState(2, excel::RowState::Hidden);
    sheet.AutoFilter();
    EXPECT_FALSE(sheet.AutoFilterMode());
    EXPECT_TRUE(sheet.geometry().isRowHidden(2));
}

TEST_F(WorksheetTest, AFilterOverTheWholeGridIsSwitchedOffAtOnce)
{
    sheet.setAutoFilter(CellRange{1, 1, excel::lastGridRow, 1});
    sheet.setRowState(1048576, excel::RowState::Hidden);
    sheet.AutoFilter();
    EXPECT_FALSE(sheet.geometry().isRowHidden(1048576));
}

TEST_F(WorksheetTest, ActivateBringsASheetForward)
{
    excel::Worksheet& second = book.addSheet(u"第二"_s);
    EXPECT_EQ(&book.activeSheet(), &sheet);
    second.Activate();
    EXPECT_EQ(&book.activeSheet(), &second);
}

TEST_F(WorksheetTest, SheetsAreFoundByNumberAndByNameIgnoringCase)
{
    excel::Worksheet& second = book.addSheet(u"Sheet2"_s);
    EXPECT_EQ(book.Worksheets().Count(), 2);
    EXPECT_EQ(&book.Worksheets().Item(1), &sheet);
    EXPECT_EQ(&book.Worksheets().Item(u"sheet2"_s), &second);
}

TEST_F(WorksheetTest, AMissingSheetIsTold)
{
    EXPECT_EQ(errorOf([&] { book.Worksheets().Item(2); }), u"工作簿中没有第 2 个工作表。"_s);
    EXPECT_EQ(errorOf([&] { book.Worksheets().Item(u"别的"_s); }),
              u"工作簿中没有名为“别的”的工作表。"_s);
}

TEST_F(WorksheetTest, WidthsHeightsAndMergesAreKept)
{
    sheet.geometry().addColumns({2, 3, 20, false});
    sheet.setRowHeight(7, 30);
    sheet.merges().add(CellRange{5, 1, 6, 3});
    EXPECT_EQ(sheet.geometry().columns().size(), 1u);
    EXPECT_EQ(sheet.geometry().rowHeight(7), 30);
    EXPECT_EQ(sheet.geometry().rowHeight(8), excel::Row::defaultHeight);
    EXPECT_EQ(sheet.merges().all().front(), (CellRange{5, 1, 6, 3}));
}
