#include "oldlibraries/ColumnPlan.h"

#include <algorithm>
#include <map>
#include <utility>

namespace oldlibraries {

using namespace Qt::StringLiterals;
using database::ColumnDeclaration;
using database::findColumn;
using Columns = ColumnPlan::Columns;

namespace {

bool holds(const Columns& columns, const QString& name)
{
    return findColumn(columns, name) != nullptr;
}

/// The tables whose first columns the program reaches by their place, with those of them that it
/// never calls by name: older libraries can have any names there.
const std::map<QString, QStringList>& columnsByPlace()
{
    static const std::map<QString, QStringList> tables{
        {u"考试名称表"_s, {u"ID"_s, u"备注"_s}},
        {u"设置表"_s, {u"各科条件"_s, u"选项"_s, u"自定义"_s}},
        {u"详细设置表"_s, {}},
        {u"颜色表"_s, {u"颜色"_s}},
    };
    return tables;
}

/// The columns ahead of those of the subjects, which 成绩表 has with their ranks; of these the
/// first ones, `most` at most.
Columns head(const Columns& columns, size_t most, const Columns& scores)
{
    const auto last = columns.begin() + qsizetype(std::min(most, columns.size()));
    const auto subject = std::find_if(columns.begin(), last, [&](const ColumnDeclaration& column) {
        return holds(scores, column.name) && holds(scores, column.name + u"年名"_s);
    });
    return Columns(columns.begin(), subject);
}

} // namespace

ColumnPlan::ColumnPlan(database::Connection& library, const QString& table, Columns known)
    : m_table(table),
      m_present(database::columnDeclarations(library, table)),
      m_known(std::move(known))
{
    const Columns ahead =
        head(m_present, m_known.size(), database::columnDeclarations(library, u"成绩表"_s));
    Columns strange = ahead;
    std::erase_if(strange, [&](const auto& column) { return holds(m_known, column.name); });
    m_wanted = kept(ahead);
    for (const ColumnDeclaration& column : m_known)
        want(presentOrMissing(column, strange));
    for (const ColumnDeclaration& column : m_present)
        want(column);
    keepOneNumber();
}

bool ColumnPlan::onlyAppends() const
{
    return std::equal(m_present.begin(), m_present.end(), m_wanted.begin(),
                      [](const auto& one, const auto& other) { return one.name == other.name; })
           && std::none_of(
               m_wanted.begin() + qsizetype(m_present.size()), m_wanted.end(),
               [](const auto& column) { return column.key != ColumnDeclaration::Key::None; });
}

bool ColumnPlan::lacksKey() const
{
    return std::any_of(m_known.begin(), m_known.end(), [&](const auto& column) {
        return column.key != ColumnDeclaration::Key::None && !holds(m_present, column.name);
    });
}

/// Those that keep their places.
Columns ColumnPlan::kept(const Columns& ahead) const
{
    if (m_table == u"考试名称表"_s)
        return ahead;
    return columnsByPlace().contains(m_table) || lacksKey() ? Columns() : m_present;
}

void ColumnPlan::want(const ColumnDeclaration& column)
{
    if (!holds(m_wanted, column.name))
        m_wanted.push_back(column);
}

/// A known column as the table has it, under its name or, taken from the strange ones, another.
ColumnDeclaration ColumnPlan::presentOrMissing(const ColumnDeclaration& known, Columns& strange)
{
    if (const ColumnDeclaration* same = findColumn(m_present, known.name))
        return *same;
    const auto byPlace = columnsByPlace().find(m_table);
    if (strange.empty() || byPlace == columnsByPlace().end()
        || !byPlace->second.contains(known.name)) {
        m_missing.append(known.name);
        return known;
    }
    ColumnDeclaration other = strange.front();
    strange.erase(strange.begin());
    return other;
}

void ColumnPlan::keepOneNumber()
{
    const auto numbers = [](const ColumnDeclaration& column) {
        return column.key == ColumnDeclaration::Key::AutoNumber;
    };
    if (std::count_if(m_wanted.begin(), m_wanted.end(), numbers) < 2)
        return;
    const auto former =
        std::find_if(m_wanted.begin(), m_wanted.end(), [&](const ColumnDeclaration& column) {
            return numbers(column) && !holds(m_known, column.name);
        });
    m_formerNumber = former->name;
    *former = {former->name, u"Long INTEGER"_s};
}

} // namespace oldlibraries
