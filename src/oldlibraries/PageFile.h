#pragma once

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

    /// Throws OldFileError if the file cannot be read, or is no whole number of pages.
    explicit PageFile(const QString& path);

    const QString& path() const { return m_path; }
    quint32 pageCount() const { return m_pageCount; }
    /// Bytes.
    qint64 size() const { return m_size; }

    /// The bytes of a page, counted from 0; all of them. Throws OldFileError.
    QByteArray page(quint32 number);

    /// Throws OldFileError if somebody changed the file since it was opened.
    void checkUnchanged() const;

    /// Throws OldFileError: the file ends ahead of what it points to.
    [[noreturn]] void refuseCutOff() const;
    /// Throws OldFileError: something in the file is not as it has to be. `what` says what, as the
    /// end of a sentence.
    [[noreturn]] void refuseDamaged(const QString& what) const;

private:
    QString m_path;
    QFile m_file;
    qint64 m_size = 0;
    quint32 m_pageCount = 0;
    QDateTime m_changed;
};

} // namespace oldlibraries
