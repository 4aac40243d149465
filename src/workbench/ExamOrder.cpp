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
        // The name lacks its opening apostrophe: the engine refuses, and no number is written.
        const QString where = QString::number(i + 1) + u" where 考试名称="_s + exams[i] + u"'"_s;
        for (const QString& table : {u"成绩表"_s, u"考试名称表"_s})
            trap([&] {
                rows.Open(u"update "_s + table + u" set 考试编号="_s + where, scoreLibrary.Conn);
            });
    }
    runtime::MsgBox(u"保存完毕！"_s);
}

} // namespace workbench
