#pragma once

#include <map>
#include <memory>

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include "workbooks/readers/Reader.h"

/// Full path of a fixture.
QString fixture(const QString& name);

/// The sentence that reading a file gives, with the path replaced by "FILE"; empty if it can be
/// read.
QString sentenceOf(const QString& path);

/// A part of a workbook file, unpacked.
QByteArray partOf(const QString& path, const QByteArray& part);

/// Cells as "row,column kind text" lines, in sheet order; shows what was read at a glance.
QString cellsOf(const excel::Worksheet& sheet);

/// A folder with files for one test.
class BookFolder
{
public:
    using Parts = std::map<QByteArray, QByteArray>;

    /// Writes a file and gives its path.
    QString write(const QString& name, const QByteArray& bytes) const;

    /// Writes a zip file with these parts.
    QString writeZip(const QString& name, const Parts& parts) const;

    /// Parts of a workbook with one sheet of that XML, and with nothing that it does not need.
    static Parts partsWith(const QByteArray& sheetXml);

    /// Reads a workbook whose only sheet has this between <sheetData> and </sheetData>.
    std::unique_ptr<excel::Workbook> readRows(const QByteArray& rows) const;

private:
    QTemporaryDir m_folder;
};

/// An .xls stream, record by record.
class XlsRecords
{
public:
    XlsRecords& add(int type, const QByteArray& bytes);
    XlsRecords& bof(int version, int type);
    XlsRecords& eof() { return add(0x0A, {}); }
    /// BOUNDSHEET, visible, for a sheet that begins at `place`.
    XlsRecords& boundSheet(qsizetype place, const QByteArray& name);

    const QByteArray& bytes() const { return m_bytes; }

    /// A workbook of one sheet "S": globals between BOF and BOUNDSHEET, cells in the sheet.
    static QByteArray book(int version, const XlsRecords& globals, const XlsRecords& cells);

private:
    QByteArray m_bytes;
};

/// Little-endian bytes of whole numbers, 1, 2 and 4 bytes wide, and of a double.
QByteArray u8(int number);
QByteArray u16(int number);
QByteArray u32(quint32 number);
QByteArray real(double number);
