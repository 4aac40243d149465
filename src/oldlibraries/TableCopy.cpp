#include "oldlibraries/TableCopy.h"

#include "platform/database/Error.h"
#include "platform/database/SqlPieces.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using database::SqlPiece;
using database::Statement;
using Sort = LibraryValue::Sort;

namespace {

/// As the new library writes them.
constexpr qint64 mostBytesOfLetter = 3;

QString insertStatement(const TargetTable& table)
{
    return database::sqlWith(u"insert into %1 (%2) values (%3)"_s,
                             {SqlPiece::names({table.name}), SqlPiece::names(table.columnNames()),
                              SqlPiece::places(1, int(table.columns.size()))});
}

} // namespace

TableCopy::TableCopy(PageFile& file, const TargetTable& table, database::Connection& library,
                     std::vector<Finding>& findings)
    : m_table(table),
      m_findings(findings),
      m_longestRow(library.longestValue()),
      m_rows(file, table.old),
      m_insert(library, insertStatement(table))
{
}

Copied TableCopy::run(const TellRows& tell)
{
    while (m_rows.next()) {
        ++m_row;
        if (!copyRow())
            return Copied::UnfitKeys;
        if (!tell(m_row))
            return Copied::Cancelled;
    }
    for (const auto& [kind, oddities] : m_oddities)
        oddities.tell(m_findings);
    tellOrder();
    tellCount();
    return Copied::All;
}

bool TableCopy::copyRow()
{
    m_rowBytes = 0;
    m_insert.reset();
    for (int place = 0; place < int(m_table.columns.size()); ++place) {
        m_value.read(m_rows, m_table.old.columns[size_t(place)], place);
        if (!suitsKey(m_table.columns[size_t(place)].key))
            return false;
        bindValue(place);
    }
    return insertRow();
}

/// Takes the value over that was read last.
void TableCopy::bindValue(int place)
{
    if (!m_value.oddity.isEmpty())
        tellOddity(place);
    switch (m_value.sort) {
    case Sort::Null:
        return m_insert.bindNull(place + 1);
    case Sort::Whole:
        return m_insert.bindInteger(place + 1, m_value.whole);
    case Sort::Real:
        return m_insert.bindDouble(place + 1, m_value.real);
    case Sort::Text:
        m_rowBytes += mostBytesOfLetter * m_value.text.size();
        return m_insert.bindValue(place + 1, m_value.text);
    case Sort::Bytes:
        m_rowBytes += m_value.bytes.size();
        return m_insert.bindValue(place + 1, m_value.bytes);
    }
}

bool TableCopy::suitsKey(database::ColumnDeclaration::Key key)
{
    if (key == database::ColumnDeclaration::Key::None)
        return true;
    if (m_value.sort == Sort::Null)
        return false;
    if (key == database::ColumnDeclaration::Key::AutoNumber)
        takeNumber(m_value.whole);
    return true;
}

void TableCopy::tellOddity(int place)
{
    const OldColumn& column = m_table.old.columns[size_t(place)];
    FaultKind& kind = m_oddities
                          .try_emplace({place, m_value.oddity}, m_table.old.name,
                                       m_value.oddity.toString(), column.name)
                          .first->second;
    kind.add(m_row, column.name, kind.isListed() ? oldText(m_rows, column, place) : QString());
}

bool TableCopy::insertRow()
{
    try {
        if (m_rowBytes <= m_longestRow) {
            m_insert.run();
            return true;
        }
    } catch (const database::Error& error) {
        if (error.failure() != database::Failure::Value)
            throw;
        if (m_table.hasKeys())
            return false;
    }
    throw runtime::Error(
        u"表“%1”第 %2 行的内容太长，不能转换。"_s.arg(m_table.old.name, QString::number(m_row)));
}

void TableCopy::takeNumber(qint64 number)
{
    m_isAscending = m_isAscending && (m_row == 1 || number > m_lastNumber);
    m_lastNumber = number;
}

void TableCopy::add(qint64 row, const QString& column, const QString& value, const QString& done)
{
    m_findings.push_back({m_table.old.name, row, column, value, done});
}

void TableCopy::tellOrder()
{
    if (!m_isAscending)
        add(0, m_table.columns[size_t(m_table.numberColumn())].name, {},
            u"旧库里的行不按这个编号的次序，新库里按它的次序。"_s);
}

void TableCopy::tellCount()
{
    if (m_row != m_table.old.rowCount)
        add(0, {}, QString::number(m_table.old.rowCount),
            u"旧库记着 %1 行，读到 %2 行；读到的都已转换，请核对。"_s.arg(
                QString::number(m_table.old.rowCount), QString::number(m_row)));
}

void keepLastNumber(database::Connection& library, const TargetTable& table)
{
    const qint64 last = table.old.lastAutoNumber;
    if (table.numberColumn() < 0 || last <= 0)
        return;
    Statement raised(library, u"update sqlite_sequence set seq=max(seq,?2) where name=?1"_s);
    raised.bind({table.name, last});
    if (raised.run() > 0)
        return;
    Statement added(library, u"insert into sqlite_sequence (name,seq) values (?1,?2)"_s);
    added.bind({table.name, last});
    added.run();
}

} // namespace oldlibraries
