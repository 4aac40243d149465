#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "workbooks/BookFiles.h"
#include "workbooks/writers/XlsxWriter.h"

using namespace Qt::StringLiterals;
using excel::Visibility;
using excel::Worksheet;
using runtime::Value;

namespace {

QByteArray sheetOf(const QByteArray& rows)
{
    return "<worksheet><sheetData>" + rows + "</sheetData></worksheet>";
}

/// The lines of `cellsOf` for a sheet with these rows.
QString read(const QByteArray& rows)
{
    return cellsOf(BookFolder().readRows(rows)->Worksheets().Item(1));
}

} // namespace

TEST(XlsxReader, GivesEveryKindOfCellItsKind)
{
    const auto book = excel::readWorkbook(fixture(u"kinds-of-cells.xlsx"_s));
    const Worksheet& sheet = book->Worksheets().Item(u"成绩"_s);
    EXPECT_EQ(cellsOf(sheet),
              u"1,1 Text 班级\n1,2 Double 97.5\n1,3 Text 0805\n1,4 Boolean True\n"
              "1,5 Date 2009-07-31\n1,6 Date 2009-07-31 08:30:00\n1,7 Date 2009-07-31\n"
              "1,8 Double 12.5\n1,9 Double 20240101002\n"
              "2,1 Text   two\nlines \n2,2 Text 张三丰\n2,3 Text "_s
                  + u"云杉"_s.repeated(6000)
                  + u"\n2,4 Text _x0041_\n"
                    "3,1 Double 3\n3,2 Text ab\n3,3 Boolean True\n3,4 Error #N/A\n"
                    "3,5 Error #DIV/0!\n3,6 Date 2009-07-31\n5,1 Text 合并\n"
                    "8,1 Text hidden row\n1048576,16384 Text far end\n"_s);
}

TEST(XlsxReader, TheSheetInFrontIsThatOfTheFile)
{
    EXPECT_EQ(excel::readWorkbook(fixture(u"kinds-of-cells.xlsx"_s))->activeSheet().Name(),
              u"空表"_s);
}

TEST(XlsxReader, SizesThatNoSheetCanHaveDoNotReachTheSavedFile)
{
    const BookFolder folder;
    const auto damaged = excel::readWorkbook(folder.writeZip(
        u"a.xlsx"_s,
        BookFolder::partsWith(
            "<worksheet><cols><col min='1' max='1' width='inf'/><col min='2' max='2' width='nan'/>"
            "<col min='3' max='3' width='-5'/><col min='4' max='4' width='1e30'/></cols><sheetData>"
            "<row ht='inf'/><row ht='nan'/><row ht='-5'/><row ht='1e30'/></sheetData>"
            "</worksheet>")));
    const excel::SheetGeometry& read = damaged->Worksheets().Item(1).geometry();
    const QString path = folder.write(u"b.xlsx"_s, {});
    excel::writeXlsx(*damaged, path);
    const auto book = excel::readWorkbook(path);
    const excel::SheetGeometry& saved = book->Worksheets().Item(1).geometry();
    for (int line = 1; line <= 3; ++line) {
        EXPECT_EQ(read.shownColumnWidth(line), excel::SheetGeometry::standardColumnWidth) << line;
        EXPECT_EQ(saved.shownColumnWidth(line), excel::SheetGeometry::standardColumnWidth) << line;
        EXPECT_EQ(read.shownRowHeight(line), excel::SheetGeometry::standardRowHeight) << line;
        EXPECT_EQ(saved.shownRowHeight(line), excel::SheetGeometry::standardRowHeight) << line;
    }
    EXPECT_EQ(read.shownColumnWidth(4), 255);
    EXPECT_EQ(saved.shownColumnWidth(4), 255);
    EXPECT_EQ(read.shownRowHeight(4), 409.5);
    EXPECT_EQ(saved.shownRowHeight(4), 409.5);
}

