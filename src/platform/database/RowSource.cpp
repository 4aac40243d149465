#include "platform/database/RowSource.h"

#include <algorithm>
#include <limits>

#include <sqlite3.h>

#include "platform/database/BlobReader.h"
#include "platform/database/Connection.h"
#include "platform/database/Error.h"

namespace database {

using namespace Qt::StringLiterals;
using runtime::Value;

qint64 sizeOf(const Value& value)
{
    return value.kind() == Value::Kind::Binary ? value.toBytes().size()
                                               : value.text().toUtf8().size();
}

QByteArray bytesOf(const Value& value, qint64 from, qint64 length)
{
    return value.toBytes().mid(from, length);
}

qint64 RowSource::size(int column)
{
    return sizeOf(value(column));
}

QByteArray RowSource::bytes(int column, qint64 from, qint64 length)
{
    return bytesOf(value(column), from, length);
}

void RowSource::insert(const FieldValues&)
{
    throw Error(Failure::Sql, u"这样的查询结果只能看，不能修改。"_s);
}

void RowSource::update(const FieldValues& values)
{
    insert(values);
}

void RowSource::noRow()
{
    throw Error(Failure::Sql, noCurrentRow());
}

namespace {

/// What a statement of the user gives, row by row, within its limits.
class LimitedResult
{
public:
    explicit LimitedResult(const UserLimits* limits) : m_limits(limits) {}

    /// Throws Error if this row is too much.
    void addRow(const Statement& statement)
    {
        if (!m_limits)
            return;
        ++m_rows;
        m_cells += statement.columnCount();
        for (int column = 0; column < statement.columnCount(); ++column)
            m_bytes += statement.size(column);
        if (m_rows > m_limits->rows || m_cells > m_limits->cells || m_bytes > m_limits->bytes)
            tooMuch();
    }

