#pragma once

#include <vector>

#include <QByteArray>
#include <QFile>
#include <QtEndian>

namespace support {

/// Puts a number behind bytes, or into them, the lowest byte first.
template <typename Number> void append(QByteArray& bytes, Number number)
{
    const Number little = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}
template <typename Number> void put(QByteArray& bytes, qsizetype place, Number number)
{
    qToLittleEndian(number, bytes.data() + place);
}

/// The pages of a file of the old engine while it is made. They are numbered in the order in which
/// they are asked for and written one by one, so that none but the open ones is held in memory.
class OldPageSink
{
public:
    /// `key` encrypts all pages but the first; 0 for none. Throws runtime::Error.
    OldPageSink(const QString& path, quint32 key);

    /// The number of the first of so many new pages.
    quint32 newPages(quint32 count = 1);
    /// `page` is filled up with zeros. Throws runtime::Error.
    void write(quint32 number, QByteArray page);
    /// Throws runtime::Error.
    void close();

private:
    void check(bool isWritten) const;

    QFile m_file;
    quint32 m_key;
    quint32 m_pages = 0;
};

/// A page of rows as it fills.
class OldRowsPage
{
public:
    /// What is said of a row beside its bytes.
    enum Flag : quint16 {
        Stored = 0,
        Moved = 0x4000,     ///< the bytes are a pointer
        MovedHere = 0x8000, ///< found by such a pointer alone
        Deleted = 0xC000
    };

    OldRowsPage(quint32 number, quint32 owner);

    quint32 number() const { return m_number; }
    int rowCount() const { return m_rowCount; }
    bool hasRoom(qsizetype size) const;
    /// The pointer to the new row.
    quint32 add(const QByteArray& row, Flag flag = Stored);
    const QByteArray& bytes() const { return m_bytes; }

private:
    qsizetype room() const;

    quint32 m_number;
    int m_rowCount = 0;
    qsizetype m_rowsBegin;
    QByteArray m_bytes;
};

/// How it is written which pages a table uses.
enum class OldMapForm {
    Usual,      ///< bits for a small table, pages of bits for a large one
    Bits,       ///< in one row; no more than 30,000 pages
    PagesOfBits ///< which have pages of their own
};

/// The row that says that these pages are used, which are given in ascending order. Pages of bits
/// are written.
QByteArray oldUsedPages(OldPageSink& sink, const std::vector<quint32>& pages, OldMapForm form);

} // namespace support
