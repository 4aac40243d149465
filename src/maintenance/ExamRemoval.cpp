#include "maintenance/ExamRemoval.h"

#include <algorithm>

#include "maintenance/RemovalQuestion.h"
#include "platform/runtime/Trap.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using runtime::Trap;

void removeExams(library::ScoreLibrary& scoreLibrary, const QStringList& selected)
{
    const Trap trap{" - Private Sub meSCKS_Click/FormMain"};
    if (selected.isEmpty()
        || !isRemovalConfirmed(u"确实要删除以下考试吗？删除后不可恢复，最好在删除前备份数据库。"_s,
                               selected))
        return;
    std::for_each(selected.rbegin(), selected.rend(),
                  [&](const QString& name) { trap([&] { DelKaoShi(scoreLibrary, name); }); });
}

void DelKaoShi(library::ScoreLibrary& scoreLibrary, const QString& name)
{
    const Trap trap{" - Sub DelKaoShi/Mdl_MDB"};
    database::Recordset rows;
    // The apostrophe behind the name has none before it: the engine refuses whatever the name is.
    for (const QString& sql : {u"delete * from 成绩表 where 考试名称=?'"_s,
                               u"delete * from 考试名称表 where 考试名称=?'"_s})
        trap([&] { rows.Open(sql, {name}, scoreLibrary.Conn); });
}

} // namespace maintenance