    [[noreturn]] static void tooMuch()
    {
        throw Error(Failure::Refused, u"查询结果太多，已经停止。"_s);
    }

private:
    const UserLimits* m_limits;
    qint64 m_rows = 0;
    qint64 m_cells = 0;
    qint64 m_bytes = 0;
};

} // namespace

Snapshot::Snapshot(Statement& statement, const UserLimits* limits)
{
    const int count = statement.columnCount();
    std::vector<std::optional<ColumnType>> types;
    for (int i = 0; i < count; ++i) {
        const QString declaration = statement.columnDeclaration(i);
        types.push_back(declaration.isEmpty()
                            ? std::nullopt
                            : std::optional(ColumnType::fromDeclaration(declaration)));
        m_columns.append({statement.columnName(i), types.back().value_or(ColumnType())});
    }
    LimitedResult result(limits);
    while (statement.step()) {
        result.addRow(statement);
        takeRow(statement, types);
    }
}

void Snapshot::takeRow(Statement& statement, const std::vector<std::optional<ColumnType>>& types)
{
    std::vector<Value> row;
    row.reserve(types.size());
    for (const std::optional<ColumnType>& type : types) {
        const int column = int(row.size());
        row.push_back(type ? statement.value(column, *type) : statement.value(column));
    }
    m_rows.push_back(std::move(row));
}

void Snapshot::moveNext()
{
    if (atEnd())
        noRow();
    ++m_at;
}

Value Snapshot::value(int column)
{
    if (atEnd())
        noRow();
    return m_rows[m_at][size_t(column)];
}

Keyset::Keyset(Connection& connection, const TableQuery& query, const std::vector<Value>& values,
               Trust trust)
    : m_connection(connection),
      m_tableName(query.table),
      m_table(bracketed(query.table)),
      m_keyValues(values)
{
    m_columns = connection.columns(query.table);
    QString sql = u"select rowid from "_s + m_table;
    if (!query.where.isEmpty())
        sql += u" where "_s + query.where;
    sql += u" order by "_s + (query.orderBy.isEmpty() ? QString() : query.orderBy + u", "_s)
           + u"rowid"_s;
    const qint64 columns = std::max(1, m_columns.count());
    const UserLimits& limits = connection.userLimits();
    m_mostKeys = trust == Trust::User ? std::min(limits.rows, limits.cells / columns)
                                      : std::numeric_limits<qint64>::max();
    m_keyStatement = trust == Trust::User ? std::make_shared<Statement>(connection, sql, trust)
                                          : connection.sharedStatement(sql);
    // The statement can be another recordset's too: the keys are taken later, the values looked at
    // now.
    m_keyStatement->bindQuoted(m_keyValues);
}

void Keyset::takeKeys()
{
    if (!m_keyStatement)
        return;
    const std::shared_ptr<Statement> statement = std::move(m_keyStatement);
    std::vector<qint64> keys;
    statement->bindQuoted(m_keyValues);
    while (statement->step()) {
        if (qint64(keys.size()) >= m_mostKeys)
            LimitedResult::tooMuch();
        keys.push_back(statement->integer(0));
    }
    m_keys = std::move(keys);
}

qint64 Keyset::count()
{
    takeKeys();
    return qint64(m_keys.size());
}

bool Keyset::atEnd()
{
    takeKeys();
    return !m_added && m_at >= m_keys.size();
}

void Keyset::moveNext()
{
    if (atEnd())
        noRow();
    if (m_added)
        m_at = m_keys.size();
    else
        ++m_at;
    m_added.reset();
}

qint64 Keyset::currentKey()
{
    if (m_added)
        return *m_added;
    if (atEnd())
        noRow();
    return m_keys[m_at];
}

void Keyset::fetch()
{
    const qint64 key = currentKey();
    if (m_fetched == key)
        return;
    if (!m_rowStatement) {
        QStringList names;
        for (int i = 0; i < m_columns.count(); ++i) {
            // Pictures are read only when they are asked for.
            if (m_columns.at(i).type.kind == ColumnType::Kind::Binary)
                continue;
            names.append(bracketed(m_columns.at(i).name));
            m_rowColumns.push_back(i);
        }
        m_rowStatement = m_connection.sharedStatement(
            u"select %1 from %2 where rowid=?"_s.arg(names.join(u','), m_table));
        m_row.resize(size_t(m_columns.count()));
    }
    m_rowStatement->reset();
    m_rowStatement->bindInteger(1, key);
    if (!m_rowStatement->step())
        throw Error(Failure::Sql, u"这条记录已经被删除。"_s);
    for (size_t i = 0; i < m_rowColumns.size(); ++i) {
        const int column = m_rowColumns[i];
        m_row[size_t(column)] = m_rowStatement->value(int(i), m_columns.at(column).type);
    }
    m_rowStatement->finish();
    m_fetched = key;
}

Value Keyset::value(int column)
{
    if (m_columns.at(column).type.kind != ColumnType::Kind::Binary) {
        fetch();
        return m_row[size_t(column)];
    }
    Statement bytes(m_connection, u"select %1 from %2 where rowid=?"_s.arg(
                                      bracketed(m_columns.at(column).name), m_table));
    bytes.bindInteger(1, currentKey());
    return bytes.step() ? bytes.value(0) : Value();
}

bool Keyset::isBlob(int column)
{
    const Column& asked = m_columns.at(column);
    if (asked.type.kind != ColumnType::Kind::Binary)
        return false;
    Statement& sort = m_connection.prepared(
        u"select typeof(%1)='blob' from %2 where rowid=?"_s.arg(bracketed(asked.name), m_table));
    sort.reset();
    sort.bindInteger(1, currentKey());
    const bool found = sort.step() && sort.integer(0) != 0;
    sort.finish();
    return found;
}

qint64 Keyset::size(int column)
{
    if (!isBlob(column))
        return RowSource::size(column);
    return BlobReader(m_connection, m_tableName, m_columns.at(column).name, currentKey()).size();
}

QByteArray Keyset::bytes(int column, qint64 from, qint64 length)
{
    if (!isBlob(column))
        return RowSource::bytes(column, from, length);
    return BlobReader(m_connection, m_tableName, m_columns.at(column).name, currentKey())
        .read(from, length);
}

QString Keyset::writerText(const std::vector<int>& columns, Write write) const
{
    QStringList names;
    QStringList marks;
    for (const int column : columns) {
        const QString name = bracketed(m_columns.at(column).name);
        names.append(write == Write::Insert ? name : name + u"=?"_s);
        marks.append(u"?"_s);
    }
    if (write == Write::Update)
        return u"update %1 set %2 where rowid=?"_s.arg(m_table, names.join(u','));
    if (names.isEmpty())
        return u"insert into %1 default values"_s.arg(m_table);
    return u"insert into %1(%2) values(%3)"_s.arg(m_table, names.join(u','), marks.join(u','));
}

/// The statement that writes these fields; row after row it is the same one.
Statement& Keyset::writer(const FieldValues& values, Write write)
{
    const auto isColumnOf = [](int column, const auto& value) { return column == value.first; };
    if (!m_writer || m_write != write
        || !std::equal(m_writerColumns.begin(), m_writerColumns.end(), values.begin(), values.end(),
                       isColumnOf)) {
        std::vector<int> columns;
        for (const auto& [column, value] : values)
            columns.push_back(column);
        m_writer = m_connection.sharedStatement(writerText(columns, write));
        m_write = write;
        m_writerColumns = std::move(columns);
    }
    m_writer->reset();
    int place = 0;
    for (const auto& [column, value] : values)
        m_writer->bindValue(++place, value);
    return *m_writer;
}

void Keyset::insert(const FieldValues& values)
{
    writer(values, Write::Insert).run();
    m_lastInsertId = sqlite3_last_insert_rowid(m_connection.handle());
    m_added = m_lastInsertId;
    // Keys that are not taken yet will hold the new row by themselves.
    if (!m_keyStatement)
        m_keys.push_back(m_lastInsertId);
}

void Keyset::update(const FieldValues& values)
{
    Statement& statement = writer(values, Write::Update);
    statement.bindInteger(int(values.size()) + 1, currentKey());
    if (statement.run() == 0)
        throw Error(Failure::Sql, u"这条记录已经被删除。"_s);
    if (m_fetched == currentKey()) {
        for (const auto& [column, value] : values)
            m_row[size_t(column)] = value;
    }
}

} // namespace database
