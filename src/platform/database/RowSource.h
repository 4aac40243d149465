#pragma once

#include <optional>
#include <vector>

#include "platform/database/FieldValues.h"
#include "platform/database/Sql.h"
#include "platform/database/Statement.h"
#include "platform/database/TableColumns.h"

namespace database {

/// The same of a value that is in memory.
qint64 sizeOf(const runtime::Value& value);
QByteArray bytesOf(const runtime::Value& value, qint64 from, qint64 length);

/// What stands behind a recordset: named, typed fields, and rows to step through.
class RowSource
{
public:
    virtual ~RowSource() = default;

    const TableColumns& columns() const { return m_columns; }
    virtual qint64 count() = 0;
    virtual bool atEnd() = 0;
    virtual void moveNext() = 0;
    /// The value of a field of the current row. Throws Error if there is no row.
    virtual runtime::Value value(int column) = 0;
    /// Length in bytes of a binary value, or of a text as the file keeps it; 0 for NULL.
    virtual qint64 size(int column);
    /// The bytes of a binary value from `from` on, `length` at most.
    virtual QByteArray bytes(int column, qint64 from, qint64 length);

    /// Writing; a snapshot throws Error.
    virtual void insert(const FieldValues& values);
    virtual void update(const FieldValues& values);
    virtual qint64 lastInsertId() const { return 0; }

protected:
    [[noreturn]] static void noRow();

    TableColumns m_columns;
};

/// All rows of a statement, read at once.
class Snapshot : public RowSource
{
public:
    /// Throws Error if it fails, or if it is larger than the limits; null for a statement of ours.
    Snapshot(Statement& statement, const UserLimits* limits);

    qint64 count() override { return qint64(m_rows.size()); }
    bool atEnd() override { return m_at >= m_rows.size(); }
    void moveNext() override;
    runtime::Value value(int column) override;

private:
    void takeRow(Statement& statement, const std::vector<std::optional<ColumnType>>& types);

    std::vector<std::vector<runtime::Value>> m_rows;
    size_t m_at = 0;
};

/// The rows of one table by their row ids.
class Keyset : public RowSource
{
public:
    /// Throws Error if the conditions or the order are wrong.
    Keyset(Connection& connection, const TableQuery& query,
           const std::vector<runtime::Value>& values, Trust trust);

    qint64 count() override;
    bool atEnd() override;
    void moveNext() override;
    runtime::Value value(int column) override;
    qint64 size(int column) override;
    QByteArray bytes(int column, qint64 from, qint64 length) override;
    void insert(const FieldValues& values) override;
    void update(const FieldValues& values) override;
    qint64 lastInsertId() const override { return m_lastInsertId; }

private:
    enum class Write { Insert, Update };

    void takeKeys();
    qint64 currentKey();
    void fetch();
    /// Whether the field has bytes, which can be read in parts.
    bool isBlob(int column);
    Statement& writer(const FieldValues& values, Write write);
    QString writerText(const std::vector<int>& columns, Write write) const;

    Connection& m_connection;
    QString m_tableName;
    QString m_table; // bracketed
    /// Delivers the row ids; gone once they are taken.
    std::shared_ptr<Statement> m_keyStatement;
    std::vector<runtime::Value> m_keyValues;
    std::vector<qint64> m_keys;
    qint64 m_mostKeys;
    size_t m_at = 0;
    /// The row just added, which is the current one until the next move.
    std::optional<qint64> m_added;
    /// The same for all recordsets over the table; each takes its row and is done with it.
    std::shared_ptr<Statement> m_rowStatement;
    std::vector<int> m_rowColumns;
    std::vector<runtime::Value> m_row;
    std::optional<qint64> m_fetched;
    std::shared_ptr<Statement> m_writer;
    std::vector<int> m_writerColumns;
    Write m_write = Write::Insert;
    qint64 m_lastInsertId = 0;
};

} // namespace database
