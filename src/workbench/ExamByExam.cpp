#include "workbench/ExamByExam.h"

namespace workbench {

using grid::FlexGrid;

namespace {

void copyTable(const FlexGrid& table, FlexGrid& grid, int top)
{
    for (int row = 0; row < table.Rows(); ++row) {
        for (int col = 0; col < table.Cols(); ++col)
            grid.setTextMatrix(top + row, col, table.TextMatrix(row, col));
        grid.setRowData(top + row, table.RowData(row));
        if (table.RowHeight(row) != FlexGrid::DefaultRowHeight)
            grid.setRowHeight(top + row, table.RowHeight(row));
    }
    for (const int row : table.mergeRows())
        grid.setMergeRow(top + row, true);
}

/// What holds for columns of all tables: the latest one says.
void copyColumns(const FlexGrid& table, FlexGrid& grid)
{
    for (const int col : table.mergeCols())
        grid.setMergeCol(col, true);
    for (const auto& [col, width] : table.colWidths())
        grid.setColWidth(col, width);
    for (int col = 0; col < table.Cols(); ++col)
        grid.setColAlignment(col, table.ColAlignment(col));
    grid.MergeCells = table.MergeCells;
    grid.WordWrap = grid.WordWrap || table.WordWrap;
}

void writeName(const QString& exam, FlexGrid& grid, int row)
{
    for (int col = 0; col < grid.Cols(); ++col)
        grid.setTextMatrix(row, col, exam);
    grid.setMergeRow(row, true);
}

} // namespace

void reportExamByExam(const QStringList& exams, const ExamReport& report, FlexGrid& grid)
{
    grid.setRows(0);
    grid.setCols(0);
    // Tables that follow one another have no heading that could stay in place.
    grid.FixedRows = 0;
    std::vector<int> tops;
    for (const QString& exam : exams) {
        FlexGrid table;
        table.FontSize = grid.FontSize;
        report(exam, table);
        tops.push_back(grid.Rows());
        grid.setCols(std::max(grid.Cols(), table.Cols()));
        grid.setRows(grid.Rows() + 1 + table.Rows());
        copyTable(table, grid, tops.back() + 1);
        copyColumns(table, grid);
    }
    for (qsizetype i = 0; i < exams.size(); ++i)
        writeName(exams[i], grid, tops[size_t(i)]);
}

} // namespace workbench
