#pragma once

#include <memory>
#include <vector>

#include <QHash>
#include <QString>
#include <QStringList>

#include "platform/database/ColumnType.h"

struct sqlite3;

namespace database {

class Statement;

/// How much of SQL a text may use.
enum class Trust {
    Program, ///< statements that this program wrote
    User     ///< typed by the user: nothing that leaves the library or ends its transaction
};

/// What makes a file one of ours: the tables that it must have, and statements for the indexes that
/// are added at the first write ("create index if not exists …").
struct FileShape
{
    QStringList tables;
    QStringList indexes;
};

/// What ends a typed query that would run away; none that makes sense on a library comes near.
struct UserLimits
{
    int milliseconds = 20'000;
    /// Values of a result that is read at once.
    qint64 cells = 20'000'000;
};

/// A column of a table, in the table's order.
struct Column
{
    QString name;
    ColumnType type;
};

/// The columns of a table, found by name without regard to case.
class TableColumns
{
public:
    void append(const Column& column);
    int count() const { return int(m_columns.size()); }
    const Column& at(int position) const { return m_columns.at(size_t(position)); }
    /// Position from 0, or -1.
    int find(const QString& name) const;
    auto begin() const { return m_columns.begin(); }
    auto end() const { return m_columns.end(); }

private:
    std::vector<Column> m_columns;
    QHash<QString, int> m_exact;
    QHash<QString, int> m_folded;
};

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

    /// Limits for typed statements, kept for every file that is opened.
    void setUserLimits(const UserLimits& limits);
    const UserLimits& userLimits() const;

    /// True inside a WriteBatch that the engine has given up (a full disk does that): nothing more
    /// can be written until the batch ends.
    bool batchBroken() const;

    /// The engine's handle, for tests that bring it into a corner.
    sqlite3* handle() const;

private:
    friend class WriteBatch;
    friend class Recordset;
    friend class Keyset;
    friend class Statement;

    sqlite3* openHandle() const;
    /// Throws Error if nothing can be written now: the file vanished, or the batch is broken.
    void checkWritable();
    void checkFileStands();
    /// Adds the indexes that the file lacks, once; failing to is no error.
    void ensureIndexes();
    /// Runs a statement without rows, in the words of the engine.
    void runStatement(const QString& sql, Trust trust);
    /// Forgets what is known of the tables.
    void schemaChanged();
    void finishStatements();
    /// As prepared(), for users that may outlive the connection's being open.
    std::shared_ptr<Statement> sharedStatement(const QString& sql);

    struct Private;
    std::unique_ptr<Private> d;
};

/// A prepared statement with values in the places of its question marks.
///
///     Statement& s = conn.prepared("select ID from 信息表 where 班级=? and 学号=?");
///     s.bind({班级, 学号});
///     while (s.step()) s.value(0);
class Statement
{
public:
    /// For statements that are not kept by the connection. Throws Error.
    Statement(Connection& connection, const QString& sql, Trust trust = Trust::Program);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    /// Starts the statement anew with these values.
    void bind(const std::vector<runtime::Value>& values);

    /// Starts anew; values follow by the calls below, places counted from 1, and stay until
    /// replaced.
    void reset();
    void bindValue(int place, const runtime::Value& value);
    void bindNull(int place);
    void bindInteger(int place, qint64 number);
    void bindDouble(int place, double number);

    /// True if it stands on a row, false at the end. Throws Error. A writing statement is refused
    /// when the connection cannot be written.
    bool step();
    /// Runs a writing statement to its end and gives the number of rows that it changed.
    int run();

    bool isReadOnly() const;
    /// Ends the use of the rows, so that no lock is held; step() gives false until values are bound
    /// or the statement is started anew.
    void finish();

    int columnCount() const;
    QString columnName(int column) const;
    /// The declaration of the column in its table; "" for a computed one.
    QString columnDeclaration(int column) const;
    bool isNull(int column) const;
    double number(int column) const;
    qint64 integer(int column) const;
    QString text(int column) const;
    /// The value with the type that the engine stores.
    runtime::Value value(int column) const;
    /// The value with the type that the column declares; one of another sort comes as it is stored.
    runtime::Value value(int column, const ColumnType& type) const;

private:
    /// The checks ahead of the first row.
    void begin();
    [[noreturn]] void fail();

    struct Private;
    std::unique_ptr<Private> d;
};

/// Everything written while it lives reaches the disk together at commit(), or not at all. A batch
/// that ends without commit() leaves the file as it was. One inside another reaches the disk with
/// the outer one; without commit() its own part is taken back.
class WriteBatch
{
public:
    /// Throws Error if the file cannot be written.
    explicit WriteBatch(Connection& connection);
    ~WriteBatch();
    WriteBatch(const WriteBatch&) = delete;
    WriteBatch& operator=(const WriteBatch&) = delete;

    /// Throws Error if the engine could not write it all; the file is as before the batch then.
    void commit();

private:
    void takeBack();
    void end();

    Connection& m_connection;
    bool m_outermost;
    bool m_open = true;
};

} // namespace database
