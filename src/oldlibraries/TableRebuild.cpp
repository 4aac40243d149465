#include "oldlibraries/TableRebuild.h"

#include <QStringList>

#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"
#include "platform/database/TableNames.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using database::ColumnDeclaration;
using database::numberColumn;
using database::SqlPiece;
using database::sqlWith;

namespace {

/// What goes over: all columns that stood, and the row ids, unless one of the columns is these
/// before and after, or the rows get new ones.
QStringList keptColumns(const std::vector<ColumnDeclaration>& before,
                        const std::vector<ColumnDeclaration>& after)
{
    QStringList names = database::columnNames(before);
    const ColumnDeclaration* former = numberColumn(before);
    const ColumnDeclaration* number = numberColumn(after);
    if (former && number ? former->name != number->name : !former && !number)
        names.prepend(u"rowid"_s);
    return names;
}

/// A number that was given once is not given again, though its row is gone.
void keepLastNumber(database::Connection& library, const QString& from, const QString& to)
{
    database::Statement forget(library, u"delete from sqlite_sequence where name=?1 and exists "
                                        "(select 1 from sqlite_sequence where name=?2)"_s);
    forget.bind({to, from});
    forget.run();
    database::Statement keep(library, u"update sqlite_sequence set name=?1 where name=?2"_s);
    keep.bind({to, from});
    keep.run();
}

} // namespace

void rebuildTable(database::Connection& library, const QString& table,
                  const std::vector<ColumnDeclaration>& columns)
{
    const std::vector<ColumnDeclaration> before = database::columnDeclarations(library, table);
    const QString copy = database::freeName(library, table);
    const SqlPiece copyName = SqlPiece::names({copy});
    const SqlPiece name = SqlPiece::names({table});
    database::createTable(library, copy, columns);
    library.Execute(sqlWith(u"insert into %1(%2) select %2 from %3 order by rowid"_s,
                            {copyName, SqlPiece::names(keptColumns(before, columns)), name}));
    if (numberColumn(before))
        keepLastNumber(library, table, copy);
    library.Execute(sqlWith(u"drop table %1"_s, {name}));
    library.Execute(sqlWith(u"alter table %1 rename to %2"_s, {copyName, name}));
}

} // namespace oldlibraries
