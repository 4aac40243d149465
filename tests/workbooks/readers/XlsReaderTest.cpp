#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "workbooks/BookFiles.h"

using namespace Qt::StringLiterals;
using excel::CellRange;
using excel::Worksheet;

namespace {

constexpr int biff5 = 0x500;
constexpr int biff8 = 0x600;

QByteArray at(int row, int column)
{
    return u16(row) + u16(column) + u16(0);
}

std::unique_ptr<excel::Workbook> readBook(int version, const XlsRecords& globals,
                                          const XlsRecords& cells)
{
    const BookFolder folder;
    return excel::readWorkbook(
        folder.write(u"book.xls"_s, XlsRecords::book(version, globals, cells)));
}

/// The lines of `cellsOf` for a workbook of one sheet.
QString read(int version, const XlsRecords& globals, const XlsRecords& cells)
{
    return cellsOf(readBook(version, globals, cells)->Worksheets().Item(1));
}

/// A FORMULA record whose result is no number: kind 0 text, 1 boolean, 2 error, 3 empty text.
QByteArray formula(int row, int column, int kind, int content)
{
    return at(row, column) + u8(kind) + u8(0) + u8(content) + QByteArray(3, 0) + u16(0xFFFF)
           + u16(0) + u32(0) + u16(0);
}

/// A table of shared texts of which one record holds all.
QByteArray sharedTexts(quint32 count, const QByteArray& texts)
{
    return u32(count) + u32(count) + texts;
}

} // namespace

TEST(XlsReader, GivesEveryKindOfCellItsKind)
{
    const auto book = excel::readWorkbook(fixture(u"kinds-of-cells.xls"_s));
    const Worksheet& sheet = book->Worksheets().Item(u"成绩"_s);
    EXPECT_EQ(cellsOf(sheet),
              u"1,1 Text 班级\n1,2 Double 97.5\n1,3 Text 0805\n1,4 Boolean True\n"
              "1,5 Date 2009-07-31\n1,6 Date 2009-07-31 08:30:00\n1,7 Date 2009-07-31\n"
              "1,8 Double 12.5\n1,9 Double 20240101002\n"
              "2,1 Text   two\nlines \n2,3 Text "_s
                  + u"云杉"_s.repeated(6000) + u"\n2,4 Text "_s + u"x"_s.repeated(15000)
                  + u"\n2,5 Text after the long ones\n"
                    "3,1 Double 3\n3,2 Text ab\n3,4 Error #N/A\n3,5 Error #DIV/0!\n"
                    "3,6 Date 2009-07-31\n5,1 Text 合并\n8,1 Text hidden row\n"
                    "65536,256 Text far end\n"_s);
}

TEST(XlsReader, EmbeddedChartsArePassedOverAndChartSheetsAreNoWorksheets)
{
    const auto book = excel::readWorkbook(fixture(u"kinds-of-cells.xls"_s));
    EXPECT_EQ(book->Worksheets().Count(), 4);
    EXPECT_EQ(cellsOf(book->Worksheets().Item(u"Sheet4"_s)), u"1,1 Double 1\n2,1 Double 2\n"_s);
}

TEST(XlsReader, AContinuedTextMayChangeItsWidth)
{
    XlsRecords globals;
    globals.add(0xFC, sharedTexts(2, u16(5) + u8(0) + "ab"))
        .add(0x3C, u8(1) + u16(0x6C49) + u16(0x5B57))
        .add(0x3C, u8(0) + "c" + u16(2) + u8(0) + "de");
    XlsRecords cells;
    cells.add(0xFD, at(0, 0) + u32(0)).add(0xFD, at(0, 1) + u32(1));
    EXPECT_EQ(read(biff8, globals, cells), u"1,1 Text ab汉字c\n1,2 Text de\n"_s);
}

TEST(XlsReader, RichAndPhoneticTailsMayBeCutToo)
{
    XlsRecords globals;
    globals.add(0xFC, sharedTexts(2, u16(2) + u8(0x0C) + u16(2) + u32(4) + "ab" + "run"))
        .add(0x3C, "1run2phon" + u16(1) + u8(0))
        .add(0x3C, u8(0) + "c");
    XlsRecords cells;
    cells.add(0xFD, at(0, 0) + u32(0)).add(0xFD, at(0, 1) + u32(1));
    EXPECT_EQ(read(biff8, globals, cells), u"1,1 Text ab\n1,2 Text c\n"_s);
}

