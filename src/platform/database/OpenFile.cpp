#include "platform/database/OpenFile.h"

#include <sys/stat.h>

#include <sqlite3.h>

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include "platform/database/Aggregates.h"
#include "platform/database/Error.h"
#include "platform/runtime/FileErrors.h"

namespace database {

namespace {

using namespace Qt::StringLiterals;

constexpr int headerSize = 100;
/// Bytes; photos stay far below it.
constexpr int longestValue = 100'000'000;
/// Small blocks that the engine keeps at hand. Kept statements hold on to some, and what a row
/// takes and gives back must still find room among them.
constexpr int blockSize = 1200;
constexpr int blockCount = 500;

/// Pages of the file as its header counts them, in bytes; 0 if the header does not say.
qint64 sizeByHeader(const QByteArray& header)
{
    const auto* bytes = reinterpret_cast<const uchar*>(header.constData());
    const int page = qFromBigEndian<quint16>(bytes + 16);
    const quint32 changes = qFromBigEndian<quint32>(bytes + 24);
    const quint32 pages = qFromBigEndian<quint32>(bytes + 28);
    const quint32 validFor = qFromBigEndian<quint32>(bytes + 92);
    return changes == validFor ? qint64(page == 1 ? 65536 : page) * pages : 0;
}

/// Judges a file by its first bytes, before the engine touches it.
void checkHeader(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists())
        throw Error(Failure::Missing, u"找不到文件 %1。"_s.arg(path));
    if (!info.isFile())
        throw Error(Failure::NoLibrary, u"%1 不是文件，不能作为成绩库打开。"_s.arg(path));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Error(Failure::Other, u"无法读取文件 %1。"_s.arg(path),
                    runtime::fileErrorText(file.error()));
    const QByteArray header = file.read(headerSize);
    if (header.isEmpty())
        throw Error(Failure::NoLibrary, u"%1 是空文件，不是成绩库。"_s.arg(path));
    if (header.mid(4, 15) == "Standard Jet DB")
        throw Error(Failure::NoLibrary, u"%1 是旧格式的成绩库，不能直接打开。"_s.arg(path));
    if (!header.startsWith("SQLite format 3"))
        throw Error(Failure::NoLibrary, u"%1 不是成绩库。"_s.arg(path));
    // A journal beside the file means that a write was broken off; the engine mends that by itself.
    const bool journal = QFileInfo::exists(path + u"-journal"_s);
    if (header.size() < headerSize || (!journal && info.size() < sizeByHeader(header)))
        throw Error(Failure::Damaged, u"%1 不完整（后面一部分丢失了），无法打开。"_s.arg(path));
}

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

void checkTables(sqlite3* handle, const QString& path, const FileShape& shape)
{
    sqlite3_stmt* found = nullptr;
    const char* sql = "select count(*) from sqlite_master where type='table' and name=?";
    if (sqlite3_prepare_v2(handle, sql, -1, &found, nullptr) != SQLITE_OK)
        throw engineError(handle);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> guard(found, sqlite3_finalize);
    for (const QString& table : shape.tables) {
        sqlite3_reset(found);
        sqlite3_bind_text16(found, 1, table.utf16(), -1, SQLITE_TRANSIENT);
        if (sqlite3_step(found) != SQLITE_ROW)
            throw engineError(handle);
        if (sqlite3_column_int(found, 0) == 0)
            throw Error(Failure::NoLibrary, u"%1 不是成绩库：没有“%2”。"_s.arg(path, table));
    }
}

} // namespace

void CloseHandle::operator()(sqlite3* handle) const
{
    sqlite3_close_v2(handle);
}

FileIdentity FileIdentity::of(const QString& path)
{
    struct stat info = {};
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return {};
    return {quint64(info.st_dev), quint64(info.st_ino)};
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
