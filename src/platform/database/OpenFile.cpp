#include "platform/database/OpenFile.h"

#include <sqlite3.h>

#include <QFile>
#include <QFileInfo>

#include "platform/database/Aggregates.h"
#include "platform/database/Error.h"
#include "platform/runtime/UnfinishedFile.h"

namespace database {

namespace {

using namespace Qt::StringLiterals;

/// Bytes; photos stay far below it.
constexpr int longestValue = 100'000'000;
/// Small blocks that the engine keeps at hand. Kept statements hold on to some, and what a row
/// takes and gives back must still find room among them.
constexpr int blockSize = 1200;
constexpr int blockCount = 500;
constexpr int busyMilliseconds = 1500;

void setUp(sqlite3* handle)
{
    sqlite3_db_config(handle, SQLITE_DBCONFIG_LOOKASIDE, nullptr, blockSize, blockCount);
    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, longestValue);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    // Nothing that a file brings along runs by itself.
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
    runOnEngine(handle,
                "PRAGMA synchronous=FULL; PRAGMA temp_store=MEMORY; PRAGMA cache_size=-24000;");
}

/// Has the engine take back a write that was broken off, which may have torn the first page. What
/// comes of it, the file shows.
void takeBackBrokenWrite(const QString& path)
{
    sqlite3_exec(rawFile(path).get(), "select count(*) from sqlite_master", nullptr, nullptr,
                 nullptr);
}

/// The header is judged before the engine touches the file, unless a journal can mend it.
void checkMendedHeader(const QString& path)
{
    try {
        checkHeader(path);
    } catch (const Error&) {
        if (!isJournalOf(path))
            throw;
        takeBackBrokenWrite(path);
        checkHeader(path);
    }
}

/// Bytes of a path, the ending of a journal's name included, that the engine has room for.
constexpr qsizetype longestPath = 500;

} // namespace

void CloseHandle::operator()(sqlite3* handle) const
{
    sqlite3_close_v2(handle);
}

QString realPath(const QString& path)
{
    const QString real = QFileInfo(path).canonicalFilePath();
    return real.isEmpty() ? path : real;
}

void checkPathLength(const QString& path)
{
    if (QFile::encodeName(QFileInfo(path).absoluteFilePath()).size() > longestPath)
        throw Error(
            Failure::Other,
            u"%1 的路径太长（超过 %2 字节），请把它移到路径较短的文件夹里。"_s.arg(path).arg(
                longestPath));
}

Handle rawFile(const QString& path)
{
    checkPathLength(path);
    const QByteArray name = QFile::encodeName(QFileInfo(path).absoluteFilePath());
    sqlite3* raw = nullptr;
    const int code = sqlite3_open_v2(name.constData(), &raw,
                                     SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    Handle handle(raw);
    if (code != SQLITE_OK)
        throw engineError(raw);
    sqlite3_busy_timeout(raw, busyMilliseconds);
    sqlite3_extended_result_codes(raw, 1);
    return handle;
}

Handle openedFile(const QString& path, const FileShape& shape)
{
    const QString place = realPath(path);
    checkMendedHeader(place);
    Handle handle = rawFile(place);
    sqlite3* raw = handle.get();
    setUp(raw);
    addAggregates(raw);
    checkTables(raw, place, shape);
    // A file that another program left with a log beside it becomes one file again, but only one of
    // ours: what is no library stays as it is.
    runOnEngine(raw, "PRAGMA journal_mode=DELETE");
    return handle;
}

FileLock::FileLock(const QString& path, Against against) : m_handle(openedFile(path, {}))
{
    if (sqlite3_db_readonly(m_handle.get(), "main") == 1)
        throw Error(Failure::ReadOnly, u"成绩库是只读的，不能写入。"_s);
    // Closing the connection takes the transaction back.
    runOnEngine(m_handle.get(),
                against == Against::Writers ? "BEGIN IMMEDIATE" : "BEGIN EXCLUSIVE");
}

std::optional<FileLock> heldForReplacing(const QString& target)
{
    if (!QFileInfo::exists(target))
        return {};
    runtime::checkReplaceable(target);
    try {
        return std::make_optional<FileLock>(target, FileLock::Against::Everybody);
    } catch (const Error& error) {
        if (error.failure() == Failure::Locked)
            throw inUseError(target);
        if (error.failure() != Failure::NoLibrary && error.failure() != Failure::Damaged)
            throw;
    }
    return {};
}

runtime::Error inUseError(const QString& target)
{
    return runtime::Error(u"文件 %1 正在使用，不能覆盖。"_s.arg(target));
}

void removeLogs(const QString& path)
{
    for (const QString& ending : {u"-journal"_s, u"-wal"_s}) {
        const QString log = path + ending;
        if (QFileInfo::exists(log) && !QFile::remove(log))
            throw Error(Failure::Other, u"无法删除原文件留下的 %1。"_s.arg(log));
    }
}

bool isInUse(const QString& path)
{
    if (!QFileInfo(path).isFile())
        return false;
    try {
        const FileLock lock(path, FileLock::Against::Everybody);
        return false;
    } catch (const Error& error) {
        return error.failure() == Failure::Locked;
    }
}

} // namespace database
