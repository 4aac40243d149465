#include "oldlibraries/TableCopy.h"

#include "oldlibraries/OldFileError.h"
#include "oldlibraries/OldRows.h"
#include "oldlibraries/RowValues.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using database::SqlPiece;
using database::sqlWith;
using database::Statement;
using runtime::Value;

std::optional<qint64> TableCopy::copy(std::vector<Finding>& findings, const Tell& tell)
{
    database::createTable(m_library, m_table.name, m_table.columns);
    Statement insert(
        m_library, sqlWith(u"insert into %1 (%2) values (%3)"_s,
                           {SqlPiece::names({m_table.name}), SqlPiece::names(m_table.columnNames()),
                            SqlPiece::places(1, int(m_table.columns.size()))}));
    OldRows rows(m_file, m_table.old);
    qint64 count = 0;
    while (rows.next()) {
        bind(insert, rows, ++count, findings);
        insert.run();
        if (!tell(count))
            return std::nullopt;
    }
    if (m_table.numberColumn() >= 0)
        keepLastNumber();
    if (count != m_table.old.rowCount)
        findings.push_back(
            {m_table.old.name,
             0,
             {},
             QString::number(m_table.old.rowCount),
             u"旧库记着 %1 行，读到 %2 行，读到的都已转换"_s.arg(m_table.old.rowCount).arg(count)});
    return count;
}

void TableCopy::bind(Statement& insert, OldRows& rows, qint64 row,
                     std::vector<Finding>& findings) const
{
    insert.reset();
    for (size_t i = 0; i < m_table.old.columns.size(); ++i) {
        const OldColumn& column = m_table.old.columns[i];
        const Value value = libraryValue(rows, column, int(i));
        if (value.kind() == Value::Kind::Binary
            && value.toBytes().size() > m_library.longestValue())
            throw runtime::Error(u"表“%1”第 %2 行的“%3”太大，不能转换。"_s.arg(m_table.old.name)
                                     .arg(row)
                                     .arg(column.name));
        const QString odd = oddity(value);
        if (!odd.isEmpty())
            findings.push_back({m_table.old.name, row, column.name, value.text(), odd});
        insert.bindValue(int(i) + 1, value);
    }
}

/// A number that was given once, to a row that is gone by now too, is never given again.
void TableCopy::keepLastNumber() const
{
    if (m_table.old.lastAutoNumber <= 0)
        return;
    Statement numbers(m_library, u"update sqlite_sequence set seq=max(seq,?2) where name=?1"_s);
    numbers.bind({m_table.name, qint64(m_table.old.lastAutoNumber)});
    if (numbers.run() > 0)
        return;
    Statement first(m_library, u"insert into sqlite_sequence (name,seq) values (?1,?2)"_s);
    first.bind({m_table.name, qint64(m_table.old.lastAutoNumber)});
    first.run();
}

bool TableCopy::compare(qint64 rowCount, const Tell& tell)
{
    Statement counted(m_library,
                      sqlWith(u"select count(*) from %1"_s, {SqlPiece::names({m_table.name})}));
    if (!counted.step() || counted.integer(0) != rowCount)
        refuseDifference();
    Statement stored(m_library, sqlWith(u"select %1 from %2 where rowid=?1"_s,
                                        {SqlPiece::names(m_table.columnNames()),
                                         SqlPiece::names({m_table.name})}));
    const int number = m_table.numberColumn();
    OldRows rows(m_file, m_table.old);
    qint64 row = 0;
    while (rows.next()) {
        stored.reset();
        stored.bindInteger(1, number >= 0 ? rows.integer(number) : row + 1);
        ++row;
        if (!stored.step())
            refuseDifference();
        for (int i = 0; i < int(m_table.columns.size()); ++i) {
            if (!isStored(libraryValue(rows, m_table.old.columns[size_t(i)], i), stored, i))
                refuseDifference();
        }
        if (!tell(row))
            return false;
    }
    if (row != rowCount)
        refuseDifference();
    return true;
}

void TableCopy::refuseDifference() const
{
    m_file.checkUnchanged();
    throw OldFileError(OldFileFailure::Unreadable,
                       u"%1 的表“%2”两次读出的内容不同，没有转换。硬盘可能有问题。"_s.arg(
                           m_file.path(), m_table.old.name));
}

} // namespace oldlibraries
