#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include <sys/wait.h>
#include <unistd.h>

#include <QDir>

#include "platform/runtime/UnfinishedFile.h"
#include "support/ErrorOf.h"
#include "support/FullDisk.h"
#include "support/PrintQString.h"
#include "workbooks/BookFiles.h"
#include "workbooks/writers/SampleBook.h"
#include "workbooks/writers/WriterText.h"
#include "workbooks/writers/XlsxWriter.h"

using namespace Qt::StringLiterals;
using excel::Visibility;
using excel::Workbook;
using excel::Worksheet;
using runtime::Value;

namespace {

QString writeError(const Workbook& book, const QString& path)
{
    return support::errorOf([&] { excel::writeXlsx(book, path); });
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

class WriterTest : public testing::Test
{
protected:
    QString path(const QString& name = u"a.xlsx"_s) const { return m_folder.filePath(name); }
    QStringList files() const
    {
        return QDir(m_folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    std::unique_ptr<Workbook> writtenAndRead()
    {
        excel::writeXlsx(book, path());
        return excel::readWorkbook(path());
    }
    /// The file that is there stays as it is, and the user is told.
    void expectRefusedByADiskOf(rlim_t size, const QString& told)
    {
        const QByteArray before = bytesOf(path());
        QString error;
        testing::internal::CaptureStderr();
        {
            const support::FullDisk disk(size);
            error = writeError(book, path());
        }
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        EXPECT_EQ(error, told.arg(path())) << size;
        EXPECT_EQ(bytesOf(path()), before);
        EXPECT_EQ(files(), QStringList{u"a.xlsx"_s});
    }

    Workbook book;
    Worksheet& sheet = book.addSheet(u"成绩"_s);

private:
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(WriterTest, CellsKeepTheirKinds)
{
    sheet.setCell(1, 1, 85.5);
    sheet.setCell(1, 2, qint64{-1});
    sheet.setCell(1, 3, 0.1f);
    sheet.setCell(1, 4, u"0805"_s);
    sheet.setCell(1, 5, u"5/1/6"_s);
    sheet.setCell(1, 6, u"=1+1"_s);
    sheet.setCell(2, 1, true);
    sheet.setCell(2, 2, QDateTime(QDate(2009, 7, 31), QTime(0, 0), Qt::UTC));
    sheet.setCell(2, 3, QDateTime(QDate(2009, 7, 31), QTime(8, 30, 15), Qt::UTC));
    sheet.setCell(2, 4, QDateTime(QDate(1899, 12, 30), QTime(8, 30), Qt::UTC));
    sheet.setCell(2, 5, QDateTime(QDate(1850, 1, 2), QTime(0, 0), Qt::UTC));
    sheet.setCell(3, 1, Value::error(u"#N/A"_s));
    sheet.setCell(3, 2, std::numeric_limits<double>::infinity());
    sheet.setCell(3, 3, std::numeric_limits<double>::quiet_NaN());
    sheet.setCell(1048576, 16384, 20240101002.0);
    EXPECT_EQ(
        cellsOf(writtenAndRead()->Worksheets().Item(1)),
        u"1,1 Double 85.5\n1,2 Double -1\n1,3 Double 0.1\n1,4 Text 0805\n"
        "1,5 Text 5/1/6\n1,6 Text =1+1\n2,1 Boolean True\n2,2 Date 2009-07-31\n"
        "2,3 Date 2009-07-31 08:30:15\n2,4 Date 1899-12-30 08:30:00\n2,5 Text 1850-01-02\n"
        "3,1 Text #N/A\n3,2 Text #NUM!\n3,3 Text #NUM!\n1048576,16384 Double 20240101002\n"_s);
}

TEST_F(WriterTest, ASingleIsWrittenWithItsOwnDigits)
{
    const std::pair<float, double> numbers[] = {{89.7f, 89.7},        {532.6f, 532.6},
                                                {-0.1f, -0.1},        {1e10f, 1e10},
                                                {16777216, 16777216}, {1.0f / 3, 0.3333333}};
    int row = 0;
    for (const auto& [single, written] : numbers)
        sheet.setCell(++row, 1, single);
    const auto read = writtenAndRead();
    row = 0;
    for (const auto& [single, written] : numbers)
        EXPECT_EQ(read->Worksheets().Item(1).Cells(++row, 1), Value(written));
    EXPECT_TRUE(partOf(path(), "xl/worksheets/sheet1.xml").contains("<v>89.7</v>"));
}

TEST_F(WriterTest, DaysOfTheFirstWeeksComeBackAsTheyWere)
{
    const struct
    {
        QDateTime moment;
        QByteArray number; // of the file; none for a text
    } rows[] = {{{QDate(1900, 1, 15), QTime(0, 0), Qt::UTC}, "<v>15</v>"},
                {{QDate(1900, 1, 1), QTime(0, 0), Qt::UTC}, "<v>1</v>"},
                {{QDate(1900, 1, 1), QTime(12, 0), Qt::UTC}, "<v>1.5</v>"},
                {{QDate(1900, 2, 28), QTime(12, 0), Qt::UTC}, "<v>59.5</v>"},
                {{QDate(1900, 3, 1), QTime(0, 0), Qt::UTC}, "<v>61</v>"},
                {{QDate(2009, 7, 31), QTime(0, 0), Qt::UTC}, "<v>40025</v>"},
                {{QDate(1899, 12, 30), QTime(12, 0), Qt::UTC}, "<v>0.5</v>"},
                {{QDate(1899, 12, 31), QTime(0, 0), Qt::UTC}, {}},
                {{QDate(1899, 12, 29), QTime(23, 59), Qt::UTC}, {}}};
    int row = 0;
    for (const auto& expected : rows)
        sheet.setCell(++row, 1, expected.moment);
    const auto read = writtenAndRead();
    const QByteArray written = partOf(path(), "xl/worksheets/sheet1.xml");
    row = 0;
    for (const auto& expected : rows) {
        const Value cell = read->Worksheets().Item(1).Cells(++row, 1);
        EXPECT_EQ(cell.text(), Value(expected.moment).text());
        EXPECT_EQ(cell.kind(), expected.number.isEmpty() ? Value::Kind::Text : Value::Kind::Date);
        EXPECT_TRUE(written.contains(expected.number)) << expected.number.toStdString();
    }
}

TEST_F(WriterTest, TextsThatBeginLikeAFormulaAreMarkedAsTexts)
{
    const QString names[] = {u"=1+1"_s, u"+张三"_s, u"-李四"_s, u"@王五"_s, u" =A1"_s, u"＝1"_s};
    int row = 0;
    for (const QString& name : names)
        sheet.setCellText(++row, 1, name);
    sheet.setCellText(++row, 1, u"赵六"_s);
    sheet.setCellText(++row, 1, u"-1"_s);
    const auto read = writtenAndRead();
    const QByteArray written = partOf(path(), "xl/worksheets/sheet1.xml");
    EXPECT_EQ(written.count("s=\"1\" t=\"s\""), 6);
    EXPECT_TRUE(written.contains("<c r=\"A7\" t=\"s\">"));
    EXPECT_TRUE(written.contains("<c r=\"A8\"><v>-1</v></c>"));
    EXPECT_TRUE(partOf(path(), "xl/styles.xml").contains("<xf numFmtId=\"49\""));
    for (int i = 1; i <= 6; ++i)
        EXPECT_EQ(read->Worksheets().Item(1).Cells(i, 1), Value(names[i - 1]));
}

TEST_F(WriterTest, TextsComeBackToTheLetter)
{
    const QString texts[] = {u"<&\"'>"_s,
                             u" 前后空格 "_s,
                             u"行1\n行2"_s,
                             u"行1\r\n行2"_s,
                             u"制表\t符"_s,
                             u"_x0041_"_s,
                             u"_x004"_s,
                             u"__x6C49__x5F_"_s,
                             QString(QChar(1)) + u"控制"_s + QChar(0x1F) + QChar(0),
                             QString(QChar(0xFFFF)) + QChar(0xFFFE),
                             u"𠮷野家"_s};
    int row = 0;
    for (const QString& text : texts)
        sheet.setCell(++row, 1, text);
    const auto read = writtenAndRead();
    for (int i = 1; i <= row; ++i)
        EXPECT_EQ(read->Worksheets().Item(1).Cells(i, 1).text(), texts[i - 1]) << i;
}

TEST_F(WriterTest, HalfALetterDoesNotBreakTheFile)
{
    sheet.setCell(1, 1, QString(u"a"_s + QChar(0xD842) + u"b"_s));
    EXPECT_EQ(writtenAndRead()->Worksheets().Item(1).Cells(1, 1).text(), u"a?b"_s);
}

TEST_F(WriterTest, LongTextsAreCutAsACellCutsThem)
{
    sheet.setCell(1, 1, QString(40000, u'长'));
    sheet.setCell(2, 1, QString(QString(32766, u'a') + u"𠮷"_s));
    sheet.setCell(3, 1, QString(32767, QChar(1)));
    const auto read = writtenAndRead();
    Worksheet& page = read->Worksheets().Item(1);
    EXPECT_EQ(page.Cells(1, 1).text(), QString(32767, u'长'));
    EXPECT_EQ(page.Cells(2, 1).text(), QString(32766, u'a'));
    EXPECT_EQ(page.Cells(3, 1).text(), QString(32767 / 7, QChar(1)));
}

TEST_F(WriterTest, SizesHiddenPartsAndTheSheetInFrontAreKept)
{
    book.addSheet(u"隐藏"_s).setVisibility(Visibility::VeryHidden);
    book.addSheet(u"第三"_s).Activate();
    sheet.setCellText(1, 1, u"两\n行"_s);
    sheet.setRowHeight(2, 30);
    sheet.setRowState(700, excel::RowState::Hidden);
    sheet.setColumnWidth(1, 35, 4);
    sheet.setColumnWidth(2, 2, 0);
    sheet.setColumnWidth(4, 4, 5.75);
    const auto read = writtenAndRead();
    EXPECT_EQ(read->activeSheet().Name(), u"第三"_s);
    EXPECT_EQ(read->Worksheets().Item(2).visibility(), Visibility::Hidden);
    const Worksheet& page = read->Worksheets().Item(1);
    EXPECT_EQ(page.geometry().rowHeight(1), 27);
    EXPECT_EQ(page.geometry().rowHeight(2), 30);
    EXPECT_TRUE(page.geometry().isRowHidden(700));
    EXPECT_EQ(page.geometry().shownColumnWidth(2), 0);
    EXPECT_EQ(page.geometry().shownColumnWidth(1), 4);
    EXPECT_EQ(page.geometry().shownColumnWidth(4), 5.75);
    EXPECT_EQ(page.geometry().columns().size(), 5u);
}

TEST_F(WriterTest, WidthsStayHoweverOftenAFileIsSaved)
{
    const double widths[] = {8.38, 8.375, 4, 7.5, 0.5, 1, 20.0859375, 255, 1.0 / 3};
    int column = 0;
    for (const double width : widths) {
        ++column;
        sheet.setColumnWidth(column, column, width);
    }
    sheet.Cells().setHorizontalAlignment(excel::HorizontalAlignment::Center);
    auto read = writtenAndRead();
    EXPECT_TRUE(partOf(path(), "xl/worksheets/sheet1.xml")
                    .contains("<col min=\"4\" max=\"4\" width=\"8.125\" "));
    for (int i = 0; i < 3; ++i) {
        excel::writeXlsx(*read, path());
        read = excel::readWorkbook(path());
    }
    const excel::SheetGeometry& geometry = read->Worksheets().Item(1).geometry();
    column = 0;
    for (const double width : widths)
        EXPECT_NEAR(geometry.shownColumnWidth(++column), width, 1e-9) << column;
    EXPECT_NEAR(geometry.shownColumnWidth(++column), excel::SheetGeometry::standardColumnWidth,
                1e-9);
}

TEST_F(WriterTest, OnlyRowsOfAnotherHeightHaveOneOfTheirOwn)
{
    for (int row = 1; row <= 3; ++row)
        sheet.setCell(row, 1, row);
    sheet.setRowHeight(2, 30);
    sheet.setRowState(4, excel::RowState::Hidden);
    excel::writeXlsx(book, path());
    const QByteArray written = partOf(path(), "xl/worksheets/sheet1.xml");
    for (const char* tag : {"<row r=\"1\" spans=\"1:1\">", "<row r=\"3\" spans=\"1:1\">",
                            "<row r=\"2\" spans=\"1:1\" ht=\"30\" customHeight=\"1\">",
                            "<row r=\"4\" spans=\"1:1\" hidden=\"1\"/>",
                            "<sheetFormatPr defaultRowHeight=\"13.5\" customHeight=\"1\"/>"})
        EXPECT_TRUE(written.contains(tag)) << tag << written.toStdString();
}

TEST_F(WriterTest, APictureCoversTheCellsThatItLiesOver)
{
    const QString png = path(u"折线.png"_s);
    QFile file(png);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(samplePng());
    file.close();
    sheet.setColumnWidth(4, 4, 4);
    for (int row = 1; row <= 4; ++row)
        sheet.setCell(row, 1, row);
    excel::Picture& picture = sheet.insertPicture(png);
    // From the last points of two standard columns and rows to the end of a narrow one.
    picture.setLeft(2 * 54 - 3);
    picture.setTop(2 * 13.5 - 3);
    picture.setWidth(3 + 54 + 37 * 0.75);
    picture.setHeight(3 + 2 * 13.5);
    excel::writeXlsx(book, path());
    const QByteArray drawing = partOf(path(), "xl/drawings/drawing1.xml");
    // 68 and 14 pixels of 9525 units each.
    for (const char* place : {"<xdr:from><xdr:col>1</xdr:col><xdr:colOff>647700</xdr:colOff>"
                              "<xdr:row>1</xdr:row><xdr:rowOff>133350</xdr:rowOff></xdr:from>",
                              "<xdr:to><xdr:col>4</xdr:col><xdr:colOff>0</xdr:colOff>"
                              "<xdr:row>4</xdr:row><xdr:rowOff>0</xdr:rowOff></xdr:to>"})
        EXPECT_TRUE(drawing.contains(place)) << place << '\n' << drawing.toStdString();
}

TEST_F(WriterTest, AHiddenRowWithoutHeightIsOfTheUsualHeightOnceItIsShown)
{
    sheet.setRowHeight(3, 0);
    sheet.setRowState(3, excel::RowState::Hidden);
    sheet.setCell(4, 1, 1);
    const auto read = writtenAndRead();
    Worksheet& page = read->Worksheets().Item(1);
    EXPECT_TRUE(page.geometry().isRowHidden(3));
    page.setRowState(3, excel::RowState::Shown);
    EXPECT_EQ(page.geometry().shownRowHeight(3), excel::SheetGeometry::standardRowHeight);
}

TEST_F(WriterTest, AHiddenSheetIsNeverInFront)
{
    book.addSheet(u"可见"_s);
    sheet.setVisibility(Visibility::Hidden);
    EXPECT_EQ(writtenAndRead()->activeSheet().Name(), u"可见"_s);
    book.Worksheets().Item(2).setVisibility(Visibility::Hidden);
    EXPECT_EQ(writtenAndRead()->activeSheet().visibility(), Visibility::Visible);
}

TEST_F(WriterTest, WhatAMergeCoversStaysInTheFile)
{
    sheet.Range(1, 1, 2, 3).setMergeCells(true);
    for (int column = 1; column <= 4; ++column)
        sheet.setCell(1, column, u"标题"_s);
    const auto read = writtenAndRead();
    EXPECT_EQ(read->Worksheets().Item(1).merges().all(),
              std::vector<excel::CellRange>{(excel::CellRange{1, 1, 2, 3})});
    EXPECT_EQ(cellsOf(read->Worksheets().Item(1)),
              u"1,1 Text 标题\n1,2 Text 标题\n1,3 Text 标题\n1,4 Text 标题\n"_s);
}

TEST_F(WriterTest, MergesInEachOthersWayAreSettled)
{
    sheet.merges().add({1, 1, 3, 1});
    sheet.merges().add({3, 1, 3, 5});
    sheet.merges().add({1, 1, excel::lastGridRow, excel::lastGridColumn});
    sheet.setCell(2, 1, 1);
    sheet.setCell(3, 2, 2);
    const auto read = writtenAndRead();
    EXPECT_EQ(read->Worksheets().Item(1).merges().all(),
              std::vector<excel::CellRange>{(excel::CellRange{1, 1, 3, 1})});
    EXPECT_EQ(cellsOf(read->Worksheets().Item(1)), u"2,1 Double 1\n3,2 Double 2\n"_s);
}

TEST_F(WriterTest, AMergeOfTheWholeGridIsLeftOut)
{
    sheet.merges().add(excel::wholeGrid);
    sheet.setCell(2, 2, 7);
    const auto read = writtenAndRead();
    EXPECT_TRUE(read->Worksheets().Item(1).merges().all().empty());
    EXPECT_EQ(cellsOf(read->Worksheets().Item(1)), u"2,2 Double 7\n"_s);
}

TEST_F(WriterTest, AMergeThatIsTooLargeIsLeftOutWithoutTheOthers)
{
    sheet.merges().add({1, 1, 1300, excel::lastGridColumn});
    sheet.merges().add({1400, 1, 1400, 3});
    sheet.setCell(2, 1, u"第一个之下"_s);
    const auto read = writtenAndRead();
    EXPECT_EQ(read->Worksheets().Item(1).merges().all(),
              std::vector<excel::CellRange>{(excel::CellRange{1400, 1, 1400, 3})});
    EXPECT_EQ(cellsOf(read->Worksheets().Item(1)), u"2,1 Text 第一个之下\n"_s);
}

TEST_F(WriterTest, AFilterStaysSwitchedOn)
{
    sheet.setAutoFilter({1, 1, 20, 3});
    EXPECT_EQ(writtenAndRead()->Worksheets().Item(1).autoFilter(), (excel::CellRange{1, 1, 20, 3}));
}

TEST_F(WriterTest, AWorkbookWithoutSheetsGivesAFileThatOpens)
{
    Workbook empty;
    excel::writeXlsx(empty, path());
    EXPECT_EQ(excel::readWorkbook(path())->Worksheets().Count(), 1);
}

TEST(WriterNames, AreMadeLegal)
{
    const QString longName(40, u'长');
    const struct
    {
        QStringList names;
        QStringList legal;
    } rows[] = {
        {{u"期中T分(理)"_s, u"Sheet2"_s}, {u"期中T分(理)"_s, u"Sheet2"_s}},
        {{u"a:b\\c/d?e*f[g]"_s}, {u"a_b_c_d_e_f_g_"_s}},
        {{u"'引'"_s, u"it's"_s}, {u"_引_"_s, u"it's"_s}},
        {{QString(), u"Sheet"_s}, {u"Sheet"_s, u"Sheet_2"_s}},
        {{u"一"_s, u"一"_s, u"一_2"_s}, {u"一"_s, u"一_2"_s, u"一_2_2"_s}},
        {{u"Abc"_s, u"aBC"_s}, {u"Abc"_s, u"aBC_2"_s}},
        {{u"Été"_s, u"éTÉ"_s}, {u"Été"_s, u"éTÉ_2"_s}},
        {{longName, longName}, {QString(31, u'长'), QString(29, u'长') + u"_2"_s}},
        {{QString(30, u'a') + u"𠮷"_s}, {QString(30, u'a')}},
        {{u"History"_s}, {u"History_"_s}},
        {{QString(QChar(1)) + u"x\n"_s}, {u"_x_"_s}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(excel::legalSheetNames(row.names), row.legal);
}

TEST_F(WriterTest, SheetsWithImpossibleNamesGiveAFileThatOpens)
{
    for (const QString& name : {u"成绩"_s, u"a/b"_s, QString(), u"'"_s, QString(40, u'名')})
        book.addSheet(name);
    const auto read = writtenAndRead();
    QStringList names;
    for (int i = 1; i <= read->Worksheets().Count(); ++i)
        names.append(read->Worksheets().Item(i).Name());
    EXPECT_EQ(names, (QStringList{u"成绩"_s, u"成绩_2"_s, u"a_b"_s, u"Sheet"_s, u"_"_s,
                                  QString(31, u'名')}));
}

TEST_F(WriterTest, AnOlderFileIsReplacedAndNothingElseIsLeft)
{
    QFile old(path());
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("older");
    old.close();
    old.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    sheet.setCell(1, 1, 7);
    EXPECT_EQ(writtenAndRead()->Worksheets().Item(1).Cells(1, 1), Value(7.0));
    EXPECT_EQ(files(), QStringList{u"a.xlsx"_s});
    EXPECT_FALSE(QFile::permissions(path()) & QFile::ReadOther);
    excel::writeXlsx(book, path(u"b.xlsx"_s));
    EXPECT_TRUE(QFile::permissions(path(u"b.xlsx"_s)) & QFile::ReadGroup);
}

TEST_F(WriterTest, ALinkStaysALink)
{
    excel::writeXlsx(book, path());
    ASSERT_TRUE(QFile::link(path(), path(u"link.xlsx"_s)));
    sheet.setCell(1, 1, 7);
    excel::writeXlsx(book, path(u"link.xlsx"_s));
    EXPECT_TRUE(QFileInfo(path(u"link.xlsx"_s)).isSymLink());
    EXPECT_EQ(excel::readWorkbook(path())->Worksheets().Item(1).Cells(1, 1), Value(7.0));
}

TEST_F(WriterTest, PlacesThatTakeNoFileAreTold)
{
    ASSERT_TRUE(QDir().mkdir(path(u"夹"_s)));
    EXPECT_EQ(writeError(book, path(u"夹"_s)),
              u"无法保存 "_s + path(u"夹"_s) + u"：这是一个文件夹。"_s);
    EXPECT_EQ(writeError(book, path(u"没有/a.xlsx"_s)),
              u"无法保存 "_s + path(u"没有/a.xlsx"_s) + u"：文件夹不存在。"_s);
    EXPECT_EQ(writeError(book, u"/proc/a.xlsx"_s),
              u"无法写入文件 /proc/a.xlsx（文件夹不存在）。"_s);
    const QString longName = path(QString(100, u'长') + u".xlsx"_s);
    EXPECT_EQ(writeError(book, longName), u"无法写入文件 "_s + longName + u"（文件名太长）。"_s);
    EXPECT_EQ(files(), QStringList{u"夹"_s});
}

TEST_F(WriterTest, WhatAKilledProgramLeftOfASaveGoesWithTheNextOne)
{
    const pid_t child = fork();
    if (child == 0) {
        const runtime::UnfinishedFile file(path());
        _exit(0); // without removing it
    }
    waitpid(child, nullptr, 0);
    ASSERT_EQ(files().size(), 1);
    excel::writeXlsx(book, path());
    EXPECT_EQ(files(), QStringList{u"a.xlsx"_s});
}

TEST_F(WriterTest, AFullDiskIsToldAndTheOlderFileStays)
{
    for (int row = 1; row <= 5000; ++row) {
        sheet.setCell(row, 1, u"学生%1"_s.arg(row));
        sheet.setCell(row, 2, row * 0.37);
    }
    excel::writeXlsx(book, path());
    // From the first bytes on and in the scratch files of the parts.
    for (const rlim_t size : {1, 1000, 20000, 60000, 100000})
        expectRefusedByADiskOf(size, u"无法保存 %1：写文件时出错，磁盘可能已满或已断开。"_s);
}

TEST_F(WriterTest, ADiskThatIsFullAtTheVeryEndIsToldToo)
{
    // Many sheets without texts: no scratch file is as large as the whole.
    for (int number = 1; number <= 40; ++number) {
        Worksheet& page = book.addSheet(u"第%1页"_s.arg(number));
        for (int row = 1; row <= 300; ++row) {
            for (int column = 1; column <= 5; ++column)
                page.setCell(row, column, std::sqrt(number * row + column));
        }
    }
    excel::writeXlsx(book, path());
    expectRefusedByADiskOf(rlim_t(QFileInfo(path()).size()) - 1,
                           u"无法写入文件 %1（磁盘已满，或文件的大小受到限制）。"_s);
}