TEST(XlsReader, ReadsNumbersInEveryPacking)
{
    XlsRecords cells;
    cells.add(0x203, at(0, 0) + real(1.25))
        .add(0x27E, at(0, 1) + u32(0x3FF00000))
        .add(0x27E, at(0, 2) + u32((12345u << 2) | 3))
        .add(0x27E, at(0, 3) + u32(quint32(-7 * 4) | 2))
        .add(0xBD,
             u16(1) + u16(0) + u16(0) + u32((1u << 2) | 2) + u16(0) + u32((2u << 2) | 2) + u16(1));
    EXPECT_EQ(read(biff8, {}, cells),
              u"1,1 Double 1.25\n1,2 Double 1\n1,3 Double 123.45\n1,4 Double -7\n"
              "2,1 Double 1\n2,2 Double 2\n"_s);
}

TEST(XlsReader, ReadsTheResultsOfFormulas)
{
    XlsRecords cells;
    cells.add(0x06, formula(0, 0, 0, 0))
        .add(0x4BC, "shared formula")
        .add(0x207, u16(2) + u8(0) + "ab")
        .add(0x06, formula(0, 1, 1, 1))
        .add(0x06, formula(0, 2, 2, 0x2A))
        .add(0x06, formula(0, 3, 3, 0))
        .add(0x06, at(0, 4) + real(2.5) + u16(0) + u32(0) + u16(0))
        .add(0x207, u16(1) + u8(0) + "x");
    EXPECT_EQ(read(biff8, {}, cells),
              u"1,1 Text ab\n1,2 Boolean True\n1,3 Error #N/A\n1,4 Text \n1,5 Double 2.5\n"_s);
}

TEST(XlsReader, ReadsBooleansAndAllErrors)
{
    const struct
    {
        int code;
        QString text;
    } rows[] = {{0x00, u"#NULL!"_s}, {0x07, u"#DIV/0!"_s}, {0x0F, u"#VALUE!"_s}, {0x17, u"#REF!"_s},
                {0x1D, u"#NAME?"_s}, {0x24, u"#NUM!"_s},   {0x2A, u"#N/A"_s}};
    for (const auto& row : rows)
        EXPECT_EQ(read(biff8, {}, XlsRecords().add(0x205, at(0, 0) + u8(row.code) + u8(1))),
                  u"1,1 Error "_s + row.text + u"\n"_s);
    EXPECT_EQ(read(biff8, {}, XlsRecords().add(0x205, at(0, 0) + u8(0) + u8(0))),
              u"1,1 Boolean False\n"_s);
}

TEST(XlsReader, ReadsTextsThatStandInTheirCells)
{
    XlsRecords cells;
    cells.add(0x204, at(0, 0) + u16(2) + u8(1) + u16(0x6C49) + u16(0x5B57))
        .add(0xD6, at(0, 1) + u16(2) + u8(0) + "ab" + u16(1) + u32(0));
    EXPECT_EQ(read(biff8, {}, cells), u"1,1 Text 汉字\n1,2 Text ab\n"_s);
}

TEST(XlsReader, ReadsTheOlderVersionInTheChineseCodePage)
{
    XlsRecords globals;
    globals.add(0x42, u16(936)).add(0x41E, u16(170) + u8(4) + "yyyy").add(0xE0, u16(0) + u16(170));
    XlsRecords cells;
    cells.add(0x204, at(0, 0) + u16(4) + "\xBA\xBA\xD7\xD6")
        .add(0xD6, at(0, 1) + u16(2) + "\xD5\xC5" + u8(1) + u16(0))
        .add(0x203, at(0, 2) + real(40025))
        .add(0x06, formula(0, 3, 0, 0))
        .add(0x207, u16(3) + "a\xBA\xBA");
    EXPECT_EQ(read(biff5, globals, cells),
              u"1,1 Text 汉字\n1,2 Text 张\n1,3 Date 2009-07-31\n1,4 Text a汉\n"_s);
}

TEST(XlsReader, BytesThatAreNoTextDoNotStopTheReading)
{
    EXPECT_EQ(read(biff5, XlsRecords().add(0x42, u16(936)),
                   XlsRecords().add(0x204, at(0, 0) + u16(4)
                                               + "\xBA\xBA\xFF"
                                                 "a")),
              u"1,1 Text 汉\uFFFD"_s + u"a\n"_s);
}

TEST(XlsReader, ALoneSheetWithoutContainerIsReadToo)
{
    const BookFolder folder;
    XlsRecords records;
    records.bof(0, 0x10).add(0x204, at(0, 0) + u16(4) + "\xBA\xBA\xD7\xD6").eof();
    const auto book = excel::readWorkbook(folder.write(u"导出.xls"_s, records.bytes()));
    EXPECT_EQ(book->Worksheets().Item(1).Name(), u"导出"_s);
    EXPECT_EQ(cellsOf(book->Worksheets().Item(1)), u"1,1 Text 汉字\n"_s);
}

