#include <gtest/gtest.h>

#include "support/ErrorOf.h"
#include "support/PrintQString.h"
#include "workbooks/model/ColumnFit.h"
#include "workbooks/model/TextWidth.h"
#include "workbooks/model/Workbook.h"

using namespace Qt::StringLiterals;
using excel::autoFitColumns;
using excel::SheetGeometry;

namespace {

class ColumnFit : public testing::Test
{
protected:
    double fitted(int column)
    {
        autoFitColumns(sheet);
        return sheet.geometry().shownColumnWidth(column);
    }

    excel::Workbook book;
    excel::Worksheet& sheet = book.addSheet(u"S"_s);
};

} // namespace

TEST(CharacterCells, AChineseCharacterTakesTwo)
{
    EXPECT_EQ(excel::characterCells({}), 0);
    EXPECT_EQ(excel::characterCells(u"abc"), 3);
    EXPECT_EQ(excel::characterCells(u"语文97.5"), 8);
    EXPECT_EQ(excel::characterCells(u"，（Ａ"), 6);
    EXPECT_EQ(excel::characterCells(u"\U00020BB7a"), 3); // beyond 16 bits
}

TEST_F(ColumnFit, AColumnIsAsWideAsItsWidestText)
{
    sheet.setCell(1, 1, u"考试名称"_s);
    sheet.setCell(2, 1, u"2023年期末考试"_s);
    sheet.setCell(3, 1, 1);
    sheet.setCell(1, 2, 97.5);
    sheet.setCell(1, 3, u"短\n两行的长"_s);
    EXPECT_EQ(fitted(1), 14);
    EXPECT_EQ(fitted(2), 4);
    EXPECT_EQ(fitted(3), 8);
}

TEST_F(ColumnFit, AnEmptyColumnAndAHiddenOneStayAsTheyAre)
{
    sheet.setColumnWidth(1, 1, 30);
    sheet.setColumnWidth(3, 3, 0);
    sheet.setCell(1, 3, u"隐藏"_s);
    sheet.setCell(2, 4, QString());
    EXPECT_EQ(fitted(1), 30);
    EXPECT_EQ(fitted(2), SheetGeometry::standardColumnWidth);
    EXPECT_EQ(fitted(3), 0);
    EXPECT_EQ(fitted(4), SheetGeometry::standardColumnWidth);
}

TEST_F(ColumnFit, ATitleMergedOverColumnsMakesNoneWider)
{
    sheet.setCell(1, 1, u"一个很长很长的标题"_s);
    sheet.Range(1, 1, 1, 3).setMergeCells(true);
    sheet.setCell(2, 1, u"甲"_s);
    sheet.Range(2, 1, 3, 1).setMergeCells(true);
    EXPECT_EQ(fitted(1), 2);
}

TEST_F(ColumnFit, ALargerFontNeedsMoreRoomAndNoneMoreThanASheetAllows)
{
    sheet.setCell(1, 1, u"abcd"_s);
    sheet.Range(1, 1, 1, 1).setFontSize(22);
    sheet.setCell(1, 2, u"云"_s.repeated(10000));
    EXPECT_EQ(fitted(1), 8);
    EXPECT_EQ(fitted(2), 255);
}

TEST_F(ColumnFit, FramesMoveWithTheColumns)
{
    sheet.setCell(1, 1, u"abcd"_s);
    EXPECT_EQ(sheet.Range(1, 2, 1, 2).Left(), 54);
    autoFitColumns(sheet);
    EXPECT_EQ(sheet.Range(1, 2, 1, 2).Left(), (4 * 8 + 5) * 0.75);
}

TEST_F(ColumnFit, AnEmptySheetStaysAsItIsAndAClosedOneRefuses)
{
    autoFitColumns(sheet);
    EXPECT_TRUE(sheet.geometry().columns().empty());
    book.Close();
    EXPECT_EQ(support::errorOf([&] { autoFitColumns(sheet); }), u"工作簿已经关闭。"_s);
}
