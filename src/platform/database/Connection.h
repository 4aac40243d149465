#pragma once

#include <functional>
#include <memory>

#include <QString>

#include "platform/database/OpenFile.h"
#include "platform/database/TableColumns.h"
#include "platform/database/UserGuard.h"

namespace database {

class SqlText;
class Statement;

/// The connection to one library file. All reading and writing goes through it, on one thread.
class Connection
{
public:
    Connection();
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Opens an existing file for reading and writing (for reading alone if it cannot be written),
    /// looking at its header and its tables, not at every page. Throws Error if the file is
    /// missing, none of ours, cut off, damaged or locked: the file stays untouched, and what was
    /// open before stays open.
    void Open(const QString& path, const FileShape& shape = {});

    /// Opens a file that nobody else has yet, to fill it: no write waits for the disk, to which the
    /// caller brings the whole file at the end. Throws Error.
    void OpenUnfinished(const QString& path);

    /// Runs a statement that returns no rows. `delete * from T` and
    /// `ALTER TABLE T add COLUMN name type` are understood as they stand. Throws Error.
    void Execute(const QString& sql, Trust trust = Trust::Program);

    void Close();
    bool isOpen() const;
    /// The open file, "" when none is.
    const QString& path() const;

    /// The columns of a table; empty if there is no such table. What it gives stands until Close,
    /// as the table was when it was asked for.
    const TableColumns& columns(const QString& table);

    /// The statement for a text with ? in the places of values; prepared once and kept until
    /// Close. A text that is in use must not be asked for again: it is the same statement. Throws
    /// Error.
    Statement& prepared(const QString& sql);

    /// A number that changes when another connection has written the file. Throws Error.
    qint64 dataVersion();

    /// Calls `action` once, ahead of the first statement that writes the open file; no page has
    /// changed then. If it throws, nothing is written and a running batch is broken. Close()
    /// forgets it.
    void setBeforeFirstWrite(std::function<void()> action);

    /// Limits for typed statements, kept for every file that is opened.
    void setUserLimits(const UserLimits& limits);
    const UserLimits& userLimits() const;

    /// Bytes that one value may have so that its row has room for other values too.
    qint64 longestValue() const;

    /// True inside a WriteBatch that the engine has given up (a full disk does that): nothing more
    /// can be written until the batch ends.
    bool batchBroken() const;

    /// The engine's handle, for the neighbours in this folder and tests that bring it into a
    /// corner.
    sqlite3* handle() const;

private:
    friend class WriteBatch;
    friend class ReadBatch;
    friend class Recordset;
    friend class Keyset;
    friend class Statement;
    friend class BlobReader;

    sqlite3* openHandle() const;
    /// Throws the engine's last error: as a PhaseError where it is file trouble within a phase.
    [[noreturn]] void fail();
    /// Throws Error if nothing can be written now: the file vanished, or the batch is broken.
    void checkWritable();
    /// What goes ahead of every statement that writes. Throws Error.
    void prepareWrite();
    void callBeforeFirstWrite();
    /// Adds the indexes that the file lacks, once; failing to is no error.
    void ensureIndexes();
    /// Runs a statement without rows, which was made of this text.
    void runStatement(Statement& statement, const SqlText& sql);
    /// Forgets what is known of the tables.
    void schemaChanged();
    void finishStatements();
    /// A statement for users that take its rows in one go, and that may outlive the connection's
    /// being open. The last ones are kept. Throws Error.
    std::shared_ptr<Statement> sharedStatement(const QString& sql);
    /// Ends the state that a ReadBatch keeps, if there is one.
    void endReading();

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace database
