#include "library/Teachers.h"

#include "platform/database/Error.h"
#include "platform/database/Statement.h"
#include "platform/runtime/Trap.h"

namespace library {

using namespace Qt::StringLiterals;
using runtime::Trap;

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
        database::Statement& row =
            m_conn.prepared(u"select * from 教师表 where 考试名称=? and 班级=? order by rowid"_s);
        const database::TableColumns& columns = m_conn.columns(u"教师表"_s);
        QStringList missing;
        row.bindQuoted({exam, classNumber});
        const bool isListed = row.step();
        for (int k = 0; isListed && k < subjects.size(); ++k) {
            const int column = columns.find(subjects[k]);
            if (column >= 0)
                found[k] = row.value(column, columns.at(column).type).text();
            else
                missing.append(subjects[k]);
        }
        // Told only now: on its row the statement keeps others from writing the file.
        row.finish();
        for (const QString& subject : std::as_const(missing))
            trap.fail(database::noSuchColumn(subject));
    });
    return found;
}

} // namespace library
