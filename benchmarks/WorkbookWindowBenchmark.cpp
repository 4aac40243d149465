// The window on a sheet of 3,000 students with a chart, a line and a label each: opening it, the
// frames of paging through it, and its pages as a PDF. Exit code 1 if a goal is missed.

#include <cstdio>

#include <QApplication>
#include <QBuffer>
#include <QElapsedTimer>
#include <QPainter>
#include <QPdfWriter>
#include <QScrollBar>

#include "benchmarks/Support.h"
#include "platform/chart/ChartLayout.h"
#include "workbooks/model/Application.h"
#include "workbooks/model/Points.h"
#include "workbooks/ui/SheetPages.h"
#include "workbooks/ui/WorkbookWindow.h"
#include "workbooks/ui/WorksheetView.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int Students = 3000;
constexpr int Exams = 6;
constexpr int Columns = 12;
constexpr int RowsOfPage = 31;
constexpr int Turns = 200;
constexpr int PrintedPages = 100;
constexpr double OpenGoalMs = 1000;
constexpr double TurnGoalMs = 50;

int report(const char* what, double found, double goal)
{
    std::printf("%-66s %.1f ms (goal %.0f ms)\n", what, found, goal);
    return found <= goal ? 0 : 1;
}

void addChart(excel::Worksheet& sheet, int first, int last)
{
    excel::Chart& chart =
        sheet.addChart(sheet.Range(last + 1, 1, first - 2 + RowsOfPage, Columns).place());
    chart::LineChart design;
    design.title = u"学生排名分析(共3000人)"_s;
    design.axis = {u"名次"_s, 15, 1, Students, chart::Growth::Downward};
    design.hasDataLabels = true;
    chart.setDesign(design);
    chart.setSource({{first, 1, last, 1}, {first, 3, last, 3}});
    const double x = chart.Left() + chart::areaOffset + chart.InsideLeft();
    const double y = chart.Top() + chart::areaOffset + chart.InsideTop() + 50;
    sheet.addLine({x, y}, {x + chart.InsideWidth(), y}).setDashStyle(excel::DashStyle::Dash);
    sheet.addLabel({x + chart.InsideWidth(), y, 20, 12}).setText(u"平均700.5"_s);
}

void addStudent(excel::Worksheet& sheet, int student)
{
    const int top = 1 + student * RowsOfPage;
    sheet.setCell(top, 1, u"%1 班%2 号：学生"_s.arg(student / 60 + 1).arg(student % 60 + 1));
    sheet.Range(top, 1, top, Columns).setMergeCells(true);
    for (int exam = 0; exam < Exams; ++exam) {
        sheet.setCell(top + 1 + exam, 1, u"第%1次考试"_s.arg(exam + 1));
        for (int column = 2; column <= Columns; ++column)
            sheet.setCell(top + 1 + exam, column, (student * 7 + exam * 331 + column) % Students);
    }
    sheet.Range(top + 1, 1, top + Exams, Columns).setBorders(excel::LineStyle::Continuous);
    addChart(sheet, top + 1, top + Exams);
    if (student < excel::Worksheet::mostPageBreaks)
        sheet.addPageBreak(top + RowsOfPage);
}

int window(excel::Workbook& book)
{
    QElapsedTimer timer;
    timer.start();
    excel::WorkbookWindow window(book, u"工作簿1"_s);
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    window.resize(1200, 760);
    window.show();
    QApplication::processEvents();
    window.grab();
    const int opened = report("open the window", benchmark::milliseconds(timer), OpenGoalMs);
    auto* view = window.findChild<excel::WorksheetView*>();
    std::vector<double> times;
    for (int turn = 0; turn < Turns; ++turn) {
        timer.start();
        view->verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
        if (turn == Turns / 2)
            view->verticalScrollBar()->setValue(view->verticalScrollBar()->maximum() / 2);
        view->viewport()->repaint();
        times.push_back(benchmark::milliseconds(timer));
    }
    const double worst = *std::max_element(times.begin(), times.end());
    std::printf("%-66s %.1f ms\n", "turn a page, median", benchmark::median(times));
    return opened | report("turn a page, worst", worst, TurnGoalMs);
}

void pages(const excel::Worksheet& sheet)
{
    QElapsedTimer timer;
    timer.start();
    const QPageLayout layout = excel::pageLayoutOf(sheet);
    excel::SheetPages pages(sheet, layout.paintRect(QPageLayout::Point).size());
    std::printf("%-66s %.1f ms, %d pages\n", "find the pages", benchmark::milliseconds(timer),
                pages.count());
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    QPdfWriter writer(&file);
    writer.setPageLayout(layout);
    QPainter painter(&writer);
    timer.start();
    for (int page = 0; page < PrintedPages; ++page) {
        if (page > 0)
            writer.newPage();
        pages.paint(painter, page, writer.logicalDpiX() / excel::pointsPerInch);
    }
    painter.end();
    std::printf("%-66s %.1f ms\n", "a page of a PDF",
                benchmark::milliseconds(timer) / PrintedPages);
}

} // namespace

int main(int count, char* arguments[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, arguments);
    benchmark::PrintedDialogs dialogs;
    excel::Application excelApplication;
    excel::Workbook& book = excelApplication.Workbooks().Add();
    excel::Worksheet& sheet = book.Worksheets().Item(1);
    sheet.setColumnWidth(1, 35, 4);
    sheet.setColumnWidth(1, 1, 7.5);
    sheet.PageSetup() = {.Orientation = excel::Orientation::Landscape};
    for (int student = 0; student < Students; ++student)
        addStudent(sheet, student);
    const int missed = window(book);
    pages(sheet);
    return missed;
}
