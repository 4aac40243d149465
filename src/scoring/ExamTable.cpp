#include "scoring/ExamTable.h"

#include <limits>
#include <numeric>

namespace scoring {

using namespace Qt::StringLiterals;
using Kind = database::ColumnType::Kind;

double TableColumn::stored(double number) const
{
    switch (m_column.type.kind) {
    case Kind::Single:
        return double(float(number));
    case Kind::Double:
        return number;
    default:
        return std::nearbyint(number);
    }
}

void TableColumn::store(size_t row, double number, bool null)
{
    if (m_values[row] == number && (m_nulls[row] != 0) == null)
        return;
    m_values[row] = number;
    m_nulls[row] = null;
    m_changed = true;
    (*m_changedRows)[row] = 1;
}

void TableColumn::set(size_t row, double number)
{
    store(row, stored(number), false);
}

void TableColumn::setNull(size_t row)
{
    store(row, 0, true);
}

ExamTable::ExamTable(database::Connection& connection, const QString& exam, const QString& stream,
                     const TableScope& scope)
    : m_conn(connection)
{
    chooseColumns(scope.columns);
    read(exam, stream, scope.filter);
    sortByRowId();
    m_changedRows.assign(rowCount(), 0);
    for (TableColumn& column : m_columns)
        column.m_changedRows = &m_changedRows;
}

void ExamTable::chooseColumns(const QStringList& wanted)
{
    for (const database::Column& column : m_conn.columns(u"成绩表"_s)) {
        if (!column.type.isNumeric())
            continue;
        if (!wanted.isEmpty() && !wanted.contains(column.name, Qt::CaseInsensitive))
            continue;
        m_positions.insert(column.name.toCaseFolded(), int(m_columns.size()));
        m_columns.emplace_back(column);
    }
}

void ExamTable::read(const QString& exam, const QString& stream, const QString& filter)
{
    QString sql = u"select rowid, 班级"_s;
    for (const TableColumn& column : m_columns)
        sql += u",["_s + column.name() + u']';
    // The index delivers the rows class by class; sorting row ids afterwards is cheaper than
    // letting the engine sort whole rows. The names stand unescaped, as everywhere: one that the
    // catalogue's statements fail on must fail here too, or its rows would be scored by the
    // formulas of the exam before.
    sql += u" from 成绩表 where 考试名称='"_s + exam + u"' and 科类='"_s + stream + u"'"_s + filter;
    database::Statement rows(m_conn, sql);
    while (rows.step()) {
        m_rowIds.push_back(rows.integer(0));
        m_classes.push_back(rows.isNull(1) ? std::numeric_limits<double>::quiet_NaN()
                                           : rows.number(1));
        int place = 2;
        for (TableColumn& column : m_columns) {
            const bool null = rows.isNull(place);
            column.m_nulls.push_back(null);
            column.m_values.push_back(null ? 0 : rows.number(place));
            ++place;
        }
    }
}

namespace {

template <class T> void permute(std::vector<T>& values, const std::vector<size_t>& order)
{
    std::vector<T> sorted;
    sorted.reserve(values.size());
    for (const size_t from : order)
        sorted.push_back(values[from]);
    values = std::move(sorted);
}

} // namespace

void ExamTable::sortByRowId()
{
    if (std::is_sorted(m_rowIds.begin(), m_rowIds.end()))
        return;
    std::vector<size_t> order(rowCount());
    std::iota(order.begin(), order.end(), size_t(0));
    std::sort(order.begin(), order.end(),
              [&](size_t a, size_t b) { return m_rowIds[a] < m_rowIds[b]; });
    permute(m_rowIds, order);
    permute(m_classes, order);
    for (TableColumn& column : m_columns) {
        permute(column.m_values, order);
        permute(column.m_nulls, order);
    }
}

const TableColumn* ExamTable::column(const QString& name) const
{
    const int position = m_positions.value(name.toCaseFolded(), -1);
    return position < 0 ? nullptr : &m_columns[size_t(position)];
}

TableColumn* ExamTable::column(const QString& name)
{
    return const_cast<TableColumn*>(std::as_const(*this).column(name));
}

database::Statement& ExamTable::writer(const std::vector<const TableColumn*>& columns)
{
    QStringList assignments;
    for (const TableColumn* column : columns)
        assignments.append(u'[' + column->name() + u"]=?"_s);
    return m_conn.prepared(u"update 成绩表 set "_s + assignments.join(u',') + u" where rowid=?"_s);
}

void ExamTable::write()
{
    std::vector<const TableColumn*> changed;
    for (const TableColumn& column : m_columns) {
        if (column.changed())
            changed.push_back(&column);
    }
    if (changed.empty())
        return;
    database::Statement& statement = writer(changed);
    for (size_t row = 0; row < rowCount(); ++row) {
        if (!m_changedRows[row])
            continue;
        statement.reset();
        int place = 0;
        for (const TableColumn* column : changed) {
            ++place;
            if (column->isNull(row))
                statement.bindNull(place);
            else if (column->m_column.type.kind == Kind::Long)
                statement.bindInteger(place, qint64(column->value(row)));
            else
                statement.bindDouble(place, column->value(row));
        }
        statement.bindInteger(place + 1, m_rowIds[row]);
        statement.run();
    }
}

} // namespace scoring
