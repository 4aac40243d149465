#include "workbench/ExamByExam.h"

#include <gtest/gtest.h>

#include "platform/grid/GridText.h"
#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;
using grid::FlexGrid;

/// A table as wide as the exam's name is long.
void report(const QString& exam, FlexGrid& table)
{
    table.setRows(2);
    table.setCols(int(exam.size()));
    table.MergeCells = 2;
    table.setMergeRow(0, true);
    table.setMergeCol(0, true);
    table.setRowHeight(1, 700);
    table.setColWidth(-1, 750);
    table.setColWidth(0, 1100);
    table.setColAlignment(-1, 4);
    for (int col = 0; col < table.Cols(); ++col)
        table.setTextMatrix(0, col, u"题"_s);
    table.setTextMatrix(1, 0, u"1班"_s);
}

TEST(ExamByExam, TablesFollowOneAnotherBelowTheNamesOfTheirExams)
{
    FlexGrid grid;
    grid.setTextMatrix(1, 1, u"早先"_s);
    grid.setMergeRow(1, true);
    workbench::reportExamByExam({u"期中"_s, u"高一期末"_s}, report, grid);
    EXPECT_EQ(grid::gridText(grid), u"期中\t期中\t期中\t期中\n题\t题\t\t\n1班\t\t\t\n"
                                    "高一期末\t高一期末\t高一期末\t高一期末\n"
                                    "题\t题\t题\t题\n1班\t\t\t\n"_s);
    EXPECT_EQ(grid.mergeRows(), (std::set<int>{0, 1, 3, 4}));
    EXPECT_EQ(grid.mergeCols(), std::set<int>{0});
    EXPECT_EQ(grid.RowHeight(2), 700);
    EXPECT_EQ(grid.RowHeight(5), 700);
    EXPECT_EQ(grid.RowHeight(1), FlexGrid::DefaultRowHeight);
    EXPECT_EQ(grid.colWidths(), (std::map<int, int>{{-1, 750}, {0, 1100}}));
    EXPECT_EQ(grid.ColAlignment(3), 4);
    EXPECT_EQ(grid.FixedRows, 0);
    EXPECT_EQ(grid.MergeCells, 2);
}

TEST(ExamByExam, WithoutAnExamTheGridIsEmpty)
{
    FlexGrid grid;
    workbench::reportExamByExam({}, report, grid);
    EXPECT_EQ(grid.Rows(), 0);
}

} // namespace
