#include "library/Teachers.h"

#include "platform/database/Error.h"
#include "platform/database/Statement.h"
#include "platform/runtime/Trap.h"

namespace library {

using namespace Qt::StringLiterals;
using runtime::Trap;

namespace {

/// Throws database::Error for a subject that has no column.
int columnOf(const database::TableColumns& columns, const QString& subject)
{
    const int column = columns.find(subject);
    if (column < 0)
        throw database::Error(database::Failure::Sql, database::noSuchColumn(subject));
    return column;
}

} // namespace

QString Teachers::GetJSMD(const QString& exam, double classNumber, const QString& subject)
{
    return ofSubjects(exam, classNumber, {subject}).first();
}

QStringList Teachers::ofSubjects(const QString& exam, double classNumber,
                                 const QStringList& subjects)
{
    const Trap trap{" - Function GetJSMD/Mdl_MDB"};
    QStringList found(subjects.size(), QString());
    trap([&] {
        database::Statement& row = m_conn.prepared(u"select * from 教师表 where 考试名称='"_s + exam
                                                   + u"' and 班级=? order by rowid"_s);
        row.bind({classNumber});
        if (row.step()) {
            const database::TableColumns& columns = m_conn.columns(u"教师表"_s);
            for (int k = 0; k < subjects.size(); ++k)
                trap([&] {
                    const int column = columnOf(columns, subjects[k]);
                    found[k] = row.value(column, columns.at(column).type).text();
                });
        }
        row.finish();
    });
    return found;
}

} // namespace library
