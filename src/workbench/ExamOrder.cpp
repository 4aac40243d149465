#include "workbench/ExamOrder.h"

#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Trap.h"

namespace workbench {

using namespace Qt::StringLiterals;
using runtime::Answer;

void saveExamOrder(library::ScoreLibrary& scoreLibrary, const QStringList& exams)
{
    const Answer answer =
        runtime::MsgBox(u"确实要保存修改吗？保存后不可恢复，最好在保存前备份数据库。"_s, u"提示"_s,
                        runtime::Buttons::OkCancel, runtime::Icon::Question);
    if (answer == Answer::Cancel)
        return;
    const runtime::Trap trap{" - Private Sub Command1_Click/FormKaoShi"};
    database::Recordset rows;
    for (int i = 0; i < exams.size(); ++i) {
        // The apostrophe behind the name has none before it: the engine refuses whatever the name
        // is, and no number is written.
        for (const QString& sql : {u"update 成绩表 set 考试编号=? where 考试名称=?'"_s,
                                   u"update 考试名称表 set 考试编号=? where 考试名称=?'"_s})
            trap([&] { rows.Open(sql, {i + 1, exams[i]}, scoreLibrary.Conn); });
    }
    runtime::MsgBox(u"保存完毕！"_s);
}

} // namespace workbench
