#include "import/preview/PreviewTable.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "import/preview/PreviewJson.h"
#include "platform/grid/GridText.h"
#include "platform/runtime/Error.h"
#include "support/FileBytes.h"
#include "support/PrintQString.h"
#include "workbooks/model/Application.h"

namespace {

using namespace Qt::StringLiterals;
using importing::Preview;
using importing::PreviewKind;
using importing::PreviewTable;

/// Two new students, a name with a line break, and a changed score.
Preview example()
{
    Preview preview;
    preview.title = u"考试“期中”"_s;
    preview.warning = u"已经有了！"_s;
    preview.notes = QStringList{u"满分 150。"_s};
    preview.rows = 3;
    preview.matched = 1;
    preview.add(
        {PreviewKind::Changed, 4, u"1"_s, u"1"_s, u"王芳"_s, u"语文"_s, u"9.5"_s, u"缺考"_s, {}});
    preview.add(
        {PreviewKind::NewStudent, 3, u"2"_s, u"10"_s, u"李\n强"_s, {}, {}, {}, u"会添加。"_s});
    preview.add(
        {PreviewKind::NewStudent, 2, u"10"_s, u"2"_s, u"赵六"_s, {}, {}, {}, u"会添加。"_s});
    preview.add({PreviewKind::Missing, 0, {}, {}, u"007"_s, {}, u"100"_s, {}, {}});
    return preview;
}

QString rows(const PreviewTable& table)
{
    return grid::gridText(table.grid).section(u'\n', 1);
}

const QString newRows = u"新学生\t3\t2\t10\t李⏎强\t\t\t\t会添加。\n"
                        "新学生\t2\t10\t2\t赵六\t\t\t\t会添加。\n"_s;
const QString changedRow = u"改动的成绩\t4\t1\t1\t王芳\t语文\t9.5\t缺考\t\n"_s;
const QString missingRow = u"不在表中\t\t\t\t007\t\t100\t\t\n"_s;

TEST(PreviewTable, ShowsAllEntriesByKindOrThoseOfOne)
{
    PreviewTable table(example());
    EXPECT_EQ(grid::gridText(table.grid).section(u'\n', 0, 0),
              u"类别\t行\t班级\t学号\t姓名\t项目\t原来\t导入后\t说明"_s);
    EXPECT_EQ(rows(table), newRows + changedRow + missingRow);
    table.show(PreviewKind::Changed);
    EXPECT_EQ(rows(table), changedRow);
    table.show(PreviewKind::Twice);
    EXPECT_EQ(rows(table), QString());
}

TEST(PreviewTable, SortsNumbersAsNumbersAndLeavesEmptyCellsLast)
{
    PreviewTable table(example());
    const auto column = [&](int col) {
        QStringList texts;
        for (int row = 1; row < table.grid.Rows(); ++row)
            texts.append(table.grid.TextMatrix(row, col));
        return texts.join(u' ');
    };
    table.sort(2);
    EXPECT_EQ(column(2), u"1 2 10 "_s);
    EXPECT_EQ(table.grid.TextMatrix(0, 2), u"班级 ▲"_s);
    table.sort(2);
    EXPECT_EQ(column(2), u"10 2 1 "_s);
    EXPECT_EQ(table.grid.TextMatrix(0, 2), u"班级 ▼"_s);
    table.sort(6);
    EXPECT_EQ(column(6), u"9.5 100  "_s);
    EXPECT_EQ(table.grid.TextMatrix(0, 2), u"班级"_s);
    table.show(PreviewKind::NewStudent);
    EXPECT_EQ(column(6), u" "_s) << "a filter keeps the order";
    table.sort(0);
    table.show({});
    EXPECT_EQ(column(0), u"新学生 新学生 改动的成绩 不在表中"_s);
}

TEST(PreviewTable, CutsWhatIsLongAndKeepsTheWholeOfIt)
{
    Preview preview;
    preview.add({PreviewKind::NewStudent, 2, {}, {}, QString(10'000, u'长'), {}, {}, {}, {}});
    const PreviewTable table(preview);
    EXPECT_EQ(table.grid.TextMatrix(1, 4), QString(200, u'长') + u'…');
    EXPECT_EQ(table.shown()[0]->name.size(), 10'000);
}

TEST(PreviewTable, KeepsTheWidthsThatWereDragged)
{
    PreviewTable table(example());
    table.grid.setColWidth(4, 4321);
    table.sort(1);
    EXPECT_EQ(table.grid.ColWidth(4), 4321);
}

TEST(PreviewTable, IsSavedAsAWorkbookAsItIsShown)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"预览.xlsx"_s);
    PreviewTable table(example());
    table.sort(2);
    table.save(path);
    excel::Application application;
    const excel::Worksheet& sheet = application.Workbooks().Open(path).Worksheets().Item(1);
    EXPECT_EQ(sheet.Cells(1, 1).text(), u"考试“期中”"_s);
    EXPECT_EQ(sheet.Cells(2, 1).text(), u"已经有了！"_s);
    EXPECT_EQ(sheet.Cells(3, 1).text(),
              u"表中 3 行：与成绩库一致 1 人，新学生 2 人，改动的成绩 1 处，不在表中 1 人。"_s);
    EXPECT_EQ(sheet.Cells(4, 1).text(), u"满分 150。"_s);
    EXPECT_EQ(sheet.Cells(6, 1).text(), u"类别"_s);
    EXPECT_EQ(sheet.Cells(7, 3), runtime::Value(1.0)) << "a number";
    EXPECT_EQ(sheet.Cells(8, 5).text(), u"李\n强"_s);
    EXPECT_EQ(sheet.Cells(10, 5), runtime::Value(u"007"_s)) << "a name";
    EXPECT_THROW(table.save(folder.filePath(u"没有/预览.xlsx"_s)), runtime::Error);
}

TEST(PreviewTable, WhatOnlyLooksLikeANumberIsSavedAsTheTextThatItIs)
{
    Preview preview;
    const QStringList texts{u"007"_s, u"nan"_s, u"inf"_s, u"123456789012345678"_s, u"1e3"_s};
    for (const QString& text : texts)
        preview.add({PreviewKind::TextCell, 2, text, text, {}, {}, text, text, {}});
    preview.add({PreviewKind::OtherName, 3, u"1"_s, {}, {}, {}, u"12"_s, u"13"_s, {}});
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"预览.xlsx"_s);
    PreviewTable(preview).save(path);
    excel::Application application;
    const excel::Worksheet& sheet = application.Workbooks().Open(path).Worksheets().Item(1);
    constexpr int first = 5;
    EXPECT_EQ(sheet.Cells(first, 3), runtime::Value(1.0));
    EXPECT_EQ(sheet.Cells(first, 7), runtime::Value(u"12"_s)) << "a name";
    EXPECT_EQ(sheet.Cells(first, 8), runtime::Value(u"13"_s));
    int row = first;
    for (const QString& text : texts) {
        ++row;
        for (const int column : {3, 4, 7, 8})
            EXPECT_EQ(sheet.Cells(row, column), runtime::Value(text)) << row << ',' << column;
    }
}

TEST(PreviewTable, SortsWhatIsNoNumberAsText)
{
    Preview preview;
    for (const QString& text : {u"nan"_s, u"9"_s, u"nan"_s, u"10"_s, u"abc"_s})
        preview.add({PreviewKind::TextCell, 2, {}, {}, {}, {}, text, {}, {}});
    PreviewTable table(preview);
    table.sort(6);
    QStringList sorted;
    for (int row = 1; row < table.grid.Rows(); ++row)
        sorted.append(table.grid.TextMatrix(row, 6));
    EXPECT_EQ(sorted, (QStringList{u"9"_s, u"10"_s, u"abc"_s, u"nan"_s, u"nan"_s}));
}

TEST(PreviewTable, ListsNoMoreThanAWorkbookHolds)
{
    Preview preview;
    for (int row = 1; row <= Preview::MostListed + 5; ++row)
        preview.add({PreviewKind::BadCell, row, {}, {}, {}, {}, {}, {}, {}});
    EXPECT_EQ(preview.count(PreviewKind::BadCell), Preview::MostListed + 5);
    EXPECT_EQ(int(preview.entries(PreviewKind::BadCell).size()), Preview::MostListed);
}

TEST(PreviewJson, HoldsCountsAndEntriesAsTheyAre)
{
    const QJsonObject object = QJsonDocument::fromJson(previewJson(example())).object();
    EXPECT_EQ(object.keys(),
              (QStringList{u"Counts"_s, u"Entries"_s, u"Notes"_s, u"Title"_s, u"Warning"_s}));
    const QJsonObject counts = object.value(u"Counts"_s).toObject();
    EXPECT_EQ(counts.value(u"Rows"_s), 3);
    EXPECT_EQ(counts.value(u"NewStudent"_s), 2);
    EXPECT_EQ(counts.value(u"Twice"_s), 0);
    const QJsonObject entry = object.value(u"Entries"_s).toArray().at(0).toObject();
    EXPECT_EQ(entry.value(u"Kind"_s), u"NewStudent"_s);
    EXPECT_EQ(entry.value(u"Name"_s), u"李\n强"_s);
    EXPECT_EQ(entry.value(u"Row"_s), 3);
}

} // namespace