TEST(XlsxReader, WidthsOfOtherProgramsStayWhenTheFileIsSaved)
{
    const BookFolder folder;
    const auto book = excel::readWorkbook(folder.writeZip(
        u"a.xlsx"_s,
        BookFolder::partsWith(
            "<worksheet><sheetFormatPr defaultColWidth='11.53515625' defaultRowHeight='15'/>"
            "<cols><col min='1' max='1' width='9.140625'/><col min='2' max='2' width='4.7109375'/>"
            "<col min='3' max='3' width='0.75'/></cols><sheetData/></worksheet>")));
    EXPECT_EQ(book->Worksheets().Item(1).geometry().shownColumnWidth(1), 8.515625);
    const QString path = folder.write(u"b.xlsx"_s, {});
    excel::writeXlsx(*book, path);
    excel::writeXlsx(*excel::readWorkbook(path), path);
    EXPECT_TRUE(
        partOf(path, "xl/worksheets/sheet1.xml")
            .contains("<cols><col min=\"1\" max=\"1\" width=\"9.140625\" customWidth=\"1\"/>"
                      "<col min=\"2\" max=\"2\" width=\"4.7109375\" customWidth=\"1\"/>"
                      "<col min=\"3\" max=\"3\" width=\"0.75\" customWidth=\"1\"/>"
                      "<col min=\"4\" max=\"16384\" width=\"11.53515625\" customWidth=\"1\"/>"
                      "</cols>"));
}

TEST(XlsxReader, ReadsInlineTextsAndTakesAFormulaWithoutResultAsEmpty)
{
    const auto book = excel::readWorkbook(fixture(u"inline-texts.xlsx"_s));
    EXPECT_EQ(
        cellsOf(book->Worksheets().Item(u"导出"_s)),
        u"1,1 Text 班级\n1,2 Text 学号\n1,3 Double 97.5\n1,5 Text   blanks \n"
        "1,6 Text 行1\n行2\n2,1 Null \n2,2 Date 2009-07-31 08:30:00\n2,3 Date 1899-12-30 08:30:00\n"
        "2,4 Error #N/A\n"_s);
    EXPECT_EQ(book->Worksheets().Item(2).visibility(), Visibility::VeryHidden);
    EXPECT_EQ(book->Worksheets().Item(2).Cells(1, 1), Value(u"1"_s));
}

TEST(XlsxReader, ReadsCellsOfEveryType)
{
    const struct
    {
        const char* cell;
        QString expected;
    } rows[] = {
        {"<c><v>1.5</v></c>", u"1,1 Double 1.5\n"_s},
        {"<c t='n'><v> 7 </v></c>", u"1,1 Double 7\n"_s},
        {"<c><v>1E-3</v></c>", u"1,1 Double 0.001\n"_s},
        {"<c t='b'><v>0</v></c>", u"1,1 Boolean False\n"_s},
        {"<c t='b'><v>true</v></c>", u"1,1 Boolean True\n"_s},
        {"<c t='e'><v>#VALUE!</v></c>", u"1,1 Error #VALUE!\n"_s},
        {"<c t='str'><f>A1</f><v>x</v></c>", u"1,1 Text x\n"_s},
        {"<c t='str'><f>A1</f><v></v></c>", u"1,1 Text \n"_s},
        {"<c t='str'><f>A1</f></c>", u"1,1 Null \n"_s},
        {"<c><f>A1</f></c>", u"1,1 Null \n"_s},
        {"<c><f>A1</f><v/></c>", u"1,1 Null \n"_s},
        {"<c><f>A1</f><v></v></c>", u"1,1 Null \n"_s},
        {"<c t='b'><f>A1</f><v/></c>", u"1,1 Null \n"_s},
        {"<c t='d'><v>2009-07-31</v></c>", u"1,1 Date 2009-07-31\n"_s},
        {"<c t='d'><v>2009-07-31T08:30:00</v></c>", u"1,1 Date 2009-07-31 08:30:00\n"_s},
        {"<c t='d'><v>someday</v></c>", u"1,1 Text someday\n"_s},
        {"<c><v>abc</v></c>", u"1,1 Text abc\n"_s},
        {"<c><v>1e999</v></c>", u"1,1 Text 1e999\n"_s},
        {"<c><v>nan</v></c>", u"1,1 Text nan\n"_s},
        {"<c s='3'/>", u""_s},
        {"<c t='inlineStr'><is><t>00123</t></is></c>", u"1,1 Text 00123\n"_s},
        {"<c t='inlineStr'><is><r><t>a</t></r><r><t> b</t></r></is></c>", u"1,1 Text a b\n"_s},
        {"<c t='inlineStr'><is><t>汉</t><rPh><t>han</t></rPh></is></c>", u"1,1 Text 汉\n"_s},
        {"<c t='inlineStr'><is><t>&lt;&amp;&#x6C49;</t></is></c>", u"1,1 Text <&汉\n"_s},
        {"<c t='inlineStr'><is><t><![CDATA[<b>]]></t></is></c>", u"1,1 Text <b>\n"_s},
    };
    for (const auto& row : rows)
        EXPECT_EQ(read("<row>" + QByteArray(row.cell) + "</row>"), row.expected) << row.cell;
}

