#include "platform/database/Connection.h"

#include <sqlite3.h>

#include "platform/database/ConnectionPrivate.h"
#include "platform/database/Error.h"
#include "platform/database/Sql.h"
#include "platform/database/Statement.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Phase.h"

namespace database {

using namespace Qt::StringLiterals;

Connection::Connection() : d(std::make_unique<Private>()) {}

Connection::~Connection()
{
    Close();
}

void Connection::Open(const QString& path, const FileShape& shape)
{
    Handle handle = openedFile(path, shape);
    Close();
    d->handle = std::move(handle);
    d->path = realPath(path);
    d->shape = shape;
    d->identity = FileIdentity::of(d->path);
}

void Connection::OpenUnfinished(const QString& path)
{
    Open(path);
    // A write that fails can still be taken back; what does not survive is a crash, nor does the
    // file.
    runOnEngine(d->handle.get(),
                "PRAGMA journal_mode=MEMORY; PRAGMA synchronous=OFF; PRAGMA cache_size=-96000;");
}

void Connection::Close()
{
    // Recordsets that are still open would keep an open batch, and its lock, alive.
    if (d->handle && !sqlite3_get_autocommit(d->handle.get()))
        sqlite3_exec(d->handle.get(), "ROLLBACK", nullptr, nullptr, nullptr);
    const UserLimits limits = d->userLimits;
    d = std::make_unique<Private>();
    d->userLimits = limits;
}

bool Connection::isOpen() const
{
    return d->handle != nullptr;
}

const QString& Connection::path() const
{
    return d->path;
}

sqlite3* Connection::handle() const
{
    return d->handle.get();
}

sqlite3* Connection::openHandle() const
{
    if (!d->handle)
        throw Error(Failure::Missing, u"没有打开成绩库。"_s);
    return d->handle.get();
}

void Connection::fail()
{
    const Error error = engineError(handle());
    if (!isFileTrouble(handle()) || !runtime::Phase::isRunning())
        throw error;
    const bool isWriting = d->batchDepth > 0;
    d->batchFailed = isWriting;
    throw runtime::PhaseError(error.description()
                              + (isWriting ? u"这一步已经停止，什么也没有写入。"_s : QString()));
}

void Connection::Execute(const QString& sql, Trust trust)
{
    openHandle();
    const SqlText text(sql);
    Statement statement(*this, text.engineText(), trust);
    runStatement(statement, text);
}

void Connection::runStatement(Statement& statement, const SqlText& sql)
{
    const bool newSchema = sql.changesSchema();
    // A statement left standing on a row would keep the table from being changed.
    if (newSchema)
        finishStatements();
    statement.run();
    if (newSchema)
        schemaChanged();
}

const TableColumns& Connection::columns(const QString& table)
{
    const QString key = table.toCaseFolded();
    const auto known = d->tables.constFind(key);
    if (known != d->tables.constEnd())
        return **known;
    const auto columns = std::make_shared<TableColumns>();
    Statement info(*this, u"select name, type, pk, "
                          "(select wr=0 from pragma_table_list(?1) where schema='main') "
                          "from pragma_table_info(?1) where exists "
                          "(select 1 from sqlite_master where type='table' and name=?1 "
                          "collate nocase)"_s);
    info.bind({table});
    while (info.step()) {
        columns->setHasRowIds(info.integer(3) != 0);
        ColumnType type = ColumnType::fromDeclaration(info.text(1));
        // The engine wants the key of an AutoNumber declared as a bare INTEGER.
        if (info.integer(2) == 1 && type.kind == ColumnType::Kind::Integer)
            type.kind = ColumnType::Kind::Long;
        columns->append({info.text(0), type});
    }
    // A column of that name hides the row ids.
    if (columns->find(u"rowid"_s) >= 0)
        columns->setHasRowIds(false);
    return **d->tables.insert(key, columns);
}

Statement& Connection::prepared(const QString& sql)
{
    openHandle();
    return d->statements.try_emplace(sql, *this, sql).first->second;
}

std::shared_ptr<Statement> Connection::sharedStatement(const QString& sql)
{
    if (const auto* known = d->sharedStatements.object(sql))
        return *known;
    auto statement = std::make_shared<Statement>(*this, sql);
    d->sharedStatements.insert(sql, new std::shared_ptr(statement));
    return statement;
}

qint64 Connection::dataVersion()
{
    Statement& version = prepared(u"PRAGMA data_version"_s);
    version.reset();
    version.step();
    const qint64 number = version.integer(0);
    version.finish();
    return number;
}

qint64 Connection::longestValue() const
{
    constexpr qint64 otherValues = 1'000'000;
    return sqlite3_limit(openHandle(), SQLITE_LIMIT_LENGTH, -1) - otherValues;
}

bool Connection::batchBroken() const
{
    return d->batchDepth > 0 && d->handle
           && (d->batchFailed || sqlite3_get_autocommit(d->handle.get()));
}

void Connection::checkWritable()
{
    endReading();
    // The engine writes each statement by itself once it has given up the batch.
    if (batchBroken())
        throw Error(Failure::DiskFull, u"前面的写入已经失败，这一步没有写入。"_s);
    // A batch looks at the file when it begins and when it commits.
    if (d->batchDepth == 0)
        d->identity.check(d->path);
}

void Connection::setBeforeFirstWrite(std::function<void()> action)
{
    d->beforeFirstWrite = std::move(action);
}

void Connection::callBeforeFirstWrite()
{
    if (!d->beforeFirstWrite)
        return;
    const std::function<void()> action = std::exchange(d->beforeFirstWrite, {});
    try {
        action();
    } catch (...) {
        d->beforeFirstWrite = action;
        d->batchFailed = d->batchDepth > 0;
        throw;
    }
}

void Connection::prepareWrite()
{
    checkWritable();
    callBeforeFirstWrite();
    ensureIndexes();
    // No room for an index: the engine gave up the batch with it.
    if (batchBroken())
        throw runtime::PhaseError(u"磁盘已满，没有写入。"_s);
}

void Connection::endReading()
{
    if (std::exchange(d->reading, false) && !sqlite3_get_autocommit(d->handle.get()))
        sqlite3_exec(d->handle.get(), "COMMIT", nullptr, nullptr, nullptr);
}

void Connection::ensureIndexes()
{
    if (d->indexesChecked)
        return;
    sqlite3* handle = d->handle.get();
    const auto run = [handle](const QByteArray& sql) {
        return sqlite3_exec(handle, sql.constData(), nullptr, nullptr, nullptr) & 0xff;
    };
    // As long as no index is missing this takes no lock and writes nothing.
    int code = run("SAVEPOINT indexes");
    // An old library works without them, only slower; the first real write reports what is wrong.
    for (const QString& index : std::as_const(d->shape.indexes)) {
        if (code != SQLITE_BUSY)
            code = run(index.toUtf8());
    }
    const int written = run("RELEASE indexes");
    if (written != SQLITE_OK && !sqlite3_get_autocommit(handle))
        run("ROLLBACK");
    d->indexesChecked = code != SQLITE_BUSY && written != SQLITE_BUSY;
}

void Connection::schemaChanged()
{
    d->formerTables.insert(d->formerTables.end(), d->tables.cbegin(), d->tables.cend());
    d->tables.clear();
    // They would tell of a column that is gone only when they run.
    d->sharedStatements.clear();
}

void Connection::setUserLimits(const UserLimits& limits)
{
    d->userLimits = limits;
}

const UserLimits& Connection::userLimits() const
{
    return d->userLimits;
}

void Connection::finishStatements()
{
    for (auto& [sql, statement] : d->statements)
        statement.finish();
}

} // namespace database
