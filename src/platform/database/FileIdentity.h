#pragma once

#include <QString>

namespace database {

/// Which file stands behind a path, to notice that it was moved away or replaced.
struct FileIdentity
{
    quint64 device = 0;
    quint64 number = 0;

    static FileIdentity of(const QString& path);
    /// Throws Error unless this file still stands behind the path.
    void check(const QString& path) const;
    /// Throws Error if what was just written went to a file that stands there no more.
    void checkWritten(const QString& path) const;
    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

/// True if both paths lead to one file, by whatever links; false where none stands.
bool isSameFile(const QString& path, const QString& other);

/// True if both paths name one place for a file, by whatever links to its folder, whether or not a
/// file stands there.
bool isSamePlace(const QString& path, const QString& other);

} // namespace database
