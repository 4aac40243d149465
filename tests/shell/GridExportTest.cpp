#include "shell/GridExport.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/ScriptedDialogs.h"
#include "workbooks/MergesOf.h"

namespace {

using namespace Qt::StringLiterals;

/// A grid with a title over all columns and a class over two rows.
class GridToWorkbook : public testing::Test
{
protected:
    GridToWorkbook()
    {
        grid.setRows(4);
        grid.setCols(3);
        const QList<QStringList> rows{{u"考试人数"_s, u"考试人数"_s, u"考试人数"_s},
                                      {u"班级"_s, u"语文"_s, u"数学"_s},
                                      {u"1班"_s, u"52/1/53"_s, u"66.6"_s},
                                      {u"1班"_s, u"52"_s, u"=1+1"_s}};
        for (int row = 0; row < rows.size(); ++row) {
            for (int col = 0; col < rows[row].size(); ++col)
                grid.setTextMatrix(row, col, rows[row][col]);
        }
        grid.setMergeRow(0, true);
        grid.setMergeCol(0, true);
    }

    excel::Worksheet& sheet() { return application.Workbooks().Item(1).Worksheets().Item(1); }

    grid::FlexGrid grid;
    excel::Application application;
    support::ScriptedDialogs dialogs;
};

TEST_F(GridToWorkbook, FillsTheFirstSheetOfANewWorkbookThatIsShown)
{
    shell::copyGridToWorkbook(grid, application);
    ASSERT_EQ(application.Workbooks().Count(), 1);
    EXPECT_TRUE(application.Visible());
    EXPECT_FALSE(application.Workbooks().Item(1).Saved());
    EXPECT_EQ(sheet().Cells(1, 1).text(), u"考试人数"_s);
    EXPECT_EQ(sheet().Cells(3, 2).text(), u"52/1/53"_s);
    EXPECT_EQ(sheet().Cells(3, 3), runtime::Value(66.6));
    EXPECT_EQ(sheet().lastUsedRow(), 4);
    EXPECT_EQ(sheet().lastUsedColumn(), 3);
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(GridToWorkbook, ATextThatLooksLikeAFormulaStaysAText)
{
    shell::copyGridToWorkbook(grid, application);
    EXPECT_EQ(sheet().Cells(4, 3), runtime::Value(u"=1+1"_s));
}

TEST_F(GridToWorkbook, MergesWhatTheGridMerges)
{
    shell::copyGridToWorkbook(grid, application);
    EXPECT_EQ(mergesOf(sheet()), u"1,1-1,3 3,1-4,1"_s);
}

TEST_F(GridToWorkbook, CentresTheSheetAndRulesTheBlock)
{
    shell::copyGridToWorkbook(grid, application);
    for (const auto& [row, column] : {std::pair{1, 1}, {4, 3}, {40, 9}}) {
        EXPECT_EQ(sheet().format(row, column).horizontalAlignment,
                  excel::HorizontalAlignment::Center);
    }
    const auto ruled = excel::LineStyle::Continuous;
    EXPECT_EQ(sheet().format(1, 1).borders, (excel::CellBorders{ruled, ruled, ruled, ruled}));
    EXPECT_EQ(sheet().format(4, 3).borders, (excel::CellBorders{ruled, ruled, ruled, ruled}));
    EXPECT_EQ(sheet().format(5, 1).borders, excel::CellBorders());
    EXPECT_EQ(sheet().format(1, 4).borders, excel::CellBorders());
}

TEST_F(GridToWorkbook, EveryCopyHasAWorkbookOfItsOwn)
{
    shell::copyGridToWorkbook(grid, application);
    shell::copyGridToWorkbook(grid, application);
    EXPECT_EQ(application.Workbooks().Count(), 2);
}

TEST_F(GridToWorkbook, AnEmptyGridGivesAnEmptyWorkbook)
{
    grid.setRows(0);
    shell::copyGridToWorkbook(grid, application);
    EXPECT_EQ(application.Workbooks().Count(), 1);
    EXPECT_EQ(sheet().lastUsedRow(), 1);
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(GridToWorkbook, ASpreadsheetThatIsGoneIsTold)
{
    application.Quit();
    shell::copyGridToWorkbook(grid, application);
    ASSERT_EQ(dialogs.failures.size(), 1);
    EXPECT_TRUE(dialogs.failures[0].endsWith(u" - Private Sub mMfgToXls_Click/FormMain"_s))
        << dialogs.failures[0].toStdString();
}

} // namespace
