#include "platform/database/WriteBatch.h"

#include <sqlite3.h>

#include "platform/database/ConnectionPrivate.h"
#include "platform/database/Error.h"

namespace database {

using namespace Qt::StringLiterals;

namespace {

/// Begins or ends a batch. Where that fails, nothing of it counts.
void runBorder(sqlite3* handle, const char* sql)
{
    try {
        runOnEngine(handle, sql);
    } catch (Error& error) {
        error.setEndsPhase();
        throw;
    }
}

} // namespace

WriteBatch::WriteBatch(Connection& connection)
    : m_connection(connection), m_outermost(connection.d->batchDepth == 0)
{
    sqlite3* handle = connection.openHandle();
    connection.checkWritable();
    // The engine begins on a read-only file too, and then refuses row after row.
    if (sqlite3_db_readonly(handle, "main") == 1)
        throw Error(Failure::ReadOnly, u"成绩库是只读的，不能写入。"_s);
    runBorder(handle, m_outermost ? "BEGIN IMMEDIATE" : "SAVEPOINT inner_batch");
    // What waits for the first write must find the file as it is.
    if (m_outermost && !connection.d->beforeFirstWrite) {
        connection.ensureIndexes();
        // No room for an index: the engine gave up the transaction with it.
        if (sqlite3_get_autocommit(handle))
            runOnEngine(handle, "BEGIN IMMEDIATE");
    }
    ++connection.d->batchDepth;
    m_phase.emplace();
}

WriteBatch::~WriteBatch()
{
    if (m_open)
        takeBack();
}

void WriteBatch::takeBack()
{
    if (m_outermost)
        m_connection.finishStatements();
    sqlite3* handle = m_connection.handle();
    // After a failure of the engine there may be nothing left to take back.
    if (handle && !sqlite3_get_autocommit(handle))
        sqlite3_exec(handle,
                     m_outermost ? "ROLLBACK" : "ROLLBACK TO inner_batch; RELEASE inner_batch",
                     nullptr, nullptr, nullptr);
    m_connection.schemaChanged();
    m_connection.d->indexesChecked = false;
    end();
}

void WriteBatch::commit()
{
    if (m_connection.batchBroken())
        throw Error(Failure::DiskFull, u"写入没有完成，成绩库保持原样。"_s);
    if (m_outermost)
        m_connection.d->identity.check(m_connection.d->path);
    runBorder(m_connection.openHandle(), m_outermost ? "COMMIT" : "RELEASE inner_batch");
    end();
    if (m_outermost)
        m_connection.d->identity.checkWritten(m_connection.d->path);
}

void WriteBatch::end()
{
    m_open = false;
    Connection::Private& state = *m_connection.d;
    state.batchDepth = std::max(0, state.batchDepth - 1);
    if (m_outermost)
        state.batchFailed = false;
    // The file is free again before anything is shown.
    m_phase.reset();
}

} // namespace database
