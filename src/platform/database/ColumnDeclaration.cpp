#include "platform/database/ColumnDeclaration.h"

#include <algorithm>

#include <sqlite3.h>

#include "platform/database/Connection.h"
#include "platform/database/Error.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"

namespace database {

using namespace Qt::StringLiterals;
using Key = ColumnDeclaration::Key;

namespace {

/// What the engine tells of a column only outside of statements.
void readKeyAndCollation(sqlite3* handle, const QString& table, ColumnDeclaration& column)
{
    const char* collation = nullptr;
    int isKey = 0;
    int isAutoNumber = 0;
    if (sqlite3_table_column_metadata(handle, "main", table.toUtf8().constData(),
                                      column.name.toUtf8().constData(), nullptr, &collation,
                                      nullptr, &isKey, &isAutoNumber)
        != SQLITE_OK)
        throw engineError(handle);
    if (qstricmp(collation, "BINARY") != 0)
        column.collation = QString::fromUtf8(collation);
    if (isKey != 0)
        column.key = isAutoNumber != 0 ? Key::AutoNumber : Key::Unique;
}

QString declarationText(const ColumnDeclaration& column)
{
    QString text = SqlPiece::names({column.name}).text() + u' ' + column.type;
    if (!column.collation.isEmpty())
        text += u" COLLATE "_s + column.collation;
    if (!column.defaultValue.isEmpty())
        text += u" DEFAULT "_s + column.defaultValue;
    if (column.key != Key::None)
        text += column.key == Key::AutoNumber ? u" PRIMARY KEY AUTOINCREMENT"_s : u" UNIQUE"_s;
    return text;
}

} // namespace

std::vector<ColumnDeclaration> columnDeclarations(Connection& connection, const QString& table)
{
    std::vector<ColumnDeclaration> columns;
    Statement info(connection, u"select name, type, dflt_value from pragma_table_info(?1)"_s);
    info.bind({table});
    while (info.step())
        columns.push_back({info.text(0), info.text(1), {}, info.text(2)});
    for (ColumnDeclaration& column : columns)
        readKeyAndCollation(connection.handle(), table, column);
    return columns;
}

QStringList columnNames(const std::vector<ColumnDeclaration>& columns)
{
    QStringList names;
    for (const ColumnDeclaration& column : columns)
        names.append(column.name);
    return names;
}

QStringList columnNames(Connection& connection, const QString& table)
{
    return columnNames(columnDeclarations(connection, table));
}

const ColumnDeclaration* findColumn(const std::vector<ColumnDeclaration>& columns,
                                    const QString& name)
{
    const auto found =
        std::find_if(columns.begin(), columns.end(), [&](const ColumnDeclaration& column) {
            return column.name.compare(name, Qt::CaseInsensitive) == 0;
        });
    return found == columns.end() ? nullptr : &*found;
}

const ColumnDeclaration* numberColumn(const std::vector<ColumnDeclaration>& columns)
{
    const auto found =
        std::find_if(columns.begin(), columns.end(), [](const ColumnDeclaration& column) {
            return column.key == ColumnDeclaration::Key::AutoNumber;
        });
    return found == columns.end() ? nullptr : &*found;
}

void createTable(Connection& connection, const QString& table,
                 const std::vector<ColumnDeclaration>& columns)
{
    QStringList texts;
    for (const ColumnDeclaration& column : columns)
        texts.append(declarationText(column));
    connection.Execute(
        u"create table %1 (%2)"_s.arg(SqlPiece::names({table}).text(), texts.join(u", "_s)));
}

void addColumn(Connection& connection, const QString& table, const ColumnDeclaration& column)
{
    // With the schema named, the statement reaches the engine as it stands.
    connection.Execute(u"ALTER TABLE main.%1 ADD COLUMN %2"_s.arg(SqlPiece::names({table}).text(),
                                                                  declarationText(column)));
}

} // namespace database
