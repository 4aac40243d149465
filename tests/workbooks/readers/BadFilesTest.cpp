#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "workbooks/BookFiles.h"

using namespace Qt::StringLiterals;

namespace {

const QString cutOffXls =
    u"FILE 不完整或已损坏：.xls 文件的内容在中途断开。请重新复制或下载后再试。"_s;
const QString cutOffXlsx =
    u"FILE 不完整或已损坏：.xlsx 文件的压缩包无法读完。请重新复制或下载后再试。"_s;
const QString password = u"FILE 设有打开密码。请先在电子表格软件中取消密码，另存后再试。"_s;
const QString badXml = u"FILE 已损坏：工作簿内部的 XML 内容有错误。"_s;
const QString tooLarge = u"FILE 的内容过大，超出了可以读取的范围，已停止读取。"_s;
const QString unsafe = u"FILE 含有不安全的内容（XML 文档类型或实体声明），已拒绝读取。"_s;
const QString webPage =
    u"FILE 其实是网页文件，不是工作簿。请用电子表格软件打开它，另存为 .xlsx 后再试。"_s;
const QString plainText =
    u"FILE 其实是纯文本文件，不是工作簿。请用电子表格软件打开它，另存为 .xlsx 后再试。"_s;
const QString noWorkbook = u"FILE 里面没有工作簿，可能是其他类型的文档。"_s;
const QString oldBook =
    u"FILE 是很早版本的工作簿，无法读取。请用电子表格软件打开它，另存为 .xlsx 后再试。"_s;
const QString unknown = u"FILE 不是可以识别的工作簿文件。"_s;

/// The sentence for a file of these bytes.
QString sentenceFor(const QByteArray& bytes)
{
    const BookFolder folder;
    return sentenceOf(folder.write(u"book.xls"_s, bytes));
}

/// The sentence for a workbook whose sheet part is this.
QString sentenceForSheet(const QByteArray& xml)
{
    const BookFolder folder;
    return sentenceOf(folder.writeZip(u"book.xlsx"_s, BookFolder::partsWith(xml)));
}

QByteArray contentOf(const QString& name)
{
    QFile file(fixture(name));
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

} // namespace

TEST(BadFiles, EachFixtureGetsItsOwnSentence)
{
    const struct
    {
        QString name;
        QString sentence;
    } rows[] = {
        {u"cut-off.xls"_s, cutOffXls},
        {u"cut-off.xlsx"_s, cutOffXlsx},
        {u"password.xls"_s, password},
        {u"password.xlsx"_s, password},
        {u"web-page.xls"_s, webPage},
        {u"plain-text.xls"_s, plainText},
        {u"empty.xlsx"_s, u"FILE 是空文件，里面没有任何内容。"_s},
        {u"text-document.doc"_s, noWorkbook},
        {u"no-such-file.xls"_s, u"找不到文件 FILE。"_s},
        {QString(), u"FILE 不是文件，不能作为工作簿打开。"_s},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sentenceOf(fixture(row.name)), row.sentence) << row.name.toStdString();
}

TEST(BadFiles, TheNameOfAFileDoesNotDecideItsKind)
{
    const BookFolder folder;
    EXPECT_EQ(sentenceOf(folder.write(u"really-new.xls"_s, contentOf(u"scores.xlsx"_s))),
              QString());
    EXPECT_EQ(sentenceOf(folder.write(u"really-old.xlsx"_s, contentOf(u"scores.xls"_s))),
              QString());
}

TEST(BadFiles, TextsAreToldByTheirBeginning)
{
    const struct
    {
        QByteArray bytes;
        QString sentence;
    } rows[] = {
        {"<html><body/></html>", webPage},
        {"\xEF\xBB\xBF \r\n<!DOCTYPE html>", webPage},
        {"MIME-Version: 1.0\nContent-Type: multipart/related", webPage},
        {"<?xml version='1.0'?><?mso-application progid='Excel.Sheet'?><Workbook/>",
         u"FILE 其实是 XML 表格文件，不是工作簿。请用电子表格软件打开它，另存为 .xlsx 后再试。"_s},
        {"a,b,c\n1,2,3\n", plainText},
        {"\xB0\xE0\xBC\xB6\t\xD1\xA7\xBA\xC5", plainText},
        {QByteArray("\xFF\xFE"
                    "a\0,\0b\0",
                    8),
         plainText},
        {QByteArray("\x00\x01\x02\x03\x04", 5), unknown},
        {"\x89PNG\r\n\x1A\n", unknown},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sentenceFor(row.bytes), row.sentence) << row.bytes.constData();
}

TEST(BadFiles, VersionsBeforeTheFifthAreTold)
{
    EXPECT_EQ(sentenceFor(QByteArray("\x09\x00\x04\x00\x02\x00\x10\x00", 8)), oldBook);
    EXPECT_EQ(sentenceFor(QByteArray("\x09\x02\x06\x00\x00\x03\x10\x00\x00\x00", 10)), oldBook);
    EXPECT_EQ(sentenceFor(QByteArray("\x09\x04\x06\x00\x00\x04\x10\x00\x00\x00", 10)), oldBook);
}

TEST(BadFiles, AZipThatIsNoWorkbookIsTold)
{
    const BookFolder folder;
    EXPECT_EQ(sentenceOf(folder.writeZip(u"a.xlsx"_s, {{"readme.txt", "hello"}})), noWorkbook);
    EXPECT_EQ(sentenceOf(folder.writeZip(
                  u"b.xlsx"_s, {{"mimetype", "application/vnd.oasis"}, {"content.xml", "<x/>"}})),
              u"FILE 是 .ods 表格，无法读取。请用电子表格软件另存为 .xlsx 后再试。"_s);
    BookFolder::Parts parts = BookFolder::partsWith("<worksheet/>");
    parts["xl/workbook.xml"] = "<document/>";
    EXPECT_EQ(sentenceOf(folder.writeZip(u"c.xlsx"_s, parts)), noWorkbook);
    parts["_rels/.rels"].replace("workbook.xml", "workbook.bin");
    EXPECT_EQ(sentenceOf(folder.writeZip(u"d.xlsx"_s, parts)),
              u"FILE 是二进制工作簿（.xlsb），无法读取。请用电子表格软件另存为 .xlsx 后再试。"_s);
    BookFolder::Parts noSheets = BookFolder::partsWith("<worksheet/>");
    noSheets["xl/workbook.xml"] = "<workbook><sheets/></workbook>";
    EXPECT_EQ(sentenceOf(folder.writeZip(u"e.xlsx"_s, noSheets)), noWorkbook);
}

TEST(BadFiles, AMissingSheetPartIsTold)
{
    const BookFolder folder;
    BookFolder::Parts parts = BookFolder::partsWith("<worksheet/>");
    parts.erase("xl/sheets/a.xml");
    EXPECT_EQ(sentenceOf(folder.writeZip(u"a.xlsx"_s, parts)), cutOffXlsx);
    parts = BookFolder::partsWith("<worksheet/>");
    parts.erase("xl/_rels/workbook.xml.rels");
    EXPECT_EQ(sentenceOf(folder.writeZip(u"b.xlsx"_s, parts)), badXml);
}

TEST(BadFiles, BrokenXmlIsTold)
{
    EXPECT_EQ(sentenceForSheet("<worksheet><sheetData>"), badXml);
    EXPECT_EQ(sentenceForSheet("<worksheet>\xFF</worksheet>"), badXml);
    EXPECT_EQ(sentenceForSheet(""), badXml);
    const QByteArray cell = "<worksheet><sheetData><row><c r='%'/></row></sheetData></worksheet>";
    for (const char* reference : {"XFE1", "A1048577", "A0", "1", "A", "", "AAAA1", "A1B"})
        EXPECT_EQ(sentenceForSheet(QByteArray(cell).replace("%", reference)), badXml) << reference;
}

TEST(BadFiles, EntitiesAreRefusedBeforeTheyExpand)
{
    EXPECT_EQ(sentenceForSheet("<!DOCTYPE w [<!ENTITY a 'aaaaaaaaaa'><!ENTITY b '&a;&a;&a;&a;'>]>"
                               "<worksheet>&b;</worksheet>"),
              unsafe);
    EXPECT_EQ(sentenceForSheet("<!DOCTYPE w SYSTEM 'file:///etc/passwd'><worksheet/>"), unsafe);
}

TEST(BadFiles, AZipBombIsRefused)
{
    EXPECT_EQ(sentenceForSheet("<worksheet>" + QByteArray(200'000'000, ' ') + "</worksheet>"),
              tooLarge);
}

TEST(BadFiles, ALyingSizeDoesNotOpenTheDoor)
{
    const BookFolder folder;
    const QByteArray xml = "<worksheet>" + QByteArray(140'000'000, ' ') + "</worksheet>";
    const QString path = folder.writeZip(u"a.xlsx"_s, BookFolder::partsWith(xml));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    QByteArray bytes = file.readAll();
    const QByteArray claimed = u32(quint32(xml.size()));
    ASSERT_GE(bytes.count(claimed), 1);
    bytes.replace(claimed, u32(100));
    file.seek(0);
    file.write(bytes);
    file.close();
    const QString sentence = sentenceOf(path);
    EXPECT_TRUE(sentence == tooLarge || sentence == cutOffXlsx) << sentence.toStdString();
}

TEST(BadFiles, DeepNestingEndlessTagsAndManyNamesAreRefused)
{
    EXPECT_EQ(sentenceForSheet(QByteArray("<a>").repeated(200)), tooLarge);
    EXPECT_EQ(sentenceForSheet("<worksheet a='" + QByteArray(40'000'000, 'x') + "'/>"), tooLarge);
    QByteArray names = "<worksheet>";
    for (int i = 0; i < 500'000; ++i)
        names += "<e" + QByteArray::number(i) + "/>";
    EXPECT_EQ(sentenceForSheet(names + "</worksheet>"), tooLarge);
}

TEST(BadFiles, EndlessTextsAndTooManyCellsAreRefused)
{
    EXPECT_EQ(sentenceForSheet("<worksheet><sheetData><row><c t='str'><v>"
                               + QByteArray(2'000'000, 'x')
                               + "</v></c></row></sheetData></worksheet>"),
              tooLarge);
    QByteArray rows = "<worksheet><sheetData>";
    for (int row = 1; row <= 300; ++row)
        rows += "<row r='" + QByteArray::number(row) + "'>"
                + QByteArray("<c><v>1</v></c>").repeated(16000) + "</row>";
    EXPECT_EQ(sentenceForSheet(rows + "</sheetData></worksheet>"), tooLarge);
}

TEST(BadFiles, AScatteredSheetIsRefusedBeforeItsPagesFillTheMemory)
{
    QByteArray rows = "<worksheet><sheetData>";
    for (int row = 1; row <= excel::lastGridRow; row += 256)
        rows += "<row r='" + QByteArray::number(row) + "' hidden='1'/>";
    BookFolder::Parts parts = BookFolder::partsWith(rows + "</sheetData></worksheet>");
    const BookFolder folder;
    EXPECT_EQ(sentenceOf(folder.writeZip(u"once.xlsx"_s, parts)), QString());
    const QByteArray sheet = "<sheet name='S' r:id='r1'/>";
    parts["xl/workbook.xml"] =
        "<workbook xmlns:r='r'><sheets>" + sheet.repeated(4) + "</sheets></workbook>";
    EXPECT_EQ(sentenceOf(folder.writeZip(u"often.xlsx"_s, parts)), tooLarge);
}

TEST(BadFiles, ACompoundFileCutAnywhereIsTold)
{
    const QByteArray whole = contentOf(u"scores.xls"_s);
    for (qsizetype length = 8; length < whole.size() - 512; length += 173) {
        const QString sentence = sentenceFor(whole.left(length));
        EXPECT_EQ(sentence, cutOffXls) << length;
    }
}

TEST(BadFiles, AChainInACircleEnds)
{
    QByteArray bytes = contentOf(u"password.xls"_s);
    // The table is the last sector: let the stream's first sector follow itself.
    bytes.replace(bytes.size() - 512, 4, u32(0));
    EXPECT_EQ(sentenceFor(bytes), password);
    // The directory's chain has no length that would end it.
    QByteArray circle = contentOf(u"password.xls"_s);
    const qsizetype directory = qsizetype(circle.size() / 512) - 3;
    circle.replace(circle.size() - 512 + 4 * directory, 4, u32(quint32(directory)));
    EXPECT_EQ(sentenceFor(circle), cutOffXls);
}

TEST(BadFiles, ARecordCutOffIsTold)
{
    XlsRecords noEnd;
    noEnd.bof(0x600, 0x10).add(0x203, u16(0) + u16(0) + u16(0) + real(1));
    EXPECT_EQ(sentenceFor(noEnd.bytes()), cutOffXls);
    EXPECT_EQ(sentenceFor(noEnd.bytes().chopped(3)), cutOffXls);
    XlsRecords shortCell;
    shortCell.bof(0x600, 0x10).add(0x203, u16(0)).eof();
    EXPECT_EQ(sentenceFor(shortCell.bytes()), cutOffXls);
}

TEST(BadFiles, SheetsThatOverlapForEverAreRefused)
{
    XlsRecords records;
    records.bof(0x600, 5);
    for (int i = 0; i < 2000; ++i)
        records.boundSheet(0, QByteArray("\x01\x00S", 3));
    EXPECT_EQ(sentenceFor(records.eof().bytes()), tooLarge);
}

TEST(BadFiles, AnOlderSheetThatIsScatteredIsRefusedToo)
{
    const QByteArray name("\x01\x00S", 3);
    constexpr int sheets = 60;
    const auto cell = [](int row) -> QByteArray { return u16(row) + u16(0) + u16(0) + real(1); };
    const auto hiddenRow = [](int row) -> QByteArray {
        return u16(row) + u16(0) + u16(1) + u16(300) + u32(0) + u16(0x20) + u16(0);
    };
    for (const int type : {0x203, 0x208}) {
        XlsRecords records;
        records.bof(0x600, 5);
        // BOUNDSHEET takes 13 bytes, EOF 4.
        const qsizetype place = records.bytes().size() + sheets * (4 + 6 + name.size()) + 4;
        for (int i = 0; i < sheets; ++i)
            records.boundSheet(place, name);
        records.eof().bof(0x600, 0x10);
        for (int row = 0; row < 65536; row += 256)
            records.add(type, type == 0x203 ? cell(row) : hiddenRow(row));
        EXPECT_EQ(sentenceFor(records.eof().bytes()), tooLarge) << type;
    }
}

TEST(BadFiles, PartsThatAreSmallByThemselvesMayNotAddUpToABomb)
{
    BookFolder::Parts parts =
        BookFolder::partsWith("<worksheet>" + QByteArray(20'000'000, ' ') + "</worksheet>");
    const QByteArray sheet = "<sheet name='S' r:id='r1'/>";
    const BookFolder folder;
    EXPECT_EQ(sentenceOf(folder.writeZip(u"once.xlsx"_s, parts)), QString());
    parts["xl/workbook.xml"] =
        "<workbook xmlns:r='r'><sheets>" + sheet.repeated(9) + "</sheets></workbook>";
    EXPECT_EQ(sentenceOf(folder.writeZip(u"often.xlsx"_s, parts)), tooLarge);
}

TEST(BadFiles, MoreEntriesThanTheShortRecordCountsAreRefused)
{
    const BookFolder folder;
    QFile file(folder.writeZip(u"a.xlsx"_s, BookFolder::partsWith("<worksheet/>")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray zip = file.readAll();
    // The records of long archives go into the comment at the end, whose size stands in front.
    constexpr int record = 56;
    constexpr int locator = 20;
    zip.replace(zip.size() - 2, 2, u16(record + locator));
    for (const auto& [entries, sentence] :
         {std::pair{65535u, QString()}, std::pair{65536u, tooLarge}}) {
        const QByteArray claim = QByteArray(32, '\0') + u32(entries) + QByteArray(20, '\0');
        const QByteArray mark("PK\x06\x07", 4);
        EXPECT_EQ(
            sentenceFor(zip + claim + mark + u32(0) + u32(quint32(zip.size())) + u32(0) + u32(1)),
            sentence)
            << entries;
    }
}
