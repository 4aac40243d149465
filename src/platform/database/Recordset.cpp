#include "platform/database/Recordset.h"

#include <QScopeGuard>

#include "platform/database/Error.h"
#include "platform/database/RowSource.h"
#include "platform/database/Sql.h"
#include "platform/database/Statement.h"
#include "platform/database/WriteBatch.h"

namespace database {

using namespace Qt::StringLiterals;

struct Recordset::Private
{
    std::unique_ptr<RowSource> rows;
    FieldValues pending;
    bool adding = false;
};

namespace {

/// The statement in the promised order. What is wrong with a text is told about the text as it was
/// given, before anything is added to it.
std::unique_ptr<Statement> orderedStatement(Connection& connection, const SqlText& sql, Trust trust)
{
    auto given = std::make_unique<Statement>(connection, sql.engineText(), trust);
    const PromisedOrder order = sql.promisedOrder();
    const bool known = order.table.isEmpty() || connection.columns(order.table).hasRowIds();
    if (order.tail.isEmpty() || !known)
        return given;
    return std::make_unique<Statement>(connection, sql.engineText() + order.tail, trust);
}

} // namespace

Recordset::Recordset() : d(std::make_unique<Private>()) {}

Recordset::~Recordset() = default;

void Recordset::Open(const QString& sql, Connection& connection, Trust trust)
{
    Open(sql, {}, connection, trust);
}

void Recordset::Open(const QString& sql, const std::vector<runtime::Value>& values,
                     Connection& connection, Trust trust)
{
    Close();
    const SqlText text(sql);
    const std::optional<TableQuery> query = text.tableQuery();
    if (query && connection.isOpen() && connection.columns(query->table).hasRowIds()) {
        d->rows = std::make_unique<Keyset>(connection, *query, values, trust);
        return;
    }
    const std::unique_ptr<Statement> statement = orderedStatement(connection, text, trust);
    statement->bindQuoted(values);
    // What a typed statement changes counts only if it ran to its end within the limits.
    std::optional<WriteBatch> batch;
    if (trust == Trust::User && !statement->readsOnly())
        batch.emplace(connection);
    if (statement->columnCount() > 0) {
        const UserLimits* limits = trust == Trust::User ? &connection.userLimits() : nullptr;
        auto rows = std::make_unique<Snapshot>(*statement, limits);
        if (batch)
            batch->commit();
        d->rows = std::move(rows);
        return;
    }
    connection.runStatement(*statement, text);
    if (batch)
        batch->commit();
}

Recordset::Private& Recordset::open() const
{
    if (!d->rows)
        throw Error(Failure::Sql, u"记录集没有打开。"_s);
    return *d;
}

bool Recordset::isOpen() const
{
    return d->rows != nullptr;
}

qint64 Recordset::RecordCount() const
{
    return open().rows->count();
}

bool Recordset::Eof() const
{
    return open().rows->atEnd();
}

void Recordset::MoveNext()
{
    Private& state = open();
    state.pending.clear();
    state.adding = false;
    state.rows->moveNext();
}

int Recordset::fieldCount() const
{
    return open().rows->columns().count();
}

int Recordset::position(const QString& name) const
{
    return open().rows->columns().find(name);
}

Field Recordset::Fields(const QString& name)
{
    const int found = position(name);
    if (found < 0)
        throw Error(Failure::Sql, noSuchColumn(name));
    return Field(*this, found);
}

Field Recordset::Fields(int position)
{
    if (position < 0 || position >= fieldCount())
        throw Error(Failure::Sql, u"没有第 %1 列。"_s.arg(position + 1));
    return Field(*this, position);
}

void Recordset::AddNew()
{
    Private& state = open();
    state.pending.clear();
    state.adding = true;
}

void Recordset::Update()
{
    Private& state = open();
    const bool adding = std::exchange(state.adding, false);
    const auto dropPending = qScopeGuard([&state] { state.pending.clear(); });
    if (adding)
        state.rows->insert(state.pending);
    else if (!state.pending.empty())
        state.rows->update(state.pending);
}

void Recordset::Close()
{
    d = std::make_unique<Private>();
}

qint64 Recordset::lastInsertId() const
{
    return open().rows->lastInsertId();
}

runtime::Value Field::Value() const
{
    Recordset::Private& state = m_rows->open();
    if (const runtime::Value* pending = state.pending.find(m_position))
        return *pending;
    return state.adding ? runtime::Value() : state.rows->value(m_position);
}

void Field::setValue(const runtime::Value& value)
{
    Recordset::Private& state = m_rows->open();
    if (!state.adding && state.rows->atEnd())
        throw Error(Failure::Sql, noCurrentRow());
    const Column& column = state.rows->columns().at(m_position);
    state.pending.assign(m_position, column.type.converted(value, column.name));
}

QString Field::Name() const
{
    return m_rows->open().rows->columns().at(m_position).name;
}

qint64 Field::ActualSize() const
{
    return isInFile() ? m_rows->open().rows->size(m_position) : sizeOf(Value());
}

QByteArray Field::GetChunk(qint64 length, qint64 from) const
{
    return isInFile() ? m_rows->open().rows->bytes(m_position, from, length)
                      : bytesOf(Value(), from, length);
}

void Field::AppendChunk(const QByteArray& bytes)
{
    runtime::Value* pending = m_rows->open().pending.find(m_position);
    if (pending)
        pending->append(bytes);
    else
        setValue(bytes);
}

void Field::takeBack()
{
    m_rows->open().pending.remove(m_position);
}

bool Field::isInFile() const
{
    const Recordset::Private& state = m_rows->open();
    return !state.adding && !state.pending.find(m_position);
}

} // namespace database
