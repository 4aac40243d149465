#include "workbooks/writers/SampleBook.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using excel::HorizontalAlignment;
using excel::LineStyle;
using excel::Worksheet;
using runtime::Value;

namespace {

void fillReport(Worksheet& sheet)
{
    sheet.setName(u"考试分析"_s);
    sheet.Cells().setHorizontalAlignment(HorizontalAlignment::Center);
    const QString rows[][3] = {{u"考试人数"_s, u"考试人数"_s, u"考试人数"_s},
                               {u"班级"_s, u"语文\n参试/缺考/总计"_s, u"数学"_s},
                               {u"1班"_s, u"52/1/53"_s, u"85.5"_s},
                               {u"2班"_s, u"0805"_s, u"-1"_s}};
    sheet.Range(1, 1, 1, 3).setMergeCells(true);
    for (int row = 1; row <= 4; ++row) {
        for (int column = 1; column <= 3; ++column)
            sheet.setCellText(row, column, rows[row - 1][column - 1]);
    }
    sheet.Range(1, 1, 4, 3).setBorders(LineStyle::Continuous);
    sheet.Range(1, 1, 1, 3).setFontBold(true);
    sheet.Range(1, 1, 1, 3).setFontSize(16);
    int column = 0;
    for (const QString& name : {u"=1+1"_s, u"+张三"_s, u"-李四"_s, u"@王五"_s})
        sheet.setCellText(6, ++column, name);
    sheet.setCell(7, 1, 89.7f);
    sheet.setCell(7, 2, QDateTime(QDate(1900, 1, 15), QTime(0, 0), Qt::UTC));
}

void fillPrint(Worksheet& sheet)
{
    sheet.setName(u"导出"_s);
    sheet.setColumnWidth(1, 35, 4);
    sheet.setColumnWidth(1, 1, 7.5);
    sheet.setColumnWidth(4, 4, 0);
    excel::PageLayout& page = sheet.PageSetup();
    page.LeftMargin = page.RightMargin = page.TopMargin = page.BottomMargin = 72 / 2.54;
    page.Orientation = excel::Orientation::Landscape;
    page.PaperSize = excel::paper::b5;
    sheet.setCellText(1, 1, u"3 班12 号：张三"_s);
    sheet.Range(1, 1, 1, 5).setMergeCells(true);
    sheet.Range(1, 1, 1, 5).setVerticalAlignment(excel::VerticalAlignment::Center);
    sheet.Range(2, 1, 2, 1).setHorizontalAlignment(HorizontalAlignment::Left);
    sheet.Range(2, 2, 2, 2).setHorizontalAlignment(HorizontalAlignment::Right);
    sheet.setCellText(2, 1, u"<&\"'>"_s);
    sheet.setCell(3, 1, QDateTime(QDate(2009, 7, 31), QTime(0, 0), Qt::UTC));
    sheet.setCell(3, 2, QDateTime(QDate(2009, 7, 31), QTime(8, 30), Qt::UTC));
    sheet.setCell(3, 3, QDateTime(QDate(1899, 12, 30), QTime(8, 30), Qt::UTC));
    sheet.setCell(3, 5, true);
    sheet.setRowHeight(2, 30);
    sheet.setRowState(4, excel::RowState::Hidden);
    sheet.addPageBreak(32);
    sheet.addPageBreak(63);
}

void addPicture(Worksheet& sheet)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"折线.png"_s));
    if (file.open(QIODevice::WriteOnly))
        file.write(samplePng());
    file.close();
    excel::Picture& picture = sheet.insertPicture(file.fileName());
    picture.setTop(sheet.geometry().rowTop(5) + 1);
}

/// A chart over whole cells with the line and the label of its average, over the last block.
void addChart(Worksheet& sheet)
{
    const QString exams[] = {u"期中"_s, u"期末<&>"_s, u"月考"_s};
    int row = 10;
    for (const QString& exam : exams) {
        sheet.setCellText(row, 1, exam);
        if (row != 11)
            sheet.setCell(row, 3, 10.0 * row);
        ++row;
    }
    excel::Chart& chart = sheet.addChart(sheet.Range(14, 1, 30, 12).place());
    chart.setSource({{10, 1, 12, 1}, {10, 3, 12, 3}});
    chart::LineChart design;
    design.title = u"张三排名分析(共300人)"_s;
    design.axis.title = u"名次"_s;
    design.axis.minimum = 1;
    design.axis.maximum = 300;
    design.axis.growth = chart::Growth::Downward;
    design.hasDataLabels = true;
    chart.setDesign(design);
    const QPointF from(chart.Left() + 3 + chart.InsideLeft(),
                       chart.Top() + 3 + chart.InsideTop() + 110.5 * chart.InsideHeight() / 300);
    const QPointF to = from + QPointF(chart.InsideWidth(), 0);
    excel::DrawnLine& line = sheet.addLine(from, to);
    line.setDashStyle(excel::DashStyle::Dash);
    line.setWeight(1);
    sheet.addLabel(QRectF(to, QSizeF(20, 12))).setText(u"平均110.5 <&>"_s);
}

/// A sheet with nothing else: lines to all four sides, and a chart without data.
void addLooseDrawings(Worksheet& sheet)
{
    const QPointF center(60, 60);
    for (const QPointF& end : {QPointF(100, 100), QPointF(20, 100), QPointF(20, 20)})
        sheet.addLine(center, end);
    sheet.addLine(center, QPointF(100, 20)).setColor(0xC00000);
    sheet.addChart(QRectF(0, 135, 540, 270));
}

} // namespace

QByteArray samplePng()
{
    return QByteArray::fromHex("89504e470d0a1a0a0000000d49484452000000020000000108020000007b40e8"
                               "dd0000000f49444154789c63f8ffffff810307001378053e6ca080b900000000"
                               "49454e44ae426082");
}

void fillSampleBook(excel::Workbook& book)
{
    for (int number = 1; number <= 3; ++number)
        book.addSheet(u"Sheet%1"_s.arg(number));
    fillReport(book.Sheets().Item(1));
    fillPrint(book.Sheets().Item(2));
    addPicture(book.Sheets().Item(2));
    addChart(book.Sheets().Item(2));
    addLooseDrawings(book.Sheets().Item(3));
    book.Sheets().Item(3).setVisibility(excel::Visibility::Hidden);
    book.Sheets().Item(2).Activate();
}
