#pragma once

#include <functional>

#include <QString>

namespace database {

class Connection;

/// Columns that a table loses in one pass over its rows: the engine's own DROP COLUMN writes every
/// row anew for each of them, and leaves a larger file. To be used within a WriteBatch, which must
/// not be committed before finish(). A table that more hangs on than rows and indexes (triggers,
/// views, checks, numbers that count on) loses its columns by the engine's statement.
class ColumnRemoval
{
public:
    /// Told how many rows have moved; false ends the work.
    using GoOn = std::function<bool(qint64 done, qint64 total)>;

    ColumnRemoval(Connection& connection, const QString& table);

    /// Takes a column away, as `ALTER TABLE … DROP COLUMN` does. Throws Error where the engine
    /// refuses that; the column stays then.
    void drop(const QString& column);

    /// Moves the rows, with their row ids, to the table without the columns. False if `goOn` ended
    /// it; the batch is to be given up then, and after an Error.
    bool finish(const GoOn& goOn);

private:
    /// Whether a copy of its definition is all that the table is.
    bool isPlain();
    bool isIndexed(const QString& column);
    void makeCopy();
    bool moveRows(const GoOn& goOn);

    Connection& m_connection;
    /// The name as the file has it.
    QString m_table;
    /// What stands in the table's statement behind its name.
    QString m_definition;
    /// The empty table that the rows will move to; none as long as nothing was dropped.
    QString m_copy;
    bool m_isPlain;
};

} // namespace database
