#include "import/KnownStudents.h"

#include "platform/runtime/Numbers.h"

namespace importing {

using namespace Qt::StringLiterals;

KnownStudents::Students& KnownStudents::all()
{
    if (!m_students) {
        database::Statement& rows =
            m_connection.prepared(u"select ID, 姓名, 班级, 学号 from 信息表 order by rowid"_s);
        rows.reset();
        Students read;
        m_dataVersion = m_connection.dataVersion();
        take(rows, read);
        m_students = std::move(read);
    }
    return *m_students;
}

const KnownStudents::Student* KnownStudents::find(double classNumber, double number)
{
    const Students& students = all();
    const auto found = students.constFind({classNumber, number});
    return found == students.constEnd() ? nullptr : &*found;
}

void KnownStudents::assume(double classNumber, double number, const QString& name)
{
    all().insert({classNumber, number}, {0, name});
}

void KnownStudents::forgetIfOutdated()
{
    if (m_students && m_connection.dataVersion() != m_dataVersion)
        forget();
}

void KnownStudents::add(qint64 id)
{
    if (!m_students)
        return;
    database::Statement& row =
        m_connection.prepared(u"select ID, 姓名, 班级, 学号 from 信息表 where ID=?"_s);
    row.bind({id});
    take(row, *m_students);
}

void KnownStudents::take(database::Statement& rows, Students& students)
{
    while (rows.step()) {
        const runtime::Value classNumber = rows.value(2);
        const runtime::Value number = rows.value(3);
        if (!classNumber.isNumber() || !number.isNumber())
            continue;
        const qsizetype known = students.size();
        Student& student = students[{runtime::Val(classNumber), runtime::Val(number)}];
        if (students.size() > known)
            student = {rows.integer(0), rows.text(1)};
    }
}

} // namespace importing
