#include "cli/SelectionOptions.h"

namespace cli {

using namespace Qt::StringLiterals;
using workbench::ChoiceList;
using workbench::Selected;

void selectOnly(ChoiceList& list, const QStringList& texts, const QString& kind)
{
    list.selectAll(Selected::No);
    for (const QString& text : texts) {
        const auto item = std::find_if(list.items.begin(), list.items.end(),
                                       [&](const ChoiceList::Item& i) { return i.text == text; });
        if (item == list.items.end())
            throw UsageError(u"成绩库里没有%1“%2”。"_s.arg(kind, text));
        item->selected = true;
    }
}

void chooseExamsAndCategories(workbench::Selection& selection, const Session& session)
{
    const Arguments& arguments = session.arguments;
    if (arguments.has(u"exam"_s)) {
        session.requireExams(arguments.list(u"exam"_s));
        selectOnly(selection.ListKSMC, arguments.list(u"exam"_s), u"考试"_s);
    }
    if (arguments.has(u"categories"_s))
        selectOnly(selection.ListLB, arguments.list(u"categories"_s), u"类别代码"_s);
}

} // namespace cli
