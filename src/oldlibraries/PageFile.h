#pragma once

#include <unordered_map>

#include <QByteArray>
#include <QDateTime>
#include <QFile>

namespace oldlibraries {

/// The number of a page that rows and long values point to, and the row on it.
struct RowPlace
{
    quint32 page = 0;
    int row = 0;

    /// From the four bytes of a pointer: the row in the lowest one.
    static RowPlace fromPointer(quint32 pointer) { return {pointer >> 8, int(pointer & 0xFF)}; }
};

/// The pages of a file of the old engine, read one by one: the file is never written, never locked
/// and never held in memory. No page outside of the file is given.
class PageFile
{
public:
    static constexpr int pageSize = 4096; ///< bytes

    /// Throws OldFileError if the file cannot be read.
    explicit PageFile(const QString& path);

    const QString& path() const { return m_path; }
    quint32 pageCount() const { return m_pageCount; }
    /// Bytes.
    qint64 size() const { return m_size; }

    /// At most as many bytes as a page has, from the front of the file. Throws OldFileError.
    QByteArray firstBytes();
    /// The bytes of a page, counted from 0; all of them. Throws OldFileError.
    QByteArray page(quint32 number);

    /// Counts the bytes to which a table's pointers have led in one pass over it. In a sound file
    /// no two pointers lead to the same bytes, so all of them together lead to no more than it has:
    /// one that makes more of itself is refused. `pointers` says which of a table's pointers it is.
    /// Throws OldFileError.
    void countReached(quint64 pointers, qint64 bytesInPass);

    /// Has every page come from the file again, also those that were just read.
    void readAnew() { m_ahead.clear(); }

    /// Throws OldFileError if somebody changed the file since it was opened.
    void checkUnchanged() const;

    /// Throws OldFileError: the file ends ahead of what it points to.
    [[noreturn]] void refuseCutOff() const;
    /// Throws OldFileError: something in the file is not as it has to be. `what` says what, as the
    /// end of a sentence.
    [[noreturn]] void refuseDamaged(const QString& what) const;

private:
    QByteArray read(qint64 place, qint64 size);
    bool fill(QByteArray& bytes, qint64 place);
    void readAhead(quint32 number);

    QString m_path;
    QFile m_file;
    qint64 m_size = 0;
    quint32 m_pageCount = 0;
    QDateTime m_changed;
    /// Pages that were read with the one before them, from this one on.
    QByteArray m_ahead;
    quint32 m_aheadFrom = 0;
    quint32 m_expected = 0;
    std::unordered_map<quint64, qint64> m_reached; // bytes in the longest pass
    qint64 m_reachedByAll = 0;
};

} // namespace oldlibraries
