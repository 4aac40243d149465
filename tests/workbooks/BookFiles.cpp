#include "workbooks/BookFiles.h"

#include <bit>

#include <QtEndian>

#include <zip.h>

#include "workbooks/readers/ZipArchive.h"

using namespace Qt::StringLiterals;

namespace {

const char* const kindNames[] = {"Null", "Integer", "Single", "Double", "Boolean",
                                 "Date", "Text",    "Error",  "Binary"};

template <typename Number> QByteArray littleEndian(Number number)
{
    QByteArray bytes(sizeof(Number), Qt::Uninitialized);
    qToLittleEndian(number, bytes.data());
    return bytes;
}

} // namespace

QString fixture(const QString& name)
{
    return QStringLiteral(YUNSHAN_FIXTURES "/") + name;
}

QString sentenceOf(const QString& path)
{
    try {
        excel::readWorkbook(path);
    } catch (const excel::ReadError& error) {
        return QString(error.description()).replace(path, u"FILE"_s);
    }
    return {};
}

QByteArray partOf(const QString& path, const QByteArray& part)
{
    excel::Budget budget;
    QByteArray content;
    excel::ZipArchive(path, budget).read(part, 1'000'000, [&](std::string_view piece) {
        content.append(piece.data(), qsizetype(piece.size()));
    });
    return content;
}

QString cellsOf(const excel::Worksheet& sheet)
{
    QString text;
    for (int number = 1; number <= sheet.lastUsedRow(); ++number) {
        const excel::Row* row = sheet.table().row(number);
        if (row == nullptr)
            continue;
        for (const excel::Cell& cell : row->cells)
            text += u"%1,%2 %3 %4\n"_s.arg(number)
                        .arg(cell.column())
                        .arg(QLatin1String(kindNames[int(cell.kind())]), cell.value().text());
    }
    return text;
}

QString BookFolder::write(const QString& name, const QByteArray& bytes) const
{
    QFile file(m_folder.filePath(name));
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
    return file.fileName();
}

QString BookFolder::writeZip(const QString& name, const Parts& parts) const
{
    const QString path = m_folder.filePath(name);
    zip_t* archive =
        zip_open(QFile::encodeName(path).constData(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    for (const auto& [part, bytes] : parts)
        zip_file_add(archive, part.constData(),
                     zip_source_buffer(archive, bytes.constData(), zip_uint64_t(bytes.size()), 0),
                     0);
    zip_close(archive);
    return path;
}

BookFolder::Parts BookFolder::partsWith(const QByteArray& sheetXml)
{
    return {{"_rels/.rels", "<Relationships><Relationship Id='r1' Type='x/officeDocument'"
                            " Target='xl/workbook.xml'/></Relationships>"},
            {"xl/workbook.xml", "<workbook xmlns:r='r'><sheets><sheet name='S' sheetId='1'"
                                " r:id='r1'/></sheets></workbook>"},
            {"xl/_rels/workbook.xml.rels",
             "<Relationships><Relationship Id='r1' Type='x/worksheet' Target='sheets/a.xml'/>"
             "<Relationship Id='r2' Type='x/sharedStrings' Target='texts.xml'/>"
             "<Relationship Id='r3' Type='x/styles' Target='styles.xml'/></Relationships>"},
            {"xl/sheets/a.xml", sheetXml}};
}

std::unique_ptr<excel::Workbook> BookFolder::readRows(const QByteArray& rows) const
{
    return excel::readWorkbook(writeZip(
        u"rows.xlsx"_s, partsWith("<worksheet><sheetData>" + rows + "</sheetData></worksheet>")));
}

XlsRecords& XlsRecords::add(int type, const QByteArray& bytes)
{
    m_bytes += u16(type) + u16(int(bytes.size())) + bytes;
    return *this;
}

XlsRecords& XlsRecords::bof(int version, int type)
{
    return add(0x809, u16(version) + u16(type) + u32(0) + u32(0) + u32(0));
}

XlsRecords& XlsRecords::boundSheet(qsizetype place, const QByteArray& name)
{
    return add(0x85, u32(quint32(place)) + u16(0) + name);
}

QByteArray XlsRecords::book(int version, const XlsRecords& globals, const XlsRecords& cells)
{
    const QByteArray name = version == 0x600 ? QByteArray("\x01\x00S", 3) : QByteArray("\x01S");
    XlsRecords head;
    head.bof(version, 5);
    const qsizetype sheet = head.bytes().size() + globals.bytes().size() + 4 + 6 + name.size() + 4;
    XlsRecords tail;
    tail.boundSheet(sheet, name).eof().bof(version, 0x10);
    return head.bytes() + globals.bytes() + tail.bytes() + cells.bytes()
           + XlsRecords().eof().bytes();
}

QByteArray u8(int number)
{
    return QByteArray(1, char(number));
}

QByteArray u16(int number)
{
    return littleEndian(quint16(number));
}

QByteArray u32(quint32 number)
{
    return littleEndian(number);
}

QByteArray real(double number)
{
    return littleEndian(std::bit_cast<quint64>(number));
}
