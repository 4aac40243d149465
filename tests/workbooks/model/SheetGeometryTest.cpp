#include <gtest/gtest.h>

#include "platform/runtime/Error.h"
#include "support/PrintQString.h"
#include "workbooks/model/Workbook.h"

using namespace Qt::StringLiterals;
using excel::SheetGeometry;

namespace {

constexpr double height = SheetGeometry::standardRowHeight;
constexpr double width = 54; // of a standard column, in points

class SheetGeometryTest : public testing::Test
{
protected:
    excel::Workbook book;
    excel::Worksheet& sheet = book.addSheet(u"打印"_s);
    SheetGeometry& geometry = sheet.geometry();
};

} // namespace

TEST_F(SheetGeometryTest, EdgesMoveWithAWidthThatIsSetBeforeThem)
{
    EXPECT_EQ(geometry.columnLeft(5), 4 * width);
    sheet.setColumnWidth(2, 2, 10);
    EXPECT_EQ(geometry.columnLeft(2), width);
    EXPECT_EQ(geometry.columnLeft(5), 3 * width + 85 * 0.75);
    sheet.setColumnWidth(3, 4, 0);
    EXPECT_EQ(geometry.columnLeft(5), width + 85 * 0.75);
    EXPECT_EQ(geometry.columnPoints(3), (std::vector<double>{width, 85 * 0.75, 0}));
}

TEST_F(SheetGeometryTest, AColumnIsAsItWasSetLast)
{
    sheet.setColumnWidth(2, 9, 5);
    sheet.setColumnWidth(4, 6, 7);
    geometry.addColumns({8, 12, 0, true});
    sheet.setColumnWidth(1, 2, 3);
    geometry.addColumns({5, 5, 0, false});
    const double widths[] = {3, 3, 5, 7, SheetGeometry::standardColumnWidth, 7, 5, 0, 0};
    int column = 0;
    for (const double expected : widths)
        EXPECT_EQ(geometry.shownColumnWidth(++column), expected) << column;
    EXPECT_EQ(geometry.shownColumnWidth(13), SheetGeometry::standardColumnWidth);
    sheet.setColumnWidth(1, excel::lastGridColumn, 4);
    EXPECT_EQ(geometry.shownColumnWidth(8), 4);
}

