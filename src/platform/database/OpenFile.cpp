#include "platform/database/OpenFile.h"

#include <sqlite3.h>

#include <QFileInfo>

#include "platform/database/Aggregates.h"
#include "platform/database/Error.h"

namespace database {

namespace {

using namespace Qt::StringLiterals;

/// Bytes; photos stay far below it.
constexpr int longestValue = 100'000'000;
/// Small blocks that the engine keeps at hand. Kept statements hold on to some, and what a row
/// takes and gives back must still find room among them.
constexpr int blockSize = 1200;
constexpr int blockCount = 500;

void setUp(sqlite3* handle)
{
    sqlite3_db_config(handle, SQLITE_DBCONFIG_LOOKASIDE, nullptr, blockSize, blockCount);
    sqlite3_busy_timeout(handle, 1500);
    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, longestValue);
    sqlite3_extended_result_codes(handle, 1);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
    runOnEngine(handle,
                "PRAGMA synchronous=FULL; PRAGMA temp_store=MEMORY; PRAGMA cache_size=-24000;");
}

} // namespace

void CloseHandle::operator()(sqlite3* handle) const
{
    sqlite3_close_v2(handle);
}

Handle openedFile(const QString& path, const FileShape& shape)
{
    checkHeader(path);
    sqlite3* raw = nullptr;
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &raw,
                                     SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    Handle handle(raw);
    if (code != SQLITE_OK)
        throw engineError(raw);
    setUp(raw);
    addAggregates(raw);
    checkTables(raw, path, shape);
    // A file that another program left with a log beside it becomes one file again, but only one of
    // ours: what is no library stays as it is.
    runOnEngine(raw, "PRAGMA journal_mode=DELETE");
    return handle;
}

bool isInUse(const QString& path)
{
    if (!QFileInfo(path).isFile())
        return false;
    try {
        const Handle handle = openedFile(path, {});
        // Closing the connection takes the transaction back.
        const int code =
            sqlite3_exec(handle.get(), "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr) & 0xff;
        return code == SQLITE_BUSY;
    } catch (const Error& error) {
        return error.failure() == Failure::Locked;
    }
}

} // namespace database
