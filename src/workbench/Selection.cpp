#include "workbench/Selection.h"

#include "platform/database/Recordset.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"
#include "workbench/Prompts.h"

namespace workbench {

using namespace Qt::StringLiterals;
using runtime::Trap;

namespace {

const Trap initTrap{" - Sub init/FormKaoShi"};

/// Runs `body` for each row of the statement; a failing step is shown and the next one runs.
template <class Body>
void forEachRow(const QString& sql, database::Connection& connection, Body&& body)
{
    database::Recordset rows;
    initTrap([&] { rows.Open(sql, connection); });
    qint64 count = 0;
    initTrap([&] { count = rows.RecordCount(); });
    for (qint64 row = 0; row < count; ++row) {
        initTrap([&] { body(rows); });
        initTrap([&] { rows.MoveNext(); });
    }
}

} // namespace

Selection::Selection(library::ScoreLibrary& scoreLibrary) : m_library(scoreLibrary)
{
    OptionButton1[0] = {u"全"_s, true};
    for (DropDown& key : Combo1)
        key.text = SortPrompt;
    Combo3.text = StatisticsPrompt;
}

void Selection::Form_Load()
{
    for (SingleList& direction : Combo2)
        direction = {{u"升序"_s, u"降序"_s}, 0};
    ListXM = {{u"原始分和名次"_s, u"Z分"_s, u"T分"_s}, 0};
    scTJ();
    init();
}

void Selection::init()
{
    if (m_library.LibPath.isEmpty()) {
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
    commandsAvailable = available == Available::Yes;
}

void Selection::fillSortColumns()
{
    for (DropDown& key : Combo1)
        key.reset(SortPrompt);
    database::Recordset rows;
    initTrap([&] { rows.Open(u"select *  from 成绩表"_s, m_library.Conn); });
    initTrap([&] {
        for (int field = 3; field < rows.fieldCount(); ++field) {
            for (DropDown& key : Combo1)
                key.items.append(rows.Fields(field).Name());
        }
    });
}

void Selection::fillStatistics()
{
    Combo3.reset(StatisticsPrompt);
    Combo3.items.append(u"高分段、低分段"_s);
    forEachRow(u"select *  from 设置表 where Id>4 order by ID"_s, m_library.Conn,
               [&](database::Recordset& rows) {
                   const QString name = rows.Fields(1).Value().text();
                   if (name != u"进行对比分析的考试")
                       Combo3.items.append(name);
               });
}

void Selection::fillClasses()
{
    ListFW.clear();
    for (size_t i = 1; i < OptionButton1.size(); ++i)
        OptionButton1[i].visible = false;
    const library::Catalogue& catalogue = m_library.catalogue;
    for (int i = 0; i < catalogue.Streams.size() && i + 1 < int(OptionButton1.size()); ++i) {
        OptionButton1[size_t(i) + 1] = {catalogue.Streams[i], true};
        if (size_t(i) >= catalogue.ClassTable.size())
            continue;
        for (const library::ClassEntry& entry : catalogue.ClassTable[size_t(i)])
            ListFW.add(runtime::doubleText(entry.number), Selected::Yes);
    }
}

void Selection::fillCategories()
{
    ListLB.clear();
    forEachRow(u"select distinct 类别代码 from 信息表"_s, m_library.Conn,
               [&](database::Recordset& rows) {
                   ListLB.add(rows.Fields(0).Value().text(), Selected::Yes);
               });
}

void Selection::OptionButton1_Click(int index)
{
    option = index;
    ListFW.selectAll(index == 0 ? Selected::Yes : Selected::No);
    const std::vector<std::vector<library::ClassEntry>>& streams = m_library.catalogue.ClassTable;
    if (index > 0 && size_t(index) <= streams.size()) {
        for (const library::ClassEntry& entry : streams[size_t(index - 1)]) {
            for (ChoiceList::Item& item : ListFW.items) {
                if (item.text == runtime::doubleText(entry.number))
                    item.selected = true;
            }
        }
    }
    scTJ();
}

QString Selection::streamWord() const
{
    return option >= 0 && size_t(option) < OptionButton1.size()
               ? OptionButton1[size_t(option)].caption
               : QString();
}

} // namespace workbench
