#include "workbench/ui/Selection.h"

#include "library/ColumnNames.h"
#include "platform/runtime/Dialogs.h"
#include "workbench/Offers.h"

namespace workbench {

using namespace Qt::StringLiterals;

const QString SortPrompt = u"请选择项目"_s;

Selection::Selection(library::ScoreLibrary& scoreLibrary) : m_library(scoreLibrary)
{
    OptionButton1[0] = {library::AllStreams, true};
    for (DropDown& key : Combo1)
        key.text = SortPrompt;
    Combo3.text = StatisticsPrompt;
}

void Selection::fill()
{
    for (SingleList& direction : Combo2)
        direction = {{u"升序"_s, u"降序"_s}, 0};
    ListXM = {columnFamilies(), 0};
    scTJ();
    init();
}

void Selection::init()
{
    if (!m_library.Conn.isOpen()) {
        KeYong(Available::No);
        return;
    }
    KeYong(Available::Yes);
    ShowKS();
    fillSortColumns();
    fillStatistics();
    fillClasses();
    fillCategories();
    scTJ();
}

void Selection::ShowKS()
{
    ListKSMC.clear();
    for (const QString& exam : m_library.catalogue.ExamList)
        ListKSMC.add(exam, Selected::No);
    if (ListKSMC.count() == 0)
        return;
    ListKSMC.items.front().selected = true;
    ListKSMC.ListIndex = 0;
}

void Selection::KeYong(Available available)
{
    commandsAvailable = available;
}

void Selection::fillSortColumns()
{
    const QStringList columns = sortColumns(m_library);
    for (DropDown& key : Combo1) {
        key.reset(SortPrompt);
        key.items = columns;
    }
}

void Selection::fillStatistics()
{
    Combo3.reset(StatisticsPrompt);
    Combo3.items = statisticsItems(m_library);
}

void Selection::fillClasses()
{
    const library::Catalogue& catalogue = m_library.catalogue;
    for (size_t i = 1; i < OptionButton1.size(); ++i) {
        const qsizetype stream = qsizetype(i) - 1;
        OptionButton1[i].visible = stream < catalogue.Streams.size();
        if (OptionButton1[i].visible)
            OptionButton1[i].caption = catalogue.Streams[stream];
    }
    ListFW.clear();
    for (const QString& number : classes(catalogue))
        ListFW.add(number, Selected::Yes);
}

void Selection::fillCategories()
{
    ListLB.clear();
    for (const QString& category : categories(m_library))
        ListLB.add(category, Selected::Yes);
}

void Selection::chooseStream(int index)
{
    option = index;
    const QStringList chosen = classesOf(m_library.catalogue, index - 1);
    for (ChoiceList::Item& item : ListFW.items)
        item.selected = index == 0 || chosen.contains(item.text);
    scTJ();
}

void Selection::scTJ()
{
    const RowChoice choice = rowChoice();
    Text1 = rowsSql(choice);
    if (!choice.exams.isEmpty())
        m_library.settings.CategoryFilter = categoryCondition(choice.categories);
}

void Selection::MoveList(ChoiceList& list, Direction direction)
{
    if (list.selectedCount() != 1) {
        runtime::warn(u"本操作要求只能选中一次考试，请选择一次考试！"_s);
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

AfterQuery Selection::afterQuery() const
{
    return CheckMin ? AfterQuery::Minimise : AfterQuery::Stay;
}

QString Selection::streamWord() const
{
    return option >= 0 && size_t(option) < OptionButton1.size()
               ? OptionButton1[size_t(option)].caption
               : QString();
}

RowChoice Selection::rowChoice() const
{
    RowChoice choice{ListKSMC.selectedTexts(), ListFW.selectedTexts(), ListLB.selectedTexts(), {}};
    for (size_t i = 0; i < Combo1.size(); ++i) {
        const QString& column = Combo1[i].text;
        if (column != SortPrompt && !column.isEmpty())
            choice.order.push_back({column, Combo2[i].ListIndex == 1 ? SortDirection::Descending
                                                                     : SortDirection::Ascending});
    }
    return choice;
}

BrowseRequest Selection::browseRequest() const
{
    return {rowChoice(), ListXM.text(), streamWord(), Text1};
}

ReportRequest Selection::reportRequest() const
{
    return {ListKSMC.selectedTexts(), chosenItem(Combo3.text)};
}

AnalysisRequest Selection::analysisRequest() const
{
    return {ListKSMC.selectedTexts(), ListKSMC.currentText()};
}

} // namespace workbench
