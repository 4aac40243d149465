#pragma once

#include <memory>

#include <QString>
#include <QStringList>

struct sqlite3;

namespace database {

/// What makes a file one of ours: the tables that it must have, and statements for the indexes that
/// are added at the first write ("create index if not exists …").
struct FileShape
{
    QStringList tables;
    QStringList indexes;
};

struct CloseHandle
{
    void operator()(sqlite3* handle) const;
};

using Handle = std::unique_ptr<sqlite3, CloseHandle>;

/// Which file stands behind a path, to notice that it was moved away or replaced.
struct FileIdentity
{
    quint64 device = 0;
    quint64 number = 0;

    static FileIdentity of(const QString& path);
    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

/// Opens the file, sets the connection up and checks that it is one of ours. Throws Error.
Handle openedFile(const QString& path, const FileShape& shape);

/// True if another connection reads or writes the library file at this moment, in this program or
/// in another one; one that merely has the file open is not noticed. A missing file, or one that is
/// no library, is not in use.
bool isInUse(const QString& path);

} // namespace database
