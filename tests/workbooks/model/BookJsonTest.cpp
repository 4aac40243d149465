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
