#include "oldlibraries/MissingTables.h"

#include <QStringList>

#include "platform/database/ColumnDeclaration.h"
#include "platform/database/Error.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using database::SqlPiece;
using database::Statement;

namespace {

/// Copies all rows of a table that both have alike; gives their number.
int copyRows(database::Connection& library, database::Connection& emptyLibrary,
             const QString& table)
{
    const SqlPiece name = SqlPiece::names({table});
    Statement rows(emptyLibrary, database::sqlWith(u"select * from %1 order by rowid"_s, {name}));
    Statement row(library, database::sqlWith(u"insert into %1 values(%2)"_s,
                                             {name, SqlPiece::places(1, rows.columnCount())}));
    int count = 0;
    for (; rows.step(); ++count) {
        row.reset();
        for (int column = 0; column < rows.columnCount(); ++column)
            row.bindValue(column + 1, rows.value(column));
        row.run();
    }
    return count;
}

void addTable(database::Connection& library, database::Connection& emptyLibrary,
              const QString& table, std::vector<Finding>& findings)
{
    database::createTable(library, table, database::columnDeclarations(emptyLibrary, table));
    const int rows = copyRows(library, emptyLibrary, table);
    findings.push_back(
        {table,
         0,
         {},
         {},
         rows == 0 ? u"旧库没有这个表，已经建立。"_s
                   : u"旧库没有这个表，已经建立，内容是新成绩库的 %1 行默认值。"_s.arg(rows)});
}

} // namespace

QStringList tableNames(database::Connection& library)
{
    Statement tables(library, u"select name from sqlite_master where type='table' "
                              "and name not like 'sqlite\\_%' escape '\\' order by rowid"_s);
    QStringList names;
    while (tables.step())
        names.append(tables.text(0));
    return names;
}

void addMissingTables(database::Connection& library, database::Connection& emptyLibrary,
                      std::vector<Finding>& findings)
{
    const QStringList present = tableNames(library);
    for (const QString& table : tableNames(emptyLibrary)) {
        if (!present.contains(table, Qt::CaseInsensitive))
            addTable(library, emptyLibrary, table, findings);
    }
}

void addMissingIndexes(database::Connection& library, database::Connection& emptyLibrary,
                       std::vector<Finding>& findings)
{
    Statement known(library,
                    u"select 1 from sqlite_master where type='index' and name=? collate nocase"_s);
    Statement indexes(emptyLibrary, u"select name, tbl_name, sql from sqlite_master "
                                    "where type='index' and sql is not null order by rowid"_s);
    while (indexes.step()) {
        known.bind({indexes.text(0)});
        const bool isKnown = known.step();
        known.finish();
        try {
            if (!isKnown)
                library.Execute(indexes.text(2));
        } catch (const database::Error& error) {
            if (error.failure() != database::Failure::Sql)
                throw;
            findings.push_back({indexes.text(1),
                                0,
                                {},
                                indexes.text(0),
                                u"索引没有建立，查找会慢一些：%1"_s.arg(error.description())});
        }
    }
}

} // namespace oldlibraries
