#include "workbooks/model/GridToSheet.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "workbooks/MergesOf.h"
#include "workbooks/model/Application.h"

namespace {

using namespace Qt::StringLiterals;
using excel::GridBlockToSheet;

class GridBlock : public testing::Test
{
protected:
    GridBlock()
    {
        grid.setRows(4);
        grid.setCols(3);
        fill({{u"题"_s, u"题"_s, u"题"_s},
              {u"班级"_s, u"语文"_s, u"语文"_s},
              {u"班级"_s, u"人数"_s, u"比例"_s},
              {u"1班"_s, u"52/1/53"_s, u"-1"_s}});
        grid.setMergeRow(0, true);
        grid.setMergeRow(1, true);
        grid.setMergeCol(0, true);
    }

    void fill(const QList<QStringList>& texts)
    {
        for (int r = 0; r < texts.size(); ++r) {
            for (int c = 0; c < texts[r].size(); ++c)
                grid.setTextMatrix(r, c, texts[r][c]);
        }
    }

    grid::FlexGrid grid;
    excel::Application application;
    excel::Worksheet& sheet = application.Workbooks().Add().Worksheets().Item(1);
    int row = 5;
};

TEST_F(GridBlock, CopiesTextsMergesAndBorders)
{
    GridBlockToSheet(grid, &sheet, row, {0, 3, 0, 2});
    EXPECT_EQ(sheet.Cells(5, 1).text(), u"题"_s);
    EXPECT_EQ(sheet.Cells(8, 2), runtime::Value(u"52/1/53"_s));
    EXPECT_EQ(sheet.Cells(8, 3), runtime::Value(-1.0));
    EXPECT_EQ(mergesOf(sheet), u"5,1-5,3 6,1-7,1 6,2-6,3"_s);
    EXPECT_EQ(sheet.format(5, 1).borders.top, excel::LineStyle::Continuous);
    EXPECT_EQ(sheet.format(8, 3).borders.right, excel::LineStyle::Continuous);
    EXPECT_EQ(sheet.format(9, 1).borders.top, excel::LineStyle::None);
    EXPECT_EQ(sheet.format(5, 4).borders.left, excel::LineStyle::None);
}

TEST_F(GridBlock, NextBlockBeginsBehindOneEmptyRow)
{
    GridBlockToSheet(grid, &sheet, row, {0, 3, 0, 2});
    EXPECT_EQ(row, 10);
}

TEST_F(GridBlock, PartOfAGridBeginsInColumnOne)
{
    GridBlockToSheet(grid, &sheet, row, {1, 2, 1, 2});
    EXPECT_EQ(sheet.Cells(5, 1).text(), u"语文"_s);
    EXPECT_EQ(sheet.Cells(6, 2).text(), u"比例"_s);
    EXPECT_EQ(mergesOf(sheet), u"5,1-5,2"_s);
    EXPECT_EQ(row, 8);
}

TEST_F(GridBlock, WithoutASheetTheRowStillRunsOn)
{
    GridBlockToSheet(grid, nullptr, row, {0, 3, 0, 2});
    EXPECT_EQ(row, 10);
}

TEST_F(GridBlock, ClosedSheetIsPassedOverInSilence)
{
    application.Quit();
    GridBlockToSheet(grid, &sheet, row, {0, 3, 0, 2});
    EXPECT_EQ(row, 10);
}

TEST_F(GridBlock, OverlappingMergesGrowTogether)
{
    fill({{u"甲"_s, u"甲"_s, u""_s}, {u"甲"_s, u"乙"_s, u"乙"_s}});
    GridBlockToSheet(grid, &sheet, row, {0, 1, 0, 2});
    EXPECT_EQ(sheet.merges().settled().size(), sheet.merges().all().size());
}

} // namespace
