#include "maintenance/SchoolClasses.h"

#include "maintenance/QuotedText.h"
#include "platform/database/Error.h"
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

double classNumber(const QString& className)
{
    if (className.isEmpty())
        throw database::Error(database::Failure::Sql,
                              u"有学生没有班级，条件“班级=”后面缺少数字。"_s);
    return numberIn(className, u"班级“%1”不是数字。"_s);
}

} // namespace maintenance
