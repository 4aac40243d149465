#include "cli/ChosenStudent.h"

#include "cli/ChosenOptions.h"
#include "platform/database/Statement.h"

namespace cli {

using namespace Qt::StringLiterals;

namespace {

/// ID of the first student that the statement finds; throws UsageError, saying `who`, for none.
qint64 studentId(database::Connection& conn, const QString& sql,
                 const std::vector<runtime::Value>& values, const QString& who)
{
    database::Statement& rows = conn.prepared(sql);
    rows.bind(values);
    if (!rows.step())
        throw UsageError(u"成绩库里没有%1的学生。"_s.arg(who));
    const qint64 id = rows.integer(0);
    rows.finish();
    return id;
}

} // namespace

void checkStudent(const Arguments& arguments)
{
    const bool byPlace = arguments.has(u"class"_s) || arguments.has(u"number"_s);
    if (arguments.has(u"id"_s) && byPlace)
        throw UsageError(u"--id 不能和 --class、--number 一起使用。"_s);
    if (arguments.has(u"id"_s))
        return;
    for (const QString& needed : {u"class"_s, u"number"_s}) {
        if (!arguments.has(needed))
            throw byPlace ? missingOption(needed) : missingOption(u"id"_s);
    }
}

qint64 chosenStudent(const Session& session)
{
    const Arguments& arguments = session.arguments;
    database::Connection& conn = session.scores.Conn;
    if (arguments.has(u"id"_s))
        return studentId(conn, u"select ID from 信息表 where ID=?"_s,
                         {chosenNumber(arguments, u"id"_s)},
                         u" ID 为 %1 "_s.arg(arguments.value(u"id"_s)));
    return studentId(
        conn, u"select ID from 信息表 where 班级=? and 学号=? order by rowid"_s,
        {chosenNumber(arguments, u"class"_s), chosenNumber(arguments, u"number"_s)},
        u" %1 班 %2 号"_s.arg(arguments.value(u"class"_s), arguments.value(u"number"_s)));
}

} // namespace cli
