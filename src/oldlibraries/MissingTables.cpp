#include "oldlibraries/MissingTables.h"

#include <QStringList>

#include "platform/database/ColumnDeclaration.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"
#include "platform/database/TableNames.h"

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

void addMissingTables(database::Connection& library, database::Connection& emptyLibrary,
                      std::vector<Finding>& findings)
{
    const QStringList present = database::tableNames(library);
    for (const QString& table : database::tableNames(emptyLibrary)) {
        if (!present.contains(table, Qt::CaseInsensitive))
            addTable(library, emptyLibrary, table, findings);
    }
}

} // namespace oldlibraries
