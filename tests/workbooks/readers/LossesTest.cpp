#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "workbooks/BookFiles.h"

using namespace Qt::StringLiterals;

namespace {

QStringList lossesOf(const BookFolder::Parts& parts)
{
    return excel::readWorkbook(BookFolder().writeZip(u"a.xlsx"_s, parts))->notKept();
}

/// Of a sheet with this beside its cells.
QStringList lossesOfSheet(const QByteArray& xml)
{
    return lossesOf(BookFolder::partsWith("<worksheet><sheetData/>" + xml + "</worksheet>"));
}

QStringList lossesOfXls(const XlsRecords& globals, const XlsRecords& cells)
{
    const BookFolder folder;
    return excel::readWorkbook(folder.write(u"a.xls"_s, XlsRecords::book(0x600, globals, cells)))
        ->notKept();
}

/// The OBJ record of a shape of that kind.
QByteArray objectOf(int kind)
{
    return u16(0x15) + u16(0x12) + u16(kind) + QByteArray(14, '\0');
}

/// An XF record with a font and a border.
QByteArray styleOf(int font, int border, int flags)
{
    return u16(font) + u16(0) + u16(flags) + u8(0x20) + QByteArray(3, '\0') + u16(border)
           + QByteArray(8, '\0');
}

} // namespace

TEST(Losses, WhatASheetOfAFileHasBesideItsCellsIsTold)
{
    const std::pair<QByteArray, QStringList> cases[] = {
        {"", {}},
        {"<drawing id='r1'/>", {u"图片、图表和图形"_s}},
        {"<controls/>", {u"图片、图表和图形"_s}},
        {"<conditionalFormatting sqref='A1'/>", {u"条件格式"_s}},
        {"<dataValidations><dataValidation/></dataValidations>", {u"数据有效性"_s}},
        {"<hyperlinks><hyperlink ref='A1'/></hyperlinks>", {u"超链接"_s}},
        {"<sheetViews><sheetView><pane state='frozen'/></sheetView></sheetViews>",
         {u"冻结的窗格"_s}},
        {"<sheetViews><sheetView><pane state='split'/></sheetView></sheetViews>", {}},
        {"<pageMargins/>", {}},
        {"<pageSetup paperSize='13'/>", {u"页面设置和分页"_s}},
        {"<rowBreaks><brk id='30'/></rowBreaks>", {u"页面设置和分页"_s}},
        {"<hyperlinks><hyperlink ref='A1'/></hyperlinks><drawing id='r1'/>",
         {u"图片、图表和图形"_s, u"超链接"_s}},
    };
    for (const auto& [xml, losses] : cases)
        EXPECT_EQ(lossesOfSheet(xml), losses) << xml.constData();
}

TEST(Losses, AFormulaIsReadAsItsResultAndTold)
{
    EXPECT_EQ(BookFolder().readRows("<row><c><f>1+1</f><v>2</v></c></row>")->notKept(),
              QStringList{u"公式（保留其结果）"_s});
}

TEST(Losses, CommentsAreToldApartFromOtherOldDrawings)
{
    BookFolder::Parts parts =
        BookFolder::partsWith("<worksheet><sheetData/><legacyDrawing id='r1'/></worksheet>");
    EXPECT_EQ(lossesOf(parts), QStringList());
    for (const auto& [name, bytes] : BookFolder::Parts(parts)) {
        const qsizetype slash = name.lastIndexOf('/') + 1;
        if (bytes.startsWith("<worksheet"))
            parts[name.left(slash) + "_rels/" + name.mid(slash) + ".rels"] =
                "<Relationships><Relationship Id='r2' Type='http://x/comments' "
                "Target='../comments1.xml'/></Relationships>";
    }
    EXPECT_EQ(lossesOf(parts), QStringList{u"批注"_s});
}

TEST(Losses, WhatAnOlderFileHasBesideItsCellsIsTold)
{
    const std::tuple<int, QByteArray, QStringList> cases[] = {
        {0x1C, u16(0), {u"批注"_s}},
        {0x5D, objectOf(8), {u"图片、图表和图形"_s}},
        {0x5D, objectOf(0x14), {}}, // the arrow of a filter
        {0x5D, objectOf(0x19), {}}, // the frame of a comment
        {0x5D, u16(0), {u"图片、图表和图形"_s}},
        {0x1B0, u16(0), {u"条件格式"_s}},
        {0x1B2, u16(0), {u"数据有效性"_s}},
        {0x1B8, u16(0), {u"超链接"_s}},
        {0x1B, u16(0), {u"页面设置和分页"_s}},
        {0x06, u16(0) + u16(0) + u16(0) + real(2) + u16(0), {u"公式（保留其结果）"_s}},
    };
    for (const auto& [type, bytes, losses] : cases)
        EXPECT_EQ(lossesOfXls({}, XlsRecords().add(type, bytes)), losses) << type;
}

TEST(Losses, WhatTheSheetsOfAnOlderFileShareIsTold)
{
    constexpr int ofCells = 1;
    constexpr int ofTemplates = 5;
    EXPECT_EQ(lossesOfXls(XlsRecords().add(0xD3, {}), {}), QStringList{u"宏"_s});
    const std::pair<QByteArray, QStringList> cases[] = {
        {styleOf(0, 0, ofCells), {}},
        {styleOf(6, 0, ofCells), {u"字体、边框、底色和对齐方式"_s}},
        {styleOf(0, 0x1111, ofCells), {u"字体、边框、底色和对齐方式"_s}},
        {styleOf(6, 0x1111, ofTemplates), {}},
        {styleOf(6, 0x1111, ofCells).left(8), {}},
    };
    for (const auto& [style, losses] : cases)
        EXPECT_EQ(lossesOfXls(XlsRecords().add(0xE0, style), {}), losses)
            << style.toHex().toStdString();
}

TEST(Losses, AWorkbookOfOursHasNoneAndNoneAfterItWasSaved)
{
    const BookFolder folder;
    EXPECT_EQ(excel::Workbook().notKept(), QStringList());
    const auto book = folder.readRows("<row><c><f>1+1</f><v>2</v></c></row>");
    book->SaveAs(folder.write(u"b.xlsx"_s, {}));
    EXPECT_EQ(book->notKept(), QStringList());
}

TEST(Losses, MacrosOtherSheetsAndLooksOfAFileAreTold)
{
    const BookFolder folder;
    excel::Workbook book;
    book.addLosses({excel::Loss::Macros, excel::Loss::OtherSheets});
    EXPECT_EQ(book.notKept(), (QStringList{u"图表工作表和宏工作表"_s, u"宏"_s}));
    excel::Worksheet& sheet = book.addSheet(u"S"_s);
    sheet.setCell(1, 1, u"a"_s);
    const QString path = folder.write(u"b.xlsx"_s, {});
    const auto losses = [&] {
        book.SaveAs(path);
        QStringList names = excel::readWorkbook(path)->notKept();
        names.removeAll(u"页面设置和分页"_s);
        return names;
    };
    EXPECT_EQ(losses(), QStringList());
    sheet.Range(1, 1, 1, 1).setFontBold(true);
    EXPECT_EQ(losses(), QStringList{u"字体、边框、底色和对齐方式"_s});
}
