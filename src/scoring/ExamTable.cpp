#include "scoring/ExamTable.h"

#include <algorithm>
#include <limits>
#include <map>
#include <numeric>

#include "platform/database/SqlPieces.h"
#include "platform/runtime/Dialogs.h"

namespace scoring {

using namespace Qt::StringLiterals;
using database::SqlPiece;

constexpr double null = std::numeric_limits<double>::quiet_NaN();

void TableColumn::append(double number)
{
    const bool isNull = std::isnan(number);
    m_values.push_back(isNull ? 0 : number);
    m_cells.push_back(isNull ? Cell::Null : Cell::Number);
}

void TableColumn::fill(size_t row, double number)
{
    if (m_cells[row] != Cell::Unread)
        return;
    const bool isNull = std::isnan(number);
    m_values[row] = isNull ? 0 : number;
    m_cells[row] = isNull ? Cell::Null : Cell::Number;
}

bool TableColumn::hasUnread() const
{
    return std::find(m_cells.begin(), m_cells.end(), Cell::Unread) != m_cells.end();
}

ExamTable::ExamTable(database::Connection& connection, const QString& exam, const QString& stream,
                     const TableScope& scope)
    : m_conn(connection)
{
    chooseColumns(scope);
    read(exam, stream, scope.filter);
    sortByRowId();
    m_changedRows.assign(rowCount(), 0);
    for (TableColumn& column : m_columns) {
        column.m_changedRows = &m_changedRows;
        column.m_values.resize(rowCount(), 0);
        column.m_cells.resize(rowCount(), TableColumn::Cell::Unread);
    }
}

void ExamTable::chooseColumns(const TableScope& scope)
{
    const auto isWanted = [&scope](const database::Column& column) {
        return scope.columns.isEmpty() || scope.columns.contains(column.name, Qt::CaseInsensitive);
    };
    std::vector<TableColumn> later;
    for (const database::Column& column : m_conn.columns(u"成绩表"_s)) {
        if (!column.type.isNumeric())
            continue;
        if (isWanted(column))
            m_columns.emplace_back(column);
        else if (scope.others == TableScope::Others::ReadWhenAskedFor)
            later.emplace_back(column);
    }
    m_readAtOnce = m_columns.size();
    m_columns.insert(m_columns.end(), later.begin(), later.end());
    for (size_t i = 0; i < m_columns.size(); ++i)
        m_positions.insert(m_columns[i].name().toCaseFolded(), int(i));
}

namespace {

/// Tells how many values of a column are no numbers, or none that can be reckoned with.
void tellOthers(const QString& exam, const QString& stream, const std::map<QString, int>& others)
{
    for (const auto& [column, count] : others)
        runtime::warn(
            u"考试“%1”（%2）的列“%3”里有 %4 个内容不是可以计算的数字，按没有成绩处理。"_s.arg(
                exam, stream, column, QString::number(count)));
}

} // namespace

void ExamTable::read(const QString& exam, const QString& stream, const QString& filter)
{
    QStringList names;
    for (size_t i = 0; i < m_readAtOnce; ++i)
        names.append(m_columns[i].name());
    // The index delivers the rows class by class; sorting row ids afterwards is cheaper than
    // letting the engine sort whole rows.
    database::Statement rows(
        m_conn,
        database::sqlWith(u"select rowid, 班级%1 from 成绩表 where 考试名称=? and 科类=?%2"_s,
                          {SqlPiece::moreNames(names), SqlPiece::condition(filter)}));
    // A name that the catalogue's statements refuse is refused here too, or its rows would be
    // scored by the formulas of the exam before.
    rows.bindQuoted({exam, stream});
    std::vector<double> numbers(1 + m_readAtOnce);
    std::map<QString, int> others;
    while (rows.step()) {
        m_rowIds.push_back(rows.integer(0));
        const bool hasOthers = rows.readNumbers(1, numbers);
        m_classes.push_back(numbers[0]);
        for (size_t i = 0; i < m_readAtOnce; ++i) {
            m_columns[i].append(numbers[i + 1]);
            if (hasOthers && std::isnan(numbers[i + 1]) && !rows.isNull(int(i) + 2))
                ++others[m_columns[i].name()];
        }
    }
    tellOthers(exam, stream, others);
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
    for (size_t i = 0; i < m_readAtOnce; ++i) {
        permute(m_columns[i].m_values, order);
        permute(m_columns[i].m_cells, order);
    }
}

int ExamTable::position(const QString& name) const
{
    return m_positions.value(name.toCaseFolded(), -1);
}

TableColumn* ExamTable::resultColumn(const QString& name)
{
    const int found = position(name);
    return found < 0 ? nullptr : &m_columns[size_t(found)];
}

TableColumn* ExamTable::column(const QString& name)
{
    TableColumn* found = resultColumn(name);
    if (!found || !found->hasUnread())
        return found;
    // Who asks for one of them mostly asks for the others next.
    std::vector<TableColumn*> unread;
    for (TableColumn& column : m_columns) {
        if (column.hasUnread())
            unread.push_back(&column);
    }
    readRest(unread);
    return found;
}

const TableColumn* ExamTable::column(const QString& name) const
{
    const int found = position(name);
    return found < 0 ? nullptr : &m_columns[size_t(found)];
}

namespace {

QStringList namesOf(const std::vector<TableColumn*>& columns)
{
    QStringList names;
    for (const TableColumn* column : columns)
        names.append(column->name());
    return names;
}

} // namespace

void ExamTable::readRest(const std::vector<TableColumn*>& columns)
{
    if (columns.empty())
        return;
    database::Statement row(m_conn, database::sqlWith(u"select %1 from 成绩表 where rowid=?"_s,
                                                      {SqlPiece::names(namesOf(columns))}));
    std::vector<double> numbers(columns.size());
    for (size_t i = 0; i < rowCount(); ++i) {
        row.reset();
        row.bindInteger(1, m_rowIds[i]);
        if (row.step())
            row.readNumbers(0, numbers);
        else
            std::fill(numbers.begin(), numbers.end(), null);
        for (size_t c = 0; c < columns.size(); ++c)
            columns[c]->fill(i, numbers[c]);
    }
}

/// The statement that writes a row. Columns that were not read are compared by the engine, which
/// leaves a row alone that has all the values already.
database::Statement& ExamTable::writer(const std::vector<TableColumn*>& columns)
{
    const QStringList names = namesOf(columns);
    const int count = int(names.size());
    QString sql = u"update 成绩表 set %1 where rowid=%2"_s;
    if (m_readAtOnce < m_columns.size())
        sql = u"update 成绩表 set %1 where rowid=%2 and (%3) is not (%4)"_s;
    return m_conn.prepared(
        database::sqlWith(sql, {SqlPiece::assignments(names), SqlPiece::places(count + 1, 1),
                                SqlPiece::names(names), SqlPiece::places(1, count)}));
}

std::vector<TableColumn*> ExamTable::changedColumns()
{
    std::vector<TableColumn*> changed;
    std::vector<TableColumn*> unread;
    for (TableColumn& column : m_columns) {
        if (!column.m_changed)
            continue;
        changed.push_back(&column);
        if (column.hasUnread())
            unread.push_back(&column);
    }
    readRest(unread);
    return changed;
}

void ExamTable::write()
{
    const std::vector<TableColumn*> changed = changedColumns();
    if (!changed.empty())
        writeRows(writer(changed), changed);
}

void ExamTable::writeRows(database::Statement& statement, const std::vector<TableColumn*>& columns)
{
    // The numbers lie column by column and go out row by row: turned over in blocks, they are
    // fetched from memory once.
    constexpr size_t blockRows = 32;
    const size_t width = columns.size();
    std::vector<double> block(blockRows * width);
    for (size_t first = 0; first < rowCount(); first += blockRows) {
        const size_t rows = std::min(blockRows, rowCount() - first);
        for (size_t c = 0; c < width; ++c) {
            for (size_t r = 0; r < rows; ++r)
                block[r * width + c] =
                    columns[c]->isNull(first + r) ? null : columns[c]->value(first + r);
        }
        for (size_t r = 0; r < rows; ++r) {
            if (!m_changedRows[first + r])
                continue;
            statement.reset();
            statement.bindNumbers(1, {&block[r * width], width});
            statement.bindInteger(int(width) + 1, m_rowIds[first + r]);
            statement.run();
        }
    }
}

} // namespace scoring
