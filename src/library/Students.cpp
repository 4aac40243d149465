#include "library/Students.h"

#include <cmath>

#include "platform/database/Error.h"
#include "platform/database/Recordset.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"

namespace library {

using namespace Qt::StringLiterals;
using runtime::Trap;
using runtime::Value;

namespace {

/// A field of the first student of a class. Throws the engine's error if the class has none.
Value firstStudentField(database::Connection& conn, const Value& classNumber, const QString& field)
{
    // Asked for by order and limit, the engine would walk through the students of other classes.
    database::Statement& student = conn.prepared(database::sqlWith(
        u"select ID, %1 from 信息表 where rowid=(select min(rowid) from 信息表 where 班级=?)"_s,
        {database::SqlPiece::name(field)}));
    student.bind({classNumber});
    if (!student.step())
        throw database::Error(database::Failure::Sql, database::noCurrentRow());
    Value value =
        student.integer(0) > 0
            ? student.value(1, database::ColumnType::fromDeclaration(student.columnDeclaration(1)))
            : Value(1);
    student.finish();
    return value;
}

} // namespace

Value Students::GetLeiBie(const Value& classNumber)
{
    const Trap trap{" - Function GetLeiBie/Mdl_MDB"};
    Value category = 1;
    trap([&] { category = firstStudentField(m_conn, classNumber, u"类别代码"_s); });
    return category;
}

Value Students::GetBJKL(const Value& classNumber)
{
    const Trap trap{" - Function GetBJKL/Mdl_MDB"};
    Value stream = 1;
    trap([&] { stream = firstStudentField(m_conn, classNumber, u"科类"_s); });
    return stream;
}

qint64 Students::GetZRS(const QString& stream, double classNumber)
{
    const Trap trap{" - Function GetZRS/Mdl_MDB"};
    qint64 students = 0;
    trap([&] {
        database::Recordset rows;
        if (classNumber == 0)
            rows.Open(u"select count(*) from 信息表 where 科类=?"_s, {stream}, m_conn);
        else
            rows.Open(u"select count(*) from 信息表 where 科类=? and 班级=?"_s,
                      {stream, classNumber}, m_conn);
        students = qint64(rows.Fields(0).Value().toDouble());
    });
    return students;
}

std::optional<Value> Students::classOf(qint64 id)
{
    database::Recordset rows;
    rows.Open(u"select 班级 from 信息表 where id=?"_s, {id}, m_conn);
    return rows.Eof() ? std::nullopt : std::optional(rows.Fields(0).Value());
}

QString Students::GetGRXX(qint64 id)
{
    const Trap trap{" - Function GetGRXX/Mdl_MDB"};
    QString line;
    trap([&] {
        database::Recordset rows;
        rows.Open(u"select *  from 信息表 where id=?"_s, {id}, m_conn);
        const auto field = [&](const QString& name) { return rows.Fields(name).Value().text(); };
        line =
            field(u"姓名"_s) + u" "_s + field(u"班级"_s) + u" 班 "_s + field(u"学号"_s) + u" 号 "_s;
        for (const QString& name : {u"类别"_s, u"科类"_s}) {
            if (!field(name).isEmpty())
                line += u"，"_s + field(name);
        }
    });
    return line;
}

QString Students::GetMC(const QString& exam, const QString& column, qint64 id)
{
    const Trap trap{" - Function GetMC/Mdl_MDB"};
    QString rank;
    if (exam.isEmpty() || column.isEmpty())
        return rank;
    trap([&] {
        database::Recordset rows;
        rows.Open(u"select *  from 成绩表 where 考试名称=? and id=?"_s, {exam, id}, m_conn);
        rank = rows.Fields(column).Value().text();
    });
    return rank;
}

double freeNumber(database::Connection& connection, double classNumber, double highest)
{
    double number = std::floor(highest) + 1;
    database::Statement& rows = connection.prepared(
        u"select distinct 学号 from 成绩表 where 班级=? and 学号>=? order by 学号"_s);
    rows.bind({classNumber, number});
    while (rows.step()) {
        if (runtime::Val(rows.value(0)) == number)
            ++number;
    }
    return number;
}

} // namespace library
