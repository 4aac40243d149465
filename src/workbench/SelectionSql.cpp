#include "platform/runtime/Text.h"
#include "workbench/Prompts.h"
#include "workbench/Selection.h"

namespace workbench {

using namespace Qt::StringLiterals;
using runtime::DelLast;

namespace {

/// Each text between `head` and `tail`, one behind the other, and " or " behind each but the last.
QString alternatives(const QStringList& texts, const QString& head, const QString& tail)
{
    QString condition;
    for (const QString& text : texts)
        condition += head + text + tail + u" or "_s;
    return condition.isEmpty() ? condition : DelLast(condition, 4);
}

QString inBrackets(const QString& condition, const QString& joiner)
{
    return condition.isEmpty() ? condition : joiner + u" ("_s + condition + u")"_s;
}

QString sortOrder(const Selection& selection)
{
    QString keys;
    for (size_t i = 0; i < selection.Combo1.size(); ++i) {
        const QString& column = selection.Combo1[i].text;
        if (column == SortPrompt || column.isEmpty())
            continue;
        keys += column + (selection.Combo2[i].ListIndex == 1 ? u" DESC,"_s : u" ASC,"_s);
    }
    return keys.isEmpty() ? keys : u" order by "_s + DelLast(keys, 1);
}

} // namespace

void Selection::scTJ()
{
    examCondition =
        inBrackets(alternatives(ListKSMC.selectedTexts(), u" 考试名称='"_s, u"'"_s), {});
    if (examCondition.isEmpty()) {
        Text1 = u"请选择 考试名称！"_s;
        return;
    }
    QString& filter = m_library.settings.CategoryFilter;
    filter = inBrackets(alternatives(ListLB.selectedTexts(), u"类别代码="_s, {}), u" and"_s);
    classCondition = inBrackets(alternatives(ListFW.selectedTexts(), u" 班级="_s, {}), u" and"_s);
    if (classCondition.isEmpty()) {
        Text1 = u"请选择 要导出成绩的 班级！\""_s;
        return;
    }
    Text1 = u"select * from 成绩表 where "_s + examCondition + classCondition + filter
            + sortOrder(*this);
}

} // namespace workbench