TEST_F(SheetGeometryTest, SettingsThatOverlapAreKeptOnce)
{
    for (int column = 1; column <= 250; ++column)
        sheet.setColumnWidth(column, excel::lastGridColumn, column);
    sheet.setColumnWidth(1, 200, 6);
    for (int count = 0; count < 100'000; ++count)
        geometry.addColumns({1, 1, 6, false});
    EXPECT_EQ(geometry.columns().size(), 51u);
    EXPECT_EQ(geometry.columns().front().last, 200);
    EXPECT_EQ(geometry.columns().back().first, 250);
    EXPECT_EQ(geometry.shownColumnWidth(excel::lastGridColumn), 250);
}

TEST_F(SheetGeometryTest, EdgesMoveWithAHeightThatIsSetBeforeThem)
{
    EXPECT_EQ(geometry.rowTop(600), 599 * height);
    sheet.setRowHeight(300, 40);
    EXPECT_EQ(geometry.rowTop(300), 299 * height);
    EXPECT_EQ(geometry.rowTop(600), 598 * height + 40);
    sheet.setRowState(2, excel::RowState::Hidden);
    EXPECT_EQ(geometry.rowTop(600), 597 * height + 40);
}

TEST_F(SheetGeometryTest, EdgesMoveWithTheContentsThatMakeARowHigher)
{
    EXPECT_EQ(geometry.rowTop(9), 8 * height);
    sheet.setCellText(2, 1, u"一\n二"_s);
    EXPECT_EQ(geometry.rowTop(9), 9 * height);
    sheet.setCellText(3, 1, u"题"_s);
    sheet.Range(3, 1, 3, 1).setFontSize(22);
    EXPECT_EQ(geometry.rowTop(9), 10 * height);
    sheet.setCell(2, 1, {});
    EXPECT_EQ(geometry.rowTop(9), 9 * height);
}

TEST_F(SheetGeometryTest, ANarrowerColumnWrapsItsTextsAnew)
{
    sheet.setCellText(1, 1, u"一二\n三"_s);
    EXPECT_EQ(geometry.rowTop(2), 2 * height);
    sheet.setColumnWidth(1, 1, 2);
    EXPECT_EQ(geometry.rowTop(2), 3 * height);
}

TEST_F(SheetGeometryTest, AMergedTitleWrapsAtTheWidthOfItsMerge)
{
    const QString title(60, u'题');
    sheet.setCellText(1, 1, title + u"\n文科"_s);
    EXPECT_GT(geometry.shownRowHeight(1), 10 * height);
    sheet.Range(1, 1, 1, 15).setMergeCells(true);
    EXPECT_EQ(geometry.shownRowHeight(1), 2 * height);
    EXPECT_EQ(geometry.rowTop(2), 2 * height);
    sheet.setCellText(1, 2, title + u"\n文科"_s);
    EXPECT_EQ(geometry.shownRowHeight(1), 2 * height) << "covered";
    sheet.Range(1, 1, 1, 15).setMergeCells(false);
    EXPECT_GT(geometry.rowTop(2), 10 * height);
}

TEST_F(SheetGeometryTest, ATextMergedOverRowsNeedsOfTheFirstWhatTheOthersLack)
{
    sheet.setCellText(2, 1, u"一\n二\n三"_s);
    sheet.Range(2, 1, 3, 1).setMergeCells(true);
    EXPECT_EQ(geometry.shownRowHeight(2), 2 * height);
    EXPECT_EQ(geometry.shownRowHeight(3), height);
}

TEST_F(SheetGeometryTest, AMergeThatGrowsOrGoesMovesTheRowsFromItsBeginOn)
{
    sheet.setCellText(2, 1, u"一\n二\n三"_s);
    sheet.Range(2, 1, 3, 1).setMergeCells(true);
    EXPECT_EQ(geometry.rowTop(3), 3 * height);
    sheet.Range(3, 1, 4, 1).setMergeCells(true);
    EXPECT_EQ(geometry.rowTop(3), 2 * height);
    sheet.Range(4, 1, 4, 1).setMergeCells(false);
    EXPECT_EQ(geometry.rowTop(3), 4 * height);
}

TEST_F(SheetGeometryTest, NoTextMakesARowHigherThanASheetAllows)
{
    sheet.setCellText(1, 1, u"行\n"_s.repeated(100));
    EXPECT_EQ(geometry.shownRowHeight(1), 409.5);
}

TEST_F(SheetGeometryTest, SwitchingTheFilterOffMovesTheRowsDown)
{
    sheet.setAutoFilter({1, 1, 9, 1});
    sheet.setRowState(4, excel::RowState::Hidden);
    EXPECT_EQ(geometry.rowTop(9), 7 * height);
    sheet.AutoFilter();
    EXPECT_EQ(geometry.rowTop(9), 8 * height);
}

TEST_F(SheetGeometryTest, APlaceLiesInTheLineThatBeginsThere)
{
    sheet.setRowState(3, excel::RowState::Hidden);
    EXPECT_EQ(geometry.rowAt(0), 1);
    EXPECT_EQ(geometry.rowAt(height - 0.1), 1);
    EXPECT_EQ(geometry.rowAt(height), 2);
    EXPECT_EQ(geometry.rowAt(2 * height), 4);
    EXPECT_EQ(geometry.rowAt(1e9), excel::lastGridRow);
    EXPECT_EQ(geometry.columnAt(-5), 1);
    EXPECT_EQ(geometry.columnAt(3 * width + 1), 4);
    EXPECT_EQ(geometry.columnAt(1e9), excel::lastGridColumn);
}

TEST_F(SheetGeometryTest, TheGridEndsBehindItsLastLine)
{
    EXPECT_EQ(geometry.columnLeft(excel::lastGridColumn + 1), excel::lastGridColumn * width);
    EXPECT_THROW(geometry.columnLeft(0), runtime::Error);
    EXPECT_THROW(geometry.rowTop(0), runtime::Error);
    EXPECT_THROW(geometry.shownRowHeight(excel::lastGridRow + 1), runtime::Error);
    EXPECT_THROW(geometry.addColumns({1, excel::lastGridColumn + 1, 8, false}), runtime::Error);
}