TEST(XlsxReader, DecodesEscapedCharacters)
{
    const struct
    {
        const char* text;
        QString expected;
    } rows[] = {
        {"_x0041_", u"A"_s},         {"a_x000A_b", u"a\nb"_s},  {"_x005F_x0041_", u"_x0041_"_s},
        {"_x00410_", u"_x00410_"_s}, {"_x+041_", u"_x+041_"_s}, {"_x6c49__x6C49_", u"汉汉"_s},
        {"x_x0041", u"x_x0041"_s},   {"__x0041_", u"_A"_s},     {"_X0041_", u"_X0041_"_s},
    };
    for (const auto& row : rows)
        EXPECT_EQ(read("<row><c t='str'><v>" + QByteArray(row.text) + "</v></c></row>"),
                  u"1,1 Text "_s + row.expected + u"\n"_s)
            << row.text;
}

TEST(XlsxReader, CellsWithoutReferencesFollowEachOther)
{
    EXPECT_EQ(read("<row><c><v>1</v></c><c><v>2</v></c></row><row r='5'><c r='C5'><v>3</v></c>"
                   "<c><v>4</v></c></row><row><c><v>5</v></c></row>"),
              u"1,1 Double 1\n1,2 Double 2\n5,3 Double 3\n5,4 Double 4\n6,1 Double 5\n"_s);
}

TEST(XlsxReader, ACellsReferenceDecidesTheRowOfThoseBehindIt)
{
    EXPECT_EQ(read("<row><c r='B3'><v>1</v></c><c><v>2</v></c></row><row><c><v>3</v></c></row>"),
              u"3,2 Double 1\n3,3 Double 2\n4,1 Double 3\n"_s);
}

TEST(XlsxReader, CellsOutOfOrderFindTheirPlaces)
{
    EXPECT_EQ(
        read("<row r='2'><c r='B2'><v>1</v></c><c r='A2'><v>2</v></c></row>"
             "<row r='1'><c r='A1'><v>3</v></c></row><row r='2'><c r='B2'><v>4</v></c></row>"),
        u"1,1 Double 3\n2,1 Double 2\n2,2 Double 4\n"_s);
}

TEST(XlsxReader, AFormulaWithoutResultCountsAsUsed)
{
    const auto book = BookFolder().readRows("<row r='9'><c r='C9'><f>A1</f></c></row>");
    EXPECT_EQ(book->Worksheets().Item(1).lastUsedRow(), 9);
    EXPECT_EQ(book->Worksheets().Item(1).lastUsedColumn(), 3);
}

TEST(XlsxReader, ElementsMayHavePrefixesAndTheStrictNamespace)
{
    const BookFolder folder;
    BookFolder::Parts parts = BookFolder::partsWith(
        "<x:worksheet xmlns:x='http://purl.oclc.org/ooxml/spreadsheetml/main'><x:sheetData>"
        "<x:row><x:c t='s'><x:v>0</x:v></x:c></x:row></x:sheetData></x:worksheet>");
    parts["xl/texts.xml"] = "<x:sst xmlns:x='y'><x:si><x:t>汉</x:t></x:si></x:sst>";
    parts["xl/workbook.xml"] =
        "<x:workbook xmlns:x='y' xmlns:rel='z'><x:sheets><x:sheet name='名' sheetId='7'"
        " rel:id='r1'/></x:sheets></x:workbook>";
    const auto book = excel::readWorkbook(folder.writeZip(u"a.xlsx"_s, parts));
    EXPECT_EQ(cellsOf(book->Worksheets().Item(u"名"_s)), u"1,1 Text 汉\n"_s);
}

