#include "library/Teachers.h"

#include "platform/database/Recordset.h"
#include "platform/runtime/Numbers.h"
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
