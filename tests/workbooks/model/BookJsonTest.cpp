#include "workbooks/model/BookJson.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonObject>

#include "support/PrintQString.h"
#include "workbooks/model/Application.h"

using namespace Qt::StringLiterals;

TEST(BookJson, NamesTheSheetsInTheirOrderAndHoldsWhatEachShows)
{
    excel::Application application;
    excel::Workbook& book = application.Workbooks().Add();
    excel::Worksheet& sheet = book.Worksheets().Item(2);
    sheet.setName(u"文科"_s);
    sheet.setCell(2, 3, u"语文"_s);
    sheet.Range(1, 1, 1, 3).setMergeCells(true);
    sheet.Range(4, 1, 5, 2).setBorders(excel::LineStyle::Continuous);
    book.Worksheets().Item(3).Range(1, 1, 1, 1).setBorders(excel::LineStyle::Continuous);
    const QJsonObject json = excel::bookJson(book);
    EXPECT_EQ(json[u"sheets"_s], (QJsonArray{u"Sheet1"_s, u"文科"_s, u"Sheet3"_s}));
    const QJsonObject content = json[u"content"_s].toObject();
    EXPECT_EQ(content.keys(), (QStringList{u"Sheet1"_s, u"Sheet3"_s, u"文科"_s}));
    EXPECT_EQ(content[u"Sheet3"_s].toObject()[u"borders"_s], (QJsonArray{QJsonArray{1, 1, 1, 1}}));
    const QJsonObject shown = content[u"文科"_s].toObject();
    EXPECT_EQ(shown[u"cells"_s], (QJsonObject{{u"2,3"_s, u"语文"_s}}));
    EXPECT_EQ(shown[u"merges"_s], (QJsonArray{QJsonArray{1, 1, 1, 3}}));
    EXPECT_EQ(shown[u"borders"_s], (QJsonArray{QJsonArray{4, 1, 5, 2}}));
}

TEST(BookJson, TellsPagesAndDrawingsWhereTheyAreWanted)
{
    excel::Application application;
    excel::Workbook& book = application.Workbooks().Add();
    excel::Worksheet& sheet = book.Worksheets().Item(1);
    sheet.setColumnWidth(2, 3, 4);
    sheet.setColumnWidth(3, 3, 7.5);
    sheet.addPageBreak(31);
    excel::PageLayout& page = sheet.PageSetup();
    page = {1, 2, 3, 4, excel::Orientation::Landscape, 13};
    const QJsonObject json =
        excel::bookJson(book, excel::BookDetail::CellsPagesAndDrawings)[u"content"_s].toObject();
    const QJsonObject shown = json[u"Sheet1"_s].toObject();
    EXPECT_EQ(shown.keys(), (QStringList{u"borders"_s, u"breaks"_s, u"cells"_s, u"charts"_s,
                                         u"merges"_s, u"page"_s, u"shapes"_s, u"widths"_s}));
    EXPECT_EQ(shown[u"widths"_s], (QJsonObject{{u"2"_s, 4}, {u"3"_s, 7.5}}));
    EXPECT_EQ(shown[u"breaks"_s], QJsonArray{31});
    EXPECT_EQ(shown[u"page"_s], (QJsonObject{{u"orientation"_s, 2},
                                             {u"paper"_s, 13},
                                             {u"margins"_s, QJsonArray{1, 2, 3, 4}}}));
    EXPECT_EQ(json[u"Sheet2"_s].toObject()[u"widths"_s], QJsonObject());
    EXPECT_EQ(excel::bookJson(book)[u"content"_s].toObject()[u"Sheet1"_s].toObject().keys(),
              (QStringList{u"borders"_s, u"cells"_s, u"merges"_s}));
}

TEST(BookJson, TellsAChartByItsCellsAndItsPlaces)
{
    excel::Workbook book;
    excel::Worksheet& sheet = book.addSheet(u"一"_s);
    excel::Chart& chart = sheet.addChart(sheet.Range(4, 2, 30, 12).place());
    chart::LineChart design;
    design.title = u"甲"_s;
    design.axis.title = u"名次"_s;
    design.axis.growth = chart::Growth::Downward;
    design.axis.minimum = 1;
    design.hasDataLabels = true;
    chart.setDesign(design);
    chart.setSource({{2, 1, 3, 1}, {2, 5, 3, 5}});
    const QJsonObject json =
        excel::bookJson(book, excel::BookDetail::CellsPagesAndDrawings)[u"content"_s].toObject();
    const QJsonObject inside{{u"left"_s, chart.InsideLeft()},
                             {u"top"_s, chart.InsideTop()},
                             {u"width"_s, chart.InsideWidth()},
                             {u"height"_s, chart.InsideHeight()}};
    const QJsonObject told{{u"frame"_s, QJsonArray{4, 2, 30, 12}},
                           {u"left"_s, chart.Left()},
                           {u"top"_s, 3 * excel::SheetGeometry::standardRowHeight},
                           {u"title"_s, u"甲"_s},
                           {u"valueTitle"_s, u"名次"_s},
                           {u"reversed"_s, true},
                           {u"min"_s, 1},
                           {u"max"_s, QJsonValue()},
                           {u"dataLabels"_s, true},
                           {u"categories"_s, QJsonArray{QJsonArray{2, 1}, QJsonArray{3, 1}}},
                           {u"values"_s, QJsonArray{QJsonArray{2, 5}, QJsonArray{3, 5}}},
                           {u"inside"_s, inside}};
    EXPECT_EQ(json[u"一"_s].toObject()[u"charts"_s], QJsonArray{told});
}

TEST(BookJson, TellsLinesAndLabelsInTheirOrder)
{
    excel::Workbook book;
    excel::Worksheet& sheet = book.addSheet(u"一"_s);
    sheet.addLabel({5, 6, 20, 12}).setText(u"平均1.5"_s);
    excel::DrawnLine& line = sheet.addLine({10, 20}, {30, 5});
    line.setDashStyle(excel::DashStyle::Dash);
    line.setWeight(1);
    const QJsonObject json =
        excel::bookJson(book, excel::BookDetail::CellsPagesAndDrawings)[u"content"_s].toObject();
    const QJsonObject label{
        {u"kind"_s, u"label"_s},  {u"x"_s, 5}, {u"y"_s, 6}, {u"w"_s, 20}, {u"h"_s, 12},
        {u"text"_s, u"平均1.5"_s}};
    const QJsonObject drawn{{u"kind"_s, u"line"_s}, {u"x1"_s, 10},  {u"y1"_s, 20},   {u"x2"_s, 30},
                            {u"y2"_s, 5},           {u"dash"_s, 4}, {u"weight"_s, 1}};
    EXPECT_EQ(json[u"一"_s].toObject()[u"shapes"_s], (QJsonArray{label, drawn}));
}