TEST(XlsxReader, SharedTextsJoinRichTextAndLeavePhoneticsOut)
{
    const BookFolder folder;
    BookFolder::Parts parts = BookFolder::partsWith(
        sheetOf("<row><c t='s'><v>0</v></c><c t='s'><v>1</v></c><c t='s'><v>2</v></c></row>"));
    parts["xl/texts.xml"] = "<sst><si><r><rPr><b/></rPr><t>张</t></r><r><t xml:space='preserve'> 三"
                            "</t></r><rPh sb='0' eb='1'><t>zhang</t></rPh><phoneticPr/></si>"
                            "<si/><si><t>\xE6\xB1\x89</t></si></sst>";
    const auto book = excel::readWorkbook(folder.writeZip(u"a.xlsx"_s, parts));
    EXPECT_EQ(cellsOf(book->Worksheets().Item(1)), u"1,1 Text 张 三\n1,2 Text \n1,3 Text 汉\n"_s);
}

TEST(XlsxReader, PartsAreFoundByTheirRelationsOnly)
{
    const struct
    {
        const char* target;
        const char* part;
    } rows[] = {
        {"/xl/other/b.xml", "xl/other/b.xml"},
        {"../b.xml", "b.xml"},
        {"./w/../b.xml", "xl/b.xml"},
        {"w\\b.xml", "xl/w/b.xml"},
        {"W/B.xml", "xl/w/b.XML"},
    };
    for (const auto& row : rows) {
        const BookFolder folder;
        BookFolder::Parts parts = BookFolder::partsWith(sheetOf("<row><c><v>1</v></c></row>"));
        parts["xl/_rels/workbook.xml.rels"] =
            "<Relationships><Relationship Id='r1' Type='x/worksheet' Target='"
            + QByteArray(row.target) + "'/></Relationships>";
        parts[row.part] = sheetOf("<row><c><v>2</v></c></row>");
        const auto book = excel::readWorkbook(folder.writeZip(u"a.xlsx"_s, parts));
        EXPECT_EQ(cellsOf(book->Worksheets().Item(1)), u"1,1 Double 2\n"_s) << row.target;
    }
}

TEST(XlsxReader, ChartSheetsAreNoWorksheets)
{
    const BookFolder folder;
    BookFolder::Parts parts = BookFolder::partsWith(sheetOf("<row><c><v>1</v></c></row>"));
    parts["xl/workbook.xml"] = "<workbook xmlns:r='r'><sheets><sheet name='图' r:id='r9'/>"
                               "<sheet name='S' r:id='r1'/></sheets></workbook>";
    parts["xl/_rels/workbook.xml.rels"].replace(
        "</Relationships>",
        "<Relationship Id='r9' Type='x/chartsheet' Target='c.xml'/></Relationships>");
    const auto book = excel::readWorkbook(folder.writeZip(u"a.xlsx"_s, parts));
    ASSERT_EQ(book->Worksheets().Count(), 1);
    EXPECT_EQ(book->Worksheets().Item(1).Name(), u"S"_s);
}

TEST(XlsxReader, TextsAndStylesMayBeMissingWhileNobodyNeedsThem)
{
    EXPECT_EQ(read("<row><c s='4'><v>40025</v></c></row>"), u"1,1 Double 40025\n"_s);
    const BookFolder folder;
    const QString path = folder.writeZip(
        u"a.xlsx"_s, BookFolder::partsWith(sheetOf("<row><c t='s'><v>0</v></c></row>")));
    EXPECT_EQ(sentenceOf(path), u"FILE 已损坏：工作簿内部的 XML 内容有错误。"_s);
}

TEST(XlsxReader, StylesOutsideTheCellStylesAreNotCounted)
{
    const BookFolder folder;
    BookFolder::Parts parts =
        BookFolder::partsWith(sheetOf("<row><c s='1'><v>40025</v></c><c><v>1</v></c></row>"));
    parts["xl/styles.xml"] =
        "<styleSheet><numFmts><numFmt numFmtId='170' formatCode='yyyy'/></numFmts><cellStyleXfs>"
        "<xf numFmtId='14'/></cellStyleXfs><cellXfs><xf numFmtId='0'/><xf "
        "numFmtId='170'/></cellXfs>"
        "<dxfs><dxf><numFmt numFmtId='0' formatCode='yyyy'/></dxf></dxfs></styleSheet>";
    const auto book = excel::readWorkbook(folder.writeZip(u"a.xlsx"_s, parts));
    EXPECT_EQ(cellsOf(book->Worksheets().Item(1)), u"1,1 Date 2009-07-31\n1,2 Double 1\n"_s);
}
