// A workbook as the program fills it: a list of 3,000 students with 30 columns, and 40 bordered
// tables with merged titles, from the empty model to the file on the disk. The first of five times
// is what compare.py takes.

#include <cstdio>

#include <QElapsedTimer>

#include "benchmarks/Support.h"
#include "workbooks/model/Application.h"

using namespace Qt::StringLiterals;
using excel::Worksheet;

namespace {

constexpr int students = 3000;
constexpr int columns = 30;
constexpr int tables = 40;
constexpr int tableRows = 10;
constexpr int tableColumns = 6;
constexpr int rounds = 5;

void fillStudent(Worksheet& sheet, int student)
{
    const int row = student + 1;
    sheet.setCell(row, 1, u"%1班"_s.arg((student - 1) / 60 + 1));
    sheet.setCell(row, 2, u"2023%1"_s.arg(10000 + student));
    sheet.setCell(row, 3, u"学生%1"_s.arg(student));
    for (int column = 4; column <= columns; ++column)
        sheet.setCell(row, column, (student * 31 + column * 17) % 301 / 2.0);
}

void fillList(Worksheet& sheet)
{
    sheet.setName(u"成绩"_s);
    for (int column = 1; column <= columns; ++column)
        sheet.setCellText(1, column, u"列%1"_s.arg(column));
    for (int student = 1; student <= students; ++student)
        fillStudent(sheet, student);
    sheet.Range(1, 1, 1, columns).setFontBold(true);
}

/// A title over all columns, headings, and lines of numbers, in borders.
void fillTable(Worksheet& sheet, int table)
{
    const int top = table * (tableRows + 2) + 1;
    sheet.Range(top, 1, top, tableColumns).setMergeCells(true);
    sheet.setCellText(top, 1, u"统计表 %1"_s.arg(table + 1));
    for (int column = 1; column <= tableColumns; ++column)
        sheet.setCellText(top + 1, column, u"项目%1"_s.arg(column));
    for (int line = 2; line < tableRows; ++line) {
        for (int column = 1; column <= tableColumns; ++column)
            sheet.setCellText(top + line, column,
                              QString::number((table * 7 + line * 13 + column) % 200 / 2.0));
    }
    const excel::SheetRange block = sheet.Range(top, 1, top + tableRows - 1, tableColumns);
    block.setBorders(excel::LineStyle::Continuous);
    block.setHorizontalAlignment(excel::HorizontalAlignment::Center);
}

double writeOnce(const QString& path)
{
    QElapsedTimer timer;
    timer.start();
    excel::Application application;
    excel::Workbook& book = application.Workbooks().Add();
    book.Sheets().Item(3).Delete();
    fillList(book.Sheets().Item(1));
    Worksheet& report = book.Sheets().Item(2);
    report.setName(u"统计"_s);
    for (int table = 0; table < tables; ++table)
        fillTable(report, table);
    book.SaveAs(path);
    return double(timer.nsecsElapsed()) / 1e6;
}

bool isComplete(const QString& path)
{
    excel::Application application;
    const excel::Workbook::SheetList sheets = application.Workbooks().Open(path).Sheets();
    const Worksheet& list = sheets.Item(1);
    const int lastRow = students + 1;
    return list.lastUsedRow() == lastRow && list.Cells(lastRow, columns).isNumber()
           && sheets.Item(2).merges().all().size() == tables;
}

} // namespace

int main(int count, char* arguments[])
{
    if (count != 2) {
        std::fprintf(stderr, "usage: bench_writer WORKBOOK.xlsx\n");
        return 2;
    }
    const QString path = QString::fromLocal8Bit(arguments[1]);
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round)
        times.push_back(writeOnce(path));
    if (!isComplete(path)) {
        std::fprintf(stderr, "cells are missing\n");
        return 2;
    }
    std::printf("%-60s %.1f ms (first=%.1f peak_mb=%.1f)\n", "writing a workbook",
                benchmark::median(times), times.front(), benchmark::peakMemory());
    return 0;
}
