#include "platform/database/TableNames.h"

#include "platform/database/Connection.h"
#include "platform/database/Statement.h"

namespace database {

using namespace Qt::StringLiterals;

namespace {

bool isTaken(Connection& connection, const QString& name)
{
    Statement found(connection, u"select 1 from sqlite_master where name=? collate nocase"_s);
    found.bind({name});
    return found.step();
}

} // namespace

QStringList tableNames(Connection& connection)
{
    Statement tables(connection, u"select name from sqlite_master where type='table' "
                                 "and name not like 'sqlite\\_%' escape '\\' order by rowid"_s);
    QStringList names;
    while (tables.step())
        names.append(tables.text(0));
    return names;
}

QString freeName(Connection& connection, QString name)
{
    do
        name += u'_';
    while (isTaken(connection, name));
    return name;
}

} // namespace database
