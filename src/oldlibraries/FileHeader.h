#pragma once

#include <QByteArray>
#include <QString>

namespace oldlibraries {

/// What the first page of a file of the old engine says.
struct FileHeader
{
    /// The version of the format that score libraries have.
    static constexpr int libraryVersion = 1;

    int version = 0;
    /// What the other pages are encrypted with; 0 for files that are not.
    quint32 pageKey = 0;
    /// The password of the database, at most 20 characters; "" for none. The pages do not depend on
    /// it.
    QString password;

    /// Reads the first page, of which nothing is missing.
    static FileHeader fromPage(const QByteArray& page);
};

/// The bytes of a page with their encryption undone, or done. The key is that of the header with
/// the page's number upon it.
QByteArray withKey(const QByteArray& page, quint32 key);

/// True if the file is one of the old engine, by its first bytes; false for all that cannot be
/// read.
bool isOldLibrary(const QString& path);

} // namespace oldlibraries
