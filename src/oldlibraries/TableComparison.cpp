#include "oldlibraries/TableComparison.h"

#include <cmath>

#include "oldlibraries/OldFileError.h"
#include "platform/database/ReadBatch.h"
#include "platform/database/SqlPieces.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using database::SqlPiece;
using database::Statement;
using Sort = LibraryValue::Sort;

namespace {

QString rowsStatement(const TargetTable& table)
{
    return database::sqlWith(u"select %1, rowid from %2 where rowid>=?1 order by rowid"_s,
                             {SqlPiece::names(table.columnNames()), SqlPiece::names({table.name})});
}

} // namespace

TableComparison::TableComparison(PageFile& file, const TargetTable& table,
                                 database::Connection& library, qint64 rowCount)
    : m_file(file),
      m_table(table),
      m_library(library),
      m_rowCount(rowCount),
      m_numberColumn(table.numberColumn()),
      m_rows(file, table.old),
      m_stored(library, rowsStatement(table))
{
}

bool TableComparison::run(const TellRows& tell)
{
    const database::ReadBatch batch(m_library);
    checkCount();
    while (m_rows.next()) {
        ++m_row;
        compareRow();
        if (!tell(m_row))
            return false;
    }
    if (m_row != m_rowCount)
        refuse();
    return true;
}

void TableComparison::checkCount() const
{
    Statement counted(m_library, database::sqlWith(u"select count(*) from %1"_s,
                                                   {SqlPiece::names({m_table.name})}));
    if (!counted.step() || counted.integer(0) != m_rowCount)
        refuse();
}

/// Goes to the row of that number in the new library; it is mostly the next one.
void TableComparison::go(qint64 number)
{
    const int numberPlace = int(m_table.columns.size());
    if (m_row > 1 && m_stored.step() && m_stored.integer(numberPlace) == number)
        return;
    m_stored.reset();
    m_stored.bindInteger(1, number);
    if (!m_stored.step() || m_stored.integer(numberPlace) != number)
        refuse();
}

/// Rows stand under their number, or in the order in which they came.
void TableComparison::compareRow()
{
    go(m_numberColumn < 0 ? m_row : m_rows.integer(m_numberColumn));
    for (int column = 0; column < int(m_table.columns.size()); ++column) {
        m_value.read(m_rows, m_table.old.columns[size_t(column)], column);
        if (!isStored(column))
            refuse();
    }
}

/// True if the new row has the value that was read last.
bool TableComparison::isStored(int column) const
{
    switch (m_value.sort) {
    case Sort::Null:
        return m_stored.isNull(column);
    case Sort::Whole:
        return m_stored.integer(column) == m_value.whole
               && (m_value.whole != 0 || !m_stored.isNull(column));
    case Sort::Real:
        // Where nothing stands, the number is 0.
        if (m_value.real == 0 || std::isnan(m_value.real))
            return m_stored.isNull(column) == std::isnan(m_value.real)
                   && m_stored.number(column) == 0;
        return m_stored.number(column) == m_value.real;
    case Sort::Text:
        return !m_stored.isNull(column)
               && QAnyStringView(QUtf8StringView(m_stored.bytes(column))) == m_value.text;
    case Sort::Bytes:
        break;
    }
    return !m_stored.isNull(column) && m_stored.bytes(column) == m_value.bytes;
}

void TableComparison::refuse() const
{
    m_file.checkUnchanged();
    throw OldFileError(OldFileFailure::Unreadable,
                       u"%1 的表“%2”前后两次读出的内容不同，没有转换。磁盘可能有问题。"_s.arg(
                           m_file.path(), m_table.old.name));
}

} // namespace oldlibraries
