#include <gtest/gtest.h>

#include <QFile>

#include "support/PrintQString.h"
#include "workbooks/BookFiles.h"

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 nowhere = 0xFFFFFFFF;
constexpr quint32 end = 0xFFFFFFFE;
constexpr quint32 tableSector = 0xFFFFFFFD;
constexpr int sector = 512;
constexpr int smallSector = 64;

QByteArray padded(const QByteArray& bytes, qsizetype size)
{
    return bytes.leftJustified((bytes.size() + size - 1) / size * size, '\0');
}

/// A table in which the sectors from `first` on are one chain of `count`.
QByteArray chain(QByteArray table, quint32 first, qsizetype count)
{
    for (qsizetype i = 1; i < count; ++i)
        table += u32(first + quint32(i));
    table += u32(end);
    return table.leftJustified(sector, '\xFF');
}

QByteArray entry(const QByteArray& name, int type, quint32 child, quint32 start, qsizetype size)
{
    QByteArray letters;
    for (const char letter : name)
        letters += u16(letter);
    letters += u16(0);
    return padded(letters, smallSector) + u16(int(letters.size())) + u8(type) + u8(1) + u32(nowhere)
           + u32(nowhere) + u32(child) + QByteArray(36, '\0') + u32(start) + u32(quint32(size))
           + u32(0);
}

/// A container whose only stream is short, so that it lies in the stream of small sectors, behind
/// one that is not its own.
QByteArray withShortStream(const QByteArray& stream)
{
    const QByteArray content = padded(stream, smallSector);
    const QByteArray small = QByteArray(smallSector, 'x') + content;
    const QByteArray container = padded(small, sector);
    const QByteArray table = u32(tableSector) + u32(end) + u32(end);
    const QByteArray head = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1" + QByteArray(16, '\0') + u16(0x3E)
                            + u16(3) + u16(0xFFFE) + u16(9) + u16(6) + QByteArray(10, '\0') + u32(1)
                            + u32(1) + u32(0) + u32(4096) + u32(2) + u32(1) + u32(end) + u32(0)
                            + u32(0);
    return head.leftJustified(sector, '\xFF') + chain(table, 3, container.size() / sector)
           + padded(entry("Root Entry", 5, 1, 3, small.size())
                        + entry("Workbook", 2, nowhere, 1, stream.size()),
                    sector)
           + chain(u32(end), 1, content.size() / smallSector) + container;
}

/// A container of sectors so small that its tables do not fit into the list in the header; three of
/// the sectors lie in the header itself.
QByteArray withManyTables(const QByteArray& stream)
{
    constexpr int small = 128;
    constexpr int words = small / 4;
    constexpr qsizetype inHeader = 109;
    constexpr quint32 firstTable = 3;
    const qsizetype contents = (stream.size() + small - 1) / small;
    const qsizetype tables = (contents + 256) / words;
    const qsizetype lists = (tables - inHeader + words - 2) / (words - 1);
    const quint32 firstList = firstTable + quint32(tables);
    const quint32 directory = firstList + quint32(lists);
    const quint32 start = directory + 2;

    QByteArray table = QByteArray(qsizetype(directory) * 4, '\xFF') + u32(directory + 1) + u32(end);
    for (qsizetype i = 1; i < contents; ++i)
        table += u32(start + quint32(i));
    table += u32(end);

    QByteArray head = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1" + QByteArray(16, '\0') + u16(0x3E) + u16(3)
                      + u16(0xFFFE) + u16(7) + u16(6) + QByteArray(10, '\0') + u32(quint32(tables))
                      + u32(directory) + u32(0) + u32(4096) + u32(end) + u32(0) + u32(firstList)
                      + u32(quint32(lists));
    QByteArray list;
    for (qsizetype i = 0; i < tables; ++i) {
        QByteArray& place = i < inHeader ? head : list;
        // The last word of a list leads to the next one.
        if (list.size() % small == small - 4)
            list += u32(firstList + quint32(list.size() / small) + 1);
        place += u32(firstTable + quint32(i));
    }
    return head + table.leftJustified(tables * small, '\xFF')
           + list.leftJustified(lists * small, '\xFF') + entry("Root Entry", 5, 1, end, 0)
           + entry("Workbook", 2, nowhere, start, stream.size()) + padded(stream, small);
}

} // namespace

TEST(CompoundFile, AShortStreamIsPutTogetherFromSmallSectors)
{
    XlsRecords cells;
    for (int row = 0; row < 60; ++row)
        cells.add(0x203, u16(row) + u16(0) + u16(0) + real(row));
    const QByteArray stream = XlsRecords::book(0x600, {}, cells);
    ASSERT_GT(stream.size(), 2 * sector);
    const BookFolder folder;
    const auto book = excel::readWorkbook(folder.write(u"短.xls"_s, withShortStream(stream)));
    const excel::Worksheet& sheet = book->Worksheets().Item(1);
    EXPECT_EQ(sheet.lastUsedRow(), 60);
    EXPECT_EQ(sheet.Cells(60, 1).text(), u"59"_s);
}

TEST(CompoundFile, WithoutSmallSectorsTheirTableMayBeginNowhere)
{
    QFile file(fixture(u"scores.xls"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray bytes = file.readAll();
    ASSERT_EQ(bytes.mid(60, 8), u32(end) + u32(0)) << "it has none";
    const BookFolder folder;
    const QString before =
        cellsOf(excel::readWorkbook(folder.write(u"a.xls"_s, bytes))->Worksheets().Item(1));
    bytes.replace(60, 4, u32(nowhere));
    EXPECT_EQ(cellsOf(excel::readWorkbook(folder.write(u"b.xls"_s, bytes))->Worksheets().Item(1)),
              before);
}

TEST(CompoundFile, TablesThatTheHeaderCannotListAreFoundBehindIt)
{
    constexpr int rows = 32000;
    XlsRecords cells;
    for (int row = 0; row < rows; ++row)
        cells.add(0x203, u16(row) + u16(0) + u16(0) + real(row));
    const QByteArray file = withManyTables(XlsRecords::book(0x600, {}, cells));
    const BookFolder folder;
    const auto book = excel::readWorkbook(folder.write(u"长.xls"_s, file));
    const excel::Worksheet& sheet = book->Worksheets().Item(1);
    EXPECT_EQ(sheet.lastUsedRow(), rows);
    EXPECT_EQ(sheet.Cells(rows, 1).text(), QString::number(rows - 1));
}
