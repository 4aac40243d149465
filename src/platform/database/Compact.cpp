#include "platform/database/Compact.h"

#include <sqlite3.h>

#include "platform/database/Error.h"
#include "platform/database/OpenFile.h"

namespace database {

using namespace Qt::StringLiterals;

namespace {

using StatementHandle = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;

StatementHandle prepared(sqlite3* handle, const QString& sql)
{
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v2(handle, sql.toUtf8().constData(), -1, &raw, nullptr) != SQLITE_OK)
        throw engineError(handle);
    return {raw, sqlite3_finalize};
}

QStringList texts(sqlite3* handle, const QString& sql)
{
    const StatementHandle statement = prepared(handle, sql);
    QStringList found;
    int code = sqlite3_step(statement.get());
    for (; code == SQLITE_ROW; code = sqlite3_step(statement.get()))
        found.append(QString::fromUtf8(
            reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0))));
    if (code != SQLITE_DONE)
        throw engineError(handle);
    return found;
}

/// The tables with the number of their rows.
QStringList rowCounts(sqlite3* handle)
{
    QStringList counts = texts(handle, u"select name from sqlite_master where type='table' "
                                       "and name not like 'sqlite_%' order by name"_s);
    for (QString& table : counts) {
        const QString name = QString(table).replace(u']', u"]]"_s);
        table += u'=' + texts(handle, u"select count(*) from ["_s + name + u']').value(0);
    }
    return counts;
}

void checkPages(sqlite3* handle, const QString& path)
{
    const QStringList found = texts(handle, u"PRAGMA integrity_check(1)"_s);
    if (found != QStringList{u"ok"_s})
        throw Error(Failure::Damaged, u"%1 写得不完整，没有使用。"_s.arg(path), found.value(0));
}

} // namespace

void compactDatabase(const QString& source, const QString& target)
{
    const Handle handle = openedFile(source, {});
    const StatementHandle statement = prepared(handle.get(), u"VACUUM INTO ?"_s);
    const QByteArray path = target.toUtf8();
    sqlite3_bind_text(statement.get(), 1, path.constData(), int(path.size()), SQLITE_TRANSIENT);
    if (sqlite3_step(statement.get()) != SQLITE_DONE)
        throw engineError(handle.get());
}

void checkPages(const QString& path)
{
    checkPages(openedFile(path, {}).get(), path);
}

void checkCopy(const QString& original, const QString& copy)
{
    const Handle written = openedFile(copy, {});
    checkPages(written.get(), copy);
    if (rowCounts(written.get()) != rowCounts(openedFile(original, {}).get()))
        throw Error(Failure::Damaged, u"%1 写得不完整，没有使用。"_s.arg(copy));
}

} // namespace database
