#include "workbooks/model/GridToSheet.h"

#include <gtest/gtest.h>

#include <QSet>

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

    static QSet<QString> textsUnder(const excel::Worksheet& sheet, const excel::CellRange& merge)
    {
        QSet<QString> texts;
        for (int r = merge.firstRow; r <= merge.lastRow; ++r) {
            for (int c = merge.firstColumn; c <= merge.lastColumn; ++c)
                texts.insert(sheet.Cells(r, c).text());
        }
        return texts;
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

TEST_F(GridBlock, ABlockOfOneTextIsMergedOverRowsAndColumns)
{
    fill({{u"甲"_s, u"甲"_s, u""_s}, {u"甲"_s, u"甲"_s, u"乙"_s}});
    GridBlockToSheet(grid, &sheet, row, {0, 1, 0, 2});
    EXPECT_EQ(mergesOf(sheet), u"5,1-6,2"_s);
}

TEST_F(GridBlock, MergesNeverGrowTogetherOverOtherTexts)
{
    // Marks that a table before left: a class over its rows, and rows that were titles.
    const QList<QStringList> tables[] = {
        {{u"1"_s, u"1"_s, u"甲"_s}, {u"1"_s, u"2"_s, u"乙"_s}, {u"1"_s, u"3"_s, u"丙"_s}},
        {{u"1"_s, u"2"_s, u"甲"_s}, {u"1"_s, u"1"_s, u"乙"_s}, {u"2"_s, u"1"_s, u"丙"_s}},
        {{u"1"_s, u"1"_s, u"1"_s}, {u"1"_s, u"1"_s, u"1"_s}, {u"1"_s, u"1"_s, u"丙"_s}},
        {{u""_s, u""_s, u"甲"_s}, {u""_s, u"2"_s, u"2"_s}, {u""_s, u"3"_s, u"2"_s}}};
    grid.setMergeCol(1, true);
    grid.setMergeRow(2, true);
    for (const QList<QStringList>& texts : tables) {
        fill(texts);
        excel::Worksheet& target = application.Workbooks().Add().Worksheets().Item(1);
        row = 1;
        GridBlockToSheet(grid, &target, row, {0, 2, 0, 2});
        for (const excel::CellRange& merge : target.merges().all())
            EXPECT_EQ(textsUnder(target, merge).size(), 1) << mergesOf(target).toStdString();
        for (int r = 0; r < 3; ++r) {
            for (int c = 0; c < 3; ++c)
                EXPECT_EQ(target.Cells(r + 1, c + 1).text(), texts[r][c]);
        }
    }
}

TEST_F(GridBlock, AMergeOfTheSheetThatReachesIntoTheBlockDoesNotGrow)
{
    sheet.Range(4, 1, 5, 1).setMergeCells(true);
    GridBlockToSheet(grid, &sheet, row, {0, 3, 0, 2});
    EXPECT_EQ(mergesOf(sheet), u"4,1-5,1 6,1-7,1 6,2-6,3"_s);
}

} // namespace