TEST(XlsReader, AFilterOfUnknownExtentShowsAllRows)
{
    XlsRecords cells;
    cells.add(0x9B, {}).add(0x208,
                            u16(4) + u16(0) + u16(1) + u16(300) + u32(0) + u16(0x20) + u16(0));
    const auto book = readBook(biff8, {}, cells);
    Worksheet& sheet = book->Worksheets().Item(1);
    EXPECT_TRUE(sheet.geometry().isRowHidden(5));
    sheet.AutoFilter();
    EXPECT_FALSE(sheet.geometry().isRowHidden(5));
}

/// Two worksheets "A" and "B" with a chart between them; the tab in front has this number, from 0.
QByteArray bookWithChart(int tab)
{
    const auto name = [](char letter) -> QByteArray {
        return u8(1) + u8(0) + QByteArray(1, letter);
    };
    const auto globals = [&](qsizetype first, qsizetype second) {
        return XlsRecords()
            .bof(biff8, 5)
            .add(0x3D, u16(0) + u16(0) + u16(9000) + u16(9000) + u16(0x38) + u16(tab) + u16(0)
                           + u16(1) + u16(600))
            .boundSheet(first, name('A'))
            .add(0x85, u32(0) + u8(0) + u8(2) + name('C'))
            .boundSheet(second, name('B'))
            .eof()
            .bytes();
    };
    const QByteArray sheet = XlsRecords().bof(biff8, 0x10).eof().bytes();
    const qsizetype first = globals(0, 0).size();
    return globals(first, first + sheet.size()) + sheet + sheet;
}

TEST(XlsReader, TheSheetInFrontIsThatOfTheFile)
{
    const BookFolder folder;
    const std::pair<int, QString> fronts[] = {{0, u"A"_s}, {2, u"B"_s}, {1, u"A"_s}, {9, u"A"_s}};
    for (const auto& [tab, name] : fronts) {
        const auto book = excel::readWorkbook(folder.write(u"a.xls"_s, bookWithChart(tab)));
        EXPECT_EQ(book->activeSheet().Name(), name) << tab;
    }
}

TEST(XlsReader, WidthsAreThoseOfTheTextAlone)
{
    XlsRecords cells;
    cells.add(0x7D, u16(0) + u16(1) + u16(37 * 256 / 8) + u16(0) + u16(0) + u16(0));
    const auto book = readBook(biff8, {}, cells);
    EXPECT_EQ(book->Worksheets().Item(1).geometry().shownColumnWidth(2), 4);
}

TEST(XlsReader, SizesBeyondTheLimitsBecomeTheLargest)
{
    XlsRecords cells;
    cells.add(0x7D, u16(0) + u16(0) + u16(0xFFFF) + u16(0) + u16(0) + u16(0))
        .add(0x208, u16(0) + u16(0) + u16(1) + u16(0x7FFF) + u32(0) + u16(0x40) + u16(0));
    const auto book = readBook(biff8, {}, cells);
    const excel::SheetGeometry& geometry = book->Worksheets().Item(1).geometry();
    EXPECT_EQ(geometry.shownColumnWidth(1), 255);
    EXPECT_EQ(geometry.shownRowHeight(1), 409.5);
}

TEST(XlsReader, AFilterNameThatIsCutOffIsPassedOver)
{
    const QByteArray name = u16(0x20) + u8(0) + u8(1) + u16(11) + u16(0) + u16(1) + u32(0) + u8(0)
                            + u8(0x0D) + u8(0x3B) + u16(0) + u16(0) + u16(19) + u16(0) + u16(2);
    const XlsRecords cells = XlsRecords().add(0x9B, {}).add(0x203, at(0, 0) + real(1));
    const auto filterOf = [&](qsizetype size) {
        const auto book = readBook(biff8, XlsRecords().add(0x18, name.left(size)), cells);
        return book->Worksheets().Item(1).autoFilter();
    };
    EXPECT_EQ(filterOf(name.size()), (CellRange{1, 1, 20, 3}));
    for (qsizetype size = 0; size < name.size(); ++size)
        EXPECT_EQ(filterOf(size), excel::wholeGrid) << size;
}

TEST(XlsReader, CellsOutOfOrderFindTheirPlaces)
{
    XlsRecords cells;
    cells.add(0x203, at(1, 1) + real(1))
        .add(0x203, at(0, 0) + real(2))
        .add(0x203, at(1, 0) + real(3));
    EXPECT_EQ(read(biff8, {}, cells), u"1,1 Double 2\n2,1 Double 3\n2,2 Double 1\n"_s);
}

TEST(XlsReader, ReadsTheFirstSignOfAWesternCodePage)
{
    EXPECT_EQ(read(biff5, XlsRecords().add(0x42, u16(1252)),
                   XlsRecords().add(0x204, at(0, 0) + u16(2) + "\x80" + "5")),
              u"1,1 Text €5\n"_s);
}
