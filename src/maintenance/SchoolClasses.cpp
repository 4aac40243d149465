#include "maintenance/SchoolClasses.h"

#include "platform/database/Recordset.h"

namespace maintenance {

using namespace Qt::StringLiterals;

QStringList classesOfStudents(database::Connection& connection)
{
    QStringList classes;
    database::Recordset rows;
    rows.Open(u"select distinct 班级  from 信息表 order by 班级"_s, connection);
    for (; !rows.Eof(); rows.MoveNext())
        classes.append(rows.Fields(u"班级"_s).Value().text());
    return classes;
}

} // namespace maintenance
