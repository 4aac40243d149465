// The catalogue's answers about single exams, classes and students. They are asked once for each
// row of a run, so that statements are prepared once where their texts do not change.
#include "library/Catalogue.h"

#include "library/CatalogueSql.h"
#include "platform/database/Error.h"
#include "platform/database/Recordset.h"
#include "platform/database/Statement.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"

namespace library {

using namespace Qt::StringLiterals;
using runtime::Trap;
using runtime::Value;

namespace {

/// A field of an exam row as a Single; a text that is no number is the engine's error.
float singleField(database::Recordset& rows, const QString& column)
{
    const Value value = rows.Fields(column).Value();
    const database::ColumnType single{database::ColumnType::Kind::Single};
    return value.isNull() ? 0 : float(single.converted(value, column).toDouble());
}

} // namespace

float Catalogue::getKMMF(const QString& exam, const QString& stream, const QString& subject)
{
    const Trap trap{" - Function getKMMF/Mdl_MDB"};
    float marks = 0;
    trap([&] {
        database::Recordset rows;
        rows.Open(examRowSql(exam, stream), m_conn);
        if (rows.RecordCount() == 0)
            rows.Open(examRowSql(exam, otherStream(stream)), m_conn);
        if (rows.RecordCount() > 0)
            marks = singleField(rows, subject);
    });
    return marks;
}

float Catalogue::GetZFMF(const QString& exam, const QString& stream, const QString& total)
{
    const Trap trap{" - Function GetZFMF/Mdl_MDB"};
    float marks = 0;
    trap([&] {
        database::Recordset rows;
        rows.Open(examRowSql(exam, stream), m_conn);
        if (rows.RecordCount() == 0 && stream == u"文"_s)
            rows.Open(examRowSql(exam, u"理"_s), m_conn);
        if (rows.RecordCount() == 0)
            return;
        const QString formula = rows.Fields(total).Value().text();
        const QStringList terms = formula.isEmpty() ? QStringList() : formula.split(u'+');
        for (const QString& term : terms)
            trap([&] { marks += singleField(rows, term); });
    });
    return marks;
}

namespace {

/// An exam number, which has 16 bits. Throws Error for NULL and for one that does not fit.
int examNumber(const Value& number)
{
    if (number.isNull())
        throw runtime::Error(u"考试没有考试编号。"_s);
    const database::ColumnType integer{database::ColumnType::Kind::Integer};
    return int(integer.converted(number, u"考试编号"_s).toDouble());
}

} // namespace

int Catalogue::GetKSBH(const QString& exam)
{
    const Trap trap{" - Function GetKSBH/Mdl_MDB"};
    int number = 0;
    trap([&] {
        database::Recordset rows;
        rows.Open(u"select *  from 考试名称表 order by 考试编号"_s, m_conn);
        for (; !rows.Eof(); rows.MoveNext()) {
            if (rows.Fields(u"考试名称"_s).Value().text() == exam)
                trap([&] { number = examNumber(rows.Fields(u"考试编号"_s).Value()); });
        }
    });
    if (number != 0)
        return number;
    trap([&] {
        database::Recordset rows;
        rows.Open(u"select max(考试编号)  from 考试名称表"_s, m_conn);
        const Value highest = rows.Fields(0).Value();
        number = highest.isNull() ? 1 : examNumber(highest.toDouble() + 1);
    });
    return number;
}

namespace {

/// A field of the first student of a class. Throws the engine's error if the class has none.
Value firstStudentField(database::Connection& conn, const Value& classNumber, const QString& field)
{
    // Asked for by order and limit, the engine would walk through the students of other classes.
    database::Statement& student =
        conn.prepared(u"select ID, "_s + field
                      + u" from 信息表 where rowid=(select min(rowid) from 信息表 where 班级=?)"_s);
    student.bind({classNumber});
    if (!student.step())
        throw database::Error(database::Failure::Sql, u"没有当前记录。"_s);
    Value value =
        student.integer(0) > 0
            ? student.value(1, database::ColumnType::fromDeclaration(student.columnDeclaration(1)))
            : Value(1);
    student.finish();
    return value;
}

} // namespace

Value Catalogue::GetLeiBie(const Value& classNumber)
{
    const Trap trap{" - Function GetLeiBie/Mdl_MDB"};
    Value category = 1;
    trap([&] { category = firstStudentField(m_conn, classNumber, u"类别代码"_s); });
    return category;
}

Value Catalogue::GetBJKL(const Value& classNumber)
{
    const Trap trap{" - Function GetBJKL/Mdl_MDB"};
    Value stream = 1;
    trap([&] { stream = firstStudentField(m_conn, classNumber, u"科类"_s); });
    return stream;
}

qint64 Catalogue::GetZRS(const QString& stream, double classNumber)
{
    const Trap trap{" - Function GetZRS/Mdl_MDB"};
    qint64 students = 0;
    trap([&] {
        QString sql = u"select *  from 信息表 where 科类='"_s + stream + u"'"_s;
        if (classNumber != 0)
            sql += u" and 班级="_s + runtime::doubleText(classNumber);
        database::Recordset rows;
        rows.Open(sql, m_conn);
        students = rows.RecordCount();
    });
    return students;
}

QString Catalogue::GetGRXX(qint64 id)
{
    const Trap trap{" - Function GetGRXX/Mdl_MDB"};
    QString line;
    trap([&] {
        database::Recordset rows;
        rows.Open(u"select *  from 信息表 where id="_s + QString::number(id), m_conn);
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

QString Catalogue::GetMC(const QString& exam, const QString& column, qint64 id)
{
    const Trap trap{" - Function GetMC/Mdl_MDB"};
    QString rank;
    if (exam.isEmpty() || column.isEmpty())
        return rank;
    trap([&] {
        database::Recordset rows;
        rows.Open(u"select *  from 成绩表 where 考试名称='"_s + exam + u"' and id="_s
                      + QString::number(id),
                  m_conn);
        rank = rows.Fields(column).Value().text();
    });
    return rank;
}

QString Catalogue::GetJSMD(const QString& exam, double classNumber, const QString& subject)
{
    return teachers(exam, classNumber, {subject}).first();
}

QStringList Catalogue::teachers(const QString& exam, double classNumber,
                                const QStringList& subjects)
{
    const Trap trap{" - Function GetJSMD/Mdl_MDB"};
    QStringList found(subjects.size(), QString());
    trap([&] {
        database::Recordset rows;
        rows.Open(u"select * from 教师表 where 考试名称='"_s + exam + u"' and 班级="_s
                      + runtime::doubleText(classNumber),
                  m_conn);
        if (rows.RecordCount() == 0)
            return;
        for (int k = 0; k < subjects.size(); ++k)
            trap([&] { found[k] = rows.Fields(subjects[k]).Value().text(); });
    });
    return found;
}

} // namespace library
