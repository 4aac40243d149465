#include "platform/database/Recordset.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Trap.h"
#include "workbench/Selection.h"

namespace workbench {

using namespace Qt::StringLiterals;
using runtime::Answer;
using runtime::Buttons;
using runtime::Icon;

void Selection::MoveList(ChoiceList& list, Direction direction)
{
    if (list.selectedCount() != 1) {
        runtime::MsgBox(u"本操作要求只能选中一次考试，请选择一次考试！"_s, {}, Buttons::Ok,
                        Icon::Warning);
        return;
    }
    int selected = 0;
    while (!list.items[size_t(selected)].selected)
        ++selected;
    const int neighbour = selected - int(direction);
    if (neighbour < 0 || neighbour >= list.count())
        return;
    ChoiceList::Item& from = list.items[size_t(selected)];
    ChoiceList::Item& to = list.items[size_t(neighbour)];
    std::swap(from.text, to.text);
    to.selected = true;
    from.selected = false;
    // The current item follows: a command for it meets the exam that the user sees selected.
    list.ListIndex = neighbour;
    scTJ();
}

void Selection::Command1_Click()
{
    const Answer answer =
        runtime::MsgBox(u"确实要保存修改吗？保存后不可恢复，最好在保存前备份数据库。"_s, u"提示"_s,
                        Buttons::OkCancel, Icon::Question);
    if (answer == Answer::Cancel)
        return;
    const runtime::Trap trap{" - Private Sub Command1_Click/FormKaoShi"};
    database::Recordset rows;
    for (int i = 0; i < ListKSMC.count(); ++i) {
        // The name lacks its opening apostrophe: the engine refuses, and no number is written.
        const QString where = QString::number(i + 1) + u" where 考试名称="_s
                              + ListKSMC.items[size_t(i)].text + u"'"_s;
        for (const QString& table : {u"成绩表"_s, u"考试名称表"_s})
            trap([&] {
                rows.Open(u"update "_s + table + u" set 考试编号="_s + where, m_library.Conn);
            });
    }
    runtime::MsgBox(u"保存完毕！"_s);
}

} // namespace workbench
