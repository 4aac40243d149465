#include "platform/database/FileCheck.h"

#include <memory>

#include <sqlite3.h>

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include "platform/database/Error.h"
#include "platform/database/OldFormat.h"
#include "platform/runtime/FileErrors.h"

namespace database {

using namespace Qt::StringLiterals;

namespace {

constexpr int headerSize = 100;
constexpr char formatName[] = "SQLite format 3";
const QString journalEnding = u"-journal"_s;

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

} // namespace

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
    if (file.error() != QFileDevice::NoError)
        throw Error(Failure::Other, u"无法读取文件 %1。"_s.arg(path),
                    runtime::fileErrorText(file.error()));
    if (header.isEmpty())
        throw Error(Failure::NoLibrary, u"%1 是空文件，不是成绩库。"_s.arg(path));
    if (isOldFormat(header))
        throw Error(Failure::NoLibrary, u"%1 是旧格式的成绩库，不能直接打开。"_s.arg(path));
    if (!header.startsWith(formatName))
        throw Error(Failure::NoLibrary, u"%1 不是成绩库。"_s.arg(path));
    // A journal beside the file means that a write was broken off; the engine mends that by itself.
    const bool journal = QFileInfo::exists(path + journalEnding);
    if (header.size() < headerSize || (!journal && info.size() < sizeByHeader(header)))
        throw Error(Failure::Damaged, u"%1 不完整（后面一部分丢失了），无法打开。"_s.arg(path));
}

bool isLibraryFile(const QString& path)
{
    QFile file(path);
    // No device or pipe is waited for.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray header = file.read(headerSize);
    return header.startsWith(formatName) || isOldFormat(header);
}

bool isJournalOf(const QString& path)
{
    QFile file(path);
    QFile journal(path + journalEnding);
    // No device or pipe is waited for.
    if (!QFileInfo(path).isFile() || !QFileInfo(journal).isFile() || !file.open(QIODevice::ReadOnly)
        || !journal.open(QIODevice::ReadOnly) || isOldFormat(file.read(headerSize)))
        return false;
    constexpr int journalHeaderSize = 28;
    const QByteArray header = journal.read(journalHeaderSize);
    if (header.size() < journalHeaderSize || !header.startsWith("\xd9\xd5\x05\xf9\x20\xa1\x63\xd7"))
        return false;
    const auto* bytes = reinterpret_cast<const uchar*>(header.constData());
    const qint64 pages = qFromBigEndian<quint32>(bytes + 16);
    const qint64 page = qFromBigEndian<quint32>(bytes + 24);
    return page > 0 && pages > 0 && file.size() % page == 0 && file.size() >= pages * page;
}

namespace {

/// Row ids are reached by this name, which a column would hide.
void checkNoRowIdColumn(sqlite3* handle, const QString& path)
{
    sqlite3_stmt* found = nullptr;
    const char* sql = "select m.name from sqlite_master m, pragma_table_info(m.name) c "
                      "where m.type='table' and c.name='rowid' collate nocase";
    if (sqlite3_prepare_v2(handle, sql, -1, &found, nullptr) != SQLITE_OK)
        throw engineError(handle);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> guard(found, sqlite3_finalize);
    const int code = sqlite3_step(found);
    if (code == SQLITE_DONE)
        return;
    if (code != SQLITE_ROW)
        throw engineError(handle);
    const auto* table = reinterpret_cast<const char*>(sqlite3_column_text(found, 0));
    throw Error(Failure::NoLibrary,
                u"%1 不能打开：表“%2”里有名为 rowid 的列。"_s.arg(path, QString::fromUtf8(table)));
}

} // namespace

void checkTables(sqlite3* handle, const QString& path, const FileShape& shape)
{
    sqlite3_stmt* found = nullptr;
    const char* sql =
        "select max(type) from sqlite_master where type in ('table','view') and name=?";
    if (sqlite3_prepare_v2(handle, sql, -1, &found, nullptr) != SQLITE_OK)
        throw engineError(handle);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> guard(found, sqlite3_finalize);
    for (const QString& table : shape.tables) {
        sqlite3_reset(found);
        sqlite3_bind_text16(found, 1, table.utf16(), -1, SQLITE_TRANSIENT);
        if (sqlite3_step(found) != SQLITE_ROW)
            throw engineError(handle);
        const auto* type = reinterpret_cast<const char*>(sqlite3_column_text(found, 0));
        if (type == nullptr)
            throw Error(Failure::NoLibrary, u"%1 不是成绩库：没有“%2”。"_s.arg(path, table));
        if (qstrcmp(type, "view") == 0)
            throw Error(Failure::NoLibrary,
                        u"%1 不是成绩库：“%2”是视图，不是表。"_s.arg(path, table));
    }
    if (!shape.tables.isEmpty())
        checkNoRowIdColumn(handle, path);
}

} // namespace database
