#include "platform/database/ColumnRemoval.h"

#include <algorithm>

#include <QStringList>

#include "platform/database/Connection.h"
#include "platform/database/Sql.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"
#include "platform/database/TableNames.h"

namespace database {

using namespace Qt::StringLiterals;

namespace {

/// So many rows move at once: few enough to be stopped soon.
constexpr int rowsAtOnce = 3000;

bool hasRow(Connection& connection, const QString& sql, const std::vector<runtime::Value>& values)
{
    Statement rows(connection, sql);
    rows.bind(values);
    return rows.step();
}

QStringList texts(Connection& connection, const QString& sql, const QString& table)
{
    Statement rows(connection, sql);
    rows.bind({table});
    QStringList found;
    while (rows.step())
        found.append(rows.text(0));
    return found;
}

/// A word by which a table is more than columns of values.
bool isSpecial(const SqlToken& token)
{
    constexpr QStringView words[] = {u"autoincrement", u"as",         u"check",
                                     u"foreign",       u"references", u"virtual"};
    return std::any_of(std::begin(words), std::end(words),
                       [&](QStringView word) { return token.is(word); });
}

/// What stands in the statement of a table from its first bracket on; empty for a table that is
/// more than columns of values.
QString plainDefinition(const QString& sql)
{
    const std::optional<std::vector<SqlToken>> tokens = sqlTokens(sql);
    if (!tokens || std::any_of(tokens->begin(), tokens->end(), isSpecial))
        return {};
    const auto bracket = std::find_if(tokens->begin(), tokens->end(),
                                      [](const SqlToken& token) { return token.isSign(u'('); });
    return bracket == tokens->end() ? QString() : sql.mid(bracket->begin);
}

/// The columns of a table in brackets, behind its row ids.
QString columnsOf(Connection& connection, const QString& table)
{
    QString names = u"rowid"_s;
    for (const Column& column : connection.columns(table))
        names += u',' + bracketed(column.name);
    return names;
}

/// Connection::Execute would put names in double quotes into single ones.
void createAsItStands(Connection& connection, const QString& definition)
{
    Statement(connection, definition).run();
}

} // namespace

ColumnRemoval::ColumnRemoval(Connection& connection, const QString& table)
    : m_connection(connection), m_table(table), m_isPlain(isPlain())
{
}

bool ColumnRemoval::isPlain()
{
    Statement definition(m_connection, u"select name, sql from sqlite_master where type='table' "
                                       "and name=? collate nocase"_s);
    definition.bind({m_table});
    if (!definition.step())
        return false;
    m_table = definition.text(0);
    m_definition = plainDefinition(definition.text(1));
    const TableColumns& columns = m_connection.columns(m_table);
    return !m_definition.isEmpty() && columns.hasRowIds() && !m_table.contains(u']')
           && std::none_of(columns.begin(), columns.end(),
                           [](const Column& column) { return column.name.contains(u']'); })
           && !hasRow(m_connection,
                      u"select 1 from sqlite_master where type in ('trigger','view')"_s, {})
           && !hasRow(m_connection,
                      u"select 1 from pragma_index_list(?1) i where i.partial or exists "
                      "(select 1 from pragma_index_info(i.name) where name is null)"_s,
                      {m_table});
}

bool ColumnRemoval::isIndexed(const QString& column)
{
    return hasRow(m_connection,
                  u"select 1 from pragma_index_list(?1) i, pragma_index_info(i.name) c "
                  "where c.name=?2 collate nocase"_s,
                  {m_table, column});
}

void ColumnRemoval::drop(const QString& column)
{
    const QString name = SqlPiece::name(column).text();
    // The engine says what is wrong with an indexed one.
    if (!m_isPlain || isIndexed(column))
        return m_connection.Execute(u"ALTER TABLE "_s + bracketed(m_table) + u" DROP COLUMN "_s
                                    + name);
    makeCopy();
    m_connection.Execute(u"ALTER TABLE "_s + bracketed(m_copy) + u" DROP COLUMN "_s + name);
}

void ColumnRemoval::makeCopy()
{
    if (!m_copy.isEmpty())
        return;
    const QString copy = freeName(m_connection, m_table);
    createAsItStands(m_connection, u"CREATE TABLE "_s + bracketed(copy) + m_definition);
    m_copy = copy;
}

bool ColumnRemoval::finish(const GoOn& goOn)
{
    if (m_copy.isEmpty())
        return true;
    const QString ofIndexes = u" from sqlite_master where type='index' and sql is not null and "
                              "tbl_name=? collate nocase order by rowid"_s;
    const QStringList names = texts(m_connection, u"select name"_s + ofIndexes, m_table);
    const QStringList definitions = texts(m_connection, u"select sql"_s + ofIndexes, m_table);
    // Made anew behind the rows, which is quicker than keeping them up.
    for (const QString& index : names)
        m_connection.Execute(u"DROP INDEX \""_s + QString(index).replace(u'"', u"\"\""_s) + u'"');
    if (!moveRows(goOn))
        return false;
    m_connection.Execute(u"DROP TABLE "_s + bracketed(m_table));
    m_connection.Execute(u"ALTER TABLE "_s + bracketed(m_copy) + u" RENAME TO "_s
                         + bracketed(m_table));
    for (const QString& definition : definitions)
        createAsItStands(m_connection, definition);
    return true;
}

/// The rows that have moved make room for those that follow, so that the file does not grow.
bool ColumnRemoval::moveRows(const GoOn& goOn)
{
    const QString names = columnsOf(m_connection, m_copy);
    Statement count(m_connection, u"select count(*) from "_s + bracketed(m_table));
    count.step();
    const qint64 total = count.integer(0);
    count.finish();
    Statement move(m_connection, u"insert into "_s + bracketed(m_copy) + u'(' + names
                                     + u") select "_s + names + u" from "_s + bracketed(m_table)
                                     + u" order by rowid limit ?"_s);
    Statement remove(m_connection, u"delete from "_s + bracketed(m_table)
                                       + u" where rowid<=(select max(rowid) from "_s
                                       + bracketed(m_copy) + u')');
    for (qint64 done = 0; goOn(done, total);) {
        move.bind({rowsAtOnce});
        const int moved = move.run();
        if (moved == 0)
            return true;
        remove.bind({});
        remove.run();
        done += moved;
    }
    return false;
}

} // namespace database
