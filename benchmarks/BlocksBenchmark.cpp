// A workbook as the score export of 3,000 students fills it, each with six exams in ten columns,
// and with a chart, a line and a label on a page of his own if "charts" is asked for: from the
// empty model to the file on the disk. bare_blocks does only the same work of libxlsxwriter.

#include <cstdio>
#include <cstring>

#include <QElapsedTimer>

#include "benchmarks/StudentBlocks.h"
#include "benchmarks/Support.h"
#include "platform/chart/ChartLayout.h"
#include "workbooks/model/Application.h"

using namespace Qt::StringLiterals;
using namespace blocks;
using excel::Worksheet;

namespace {

enum class Content { Cells, Charts };

QString text(const std::string& utf8)
{
    return QString::fromStdString(utf8);
}

void addChart(Worksheet& sheet, int student, int first)
{
    const int last = first + exams - 1;
    const int pageEnd = first - 2 + rowsOfPage - 2;
    excel::Chart& chart = sheet.addChart(sheet.Range(last + 2, 1, pageEnd, chartColumns).place());
    chart::LineChart design;
    design.title = text(chartTitle(student));
    design.axis = {u"名次"_s, 15, 1, students, chart::Growth::Downward};
    design.hasDataLabels = true;
    chart.setDesign(design);
    chart.setSource({{first, 1, last, 1}, {first, rankColumn, last, rankColumn}});
    const QPointF begin(chart.Left() + chart::areaOffset + chart.InsideLeft(),
                        chart.Top() + chart::areaOffset + chart.InsideTop() + 50);
    const QPointF end = begin + QPointF(chart.InsideWidth(), 0);
    sheet.addLine(begin, end).setDashStyle(excel::DashStyle::Dash);
    sheet.addLabel(QRectF(end, QSizeF(20, 12))).setText(u"平均700.5"_s);
}

void addBlock(Worksheet& sheet, int student, int row)
{
    sheet.setCell(row, 1, text(studentTitle(student)));
    sheet.Range(row, 1, row, columns).setMergeCells(true);
    for (int column = 1; column <= columns; ++column)
        sheet.setCell(row + 1, column, text(heading(column)));
    for (int exam = 0; exam < exams; ++exam) {
        const int line = row + 2 + exam;
        sheet.setCell(line, 1, text(examName(exam)));
        for (int column = 2; column <= columns; ++column)
            sheet.setCell(line, column, number(student, exam, column));
    }
    sheet.Range(row + 1, 1, row + 1 + exams, columns).setBorders(excel::LineStyle::Continuous);
}

Worksheet& newSheet(excel::Workbook& book, int number)
{
    Worksheet& sheet = book.addSheet(u"导出%1"_s.arg(number));
    sheet.setColumnWidth(1, 35, 4);
    sheet.setColumnWidth(1, 1, 7.5);
    sheet.Cells().setHorizontalAlignment(excel::HorizontalAlignment::Center);
    sheet.Cells().setVerticalAlignment(excel::VerticalAlignment::Center);
    return sheet;
}

void fill(excel::Workbook& book, Content content)
{
    Worksheet* sheet = nullptr;
    int row = 1;
    for (int student = 0; student < students; ++student) {
        const bool isNext = content == Content::Charts && student % studentsOfSheet == 0;
        if (sheet == nullptr || isNext) {
            sheet = &newSheet(book, student / studentsOfSheet + 1);
            row = 1;
        }
        addBlock(*sheet, student, row);
        if (content == Content::Charts) {
            addChart(*sheet, student, row + 2);
            sheet->addPageBreak(row + rowsOfPage - 1);
        }
        row += content == Content::Charts ? rowsOfPage : rowsOfBlock + blankRows;
    }
}

} // namespace

int main(int count, char* arguments[])
{
    if (count < 2) {
        std::fprintf(stderr, "usage: bench_blocks WORKBOOK.xlsx [charts]\n");
        return 2;
    }
    const bool charts = count == 3 && std::strcmp(arguments[2], "charts") == 0;
    QElapsedTimer timer;
    timer.start();
    excel::Workbook book;
    fill(book, charts ? Content::Charts : Content::Cells);
    const double filled = double(timer.nsecsElapsed()) / 1e6;
    timer.start();
    book.SaveAs(QString::fromLocal8Bit(arguments[1]));
    const double saved = double(timer.nsecsElapsed()) / 1e6;
    std::printf("%-60s filled=%.1f ms saved=%.1f ms peak_mb=%.1f\n",
                charts ? "3,000 blocks with charts" : "3,000 blocks", filled, saved,
                benchmark::peakMemory());
    return 0;
}
