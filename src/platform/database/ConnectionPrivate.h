#pragma once

#include <sqlite3.h>

#include <QHash>

#include "platform/database/Connection.h"

namespace database {

struct CloseHandle
{
    void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
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

struct Connection::Private
{
    Handle handle;
    QString path;
    FileShape shape;
    FileIdentity identity;
    QHash<QString, std::shared_ptr<const TableColumns>> tables;
    /// Columns of tables that were changed since; a caller may still be walking over them.
    std::vector<std::shared_ptr<const TableColumns>> formerTables;
    QHash<QString, std::shared_ptr<Statement>> statements;
    int batchDepth = 0;
    /// A write of the running batch failed so that it cannot be completed.
    bool batchFailed = false;
    bool indexesChecked = false;
    UserLimits userLimits;
};

/// Opens the file, sets the connection up and checks that it is one of ours. Throws Error.
Handle openedFile(const QString& path, const FileShape& shape);

/// Adds `stdev`, the sample standard deviation.
void addAggregates(sqlite3* handle);

/// Holds a typed statement back from what leaves the library, as long as it lives.
class UserGuard
{
public:
    UserGuard(sqlite3* handle, Trust trust);
    ~UserGuard();
    UserGuard(const UserGuard&) = delete;
    UserGuard& operator=(const UserGuard&) = delete;

private:
    sqlite3* m_handle;
};

} // namespace database
