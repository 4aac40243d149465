// The bound of bench_blocks: the same cells, merges, borders and charts by libxlsxwriter alone.

#include <cstdio>
#include <cstring>

#include <xlsxwriter.h>

#include "benchmarks/StudentBlocks.h"

namespace {

using namespace blocks;

void addChart(lxw_workbook* book, lxw_worksheet* sheet, int student, int first)
{
    lxw_chart* chart = workbook_add_chart(book, LXW_CHART_LINE);
    lxw_chart_series* series = chart_add_series(chart, nullptr, nullptr);
    const auto last = lxw_row_t(first + exams - 1);
    chart_series_set_categories(series, sheet->name, lxw_row_t(first), 0, last, 0);
    chart_series_set_values(series, sheet->name, lxw_row_t(first), rankColumn - 1, last,
                            rankColumn - 1);
    chart_series_set_marker_type(series, LXW_CHART_MARKER_DIAMOND);
    chart_series_set_labels(series);
    chart_series_set_labels_position(series, LXW_CHART_LABEL_POSITION_ABOVE);
    lxw_chart_font font = {};
    font.bold = LXW_TRUE;
    font.size = 12;
    chart_title_set_name(chart, chartTitle(student).c_str());
    chart_title_set_name_font(chart, &font);
    font.size = 15;
    chart_axis_set_name(chart->y_axis, "名次");
    chart_axis_set_name_font(chart->y_axis, &font);
    chart_axis_set_min(chart->y_axis, 1);
    chart_axis_set_max(chart->y_axis, students);
    chart_axis_set_reverse(chart->y_axis);
    lxw_chart_fill fill = {};
    fill.color = LXW_COLOR_WHITE;
    chart_plotarea_set_fill(chart, &fill);
    lxw_chart_line line = {};
    line.color = 0x808080;
    line.width = 1;
    chart_plotarea_set_line(chart, &line);
    chart_legend_set_position(chart, LXW_CHART_LEGEND_NONE);
    worksheet_insert_chart(sheet, last + 1, 0, chart);
}

void addBlock(lxw_worksheet* sheet, lxw_format* format, int student, int row)
{
    worksheet_merge_range(sheet, lxw_row_t(row), 0, lxw_row_t(row), columns - 1,
                          studentTitle(student).c_str(), nullptr);
    for (int column = 1; column <= columns; ++column)
        worksheet_write_string(sheet, lxw_row_t(row + 1), lxw_col_t(column - 1),
                               heading(column).c_str(), format);
    for (int exam = 0; exam < exams; ++exam) {
        const auto line = lxw_row_t(row + 2 + exam);
        worksheet_write_string(sheet, line, 0, examName(exam).c_str(), format);
        for (int column = 2; column <= columns; ++column)
            worksheet_write_number(sheet, line, lxw_col_t(column - 1),
                                   number(student, exam, column), format);
    }
}

} // namespace

int main(int count, char* arguments[])
{
    if (count < 2)
        return 2;
    const bool charts = count == 3 && std::strcmp(arguments[2], "charts") == 0;
    lxw_workbook* book = workbook_new(arguments[1]);
    lxw_format* format = workbook_add_format(book);
    format_set_border(format, LXW_BORDER_THIN);
    format_set_align(format, LXW_ALIGN_CENTER);
    format_set_align(format, LXW_ALIGN_VERTICAL_CENTER);
    lxw_worksheet* sheet = nullptr;
    int row = 0;
    for (int student = 0; student < students; ++student) {
        if (sheet == nullptr || (charts && student % studentsOfSheet == 0)) {
            sheet = workbook_add_worksheet(book, nullptr);
            row = 0;
        }
        addBlock(sheet, format, student, row);
        if (charts)
            addChart(book, sheet, student, row + 2);
        row += charts ? rowsOfPage : rowsOfBlock + blankRows;
    }
    return workbook_close(book) == LXW_NO_ERROR ? 0 : 1;
}
