#include "oldlibraries/MissingColumns.h"

#include <algorithm>
#include <map>
#include <utility>

#include "oldlibraries/MissingTables.h"
#include "oldlibraries/TableRebuild.h"
#include "platform/database/ColumnDeclaration.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using database::ColumnDeclaration;
using database::findColumn;
using Columns = std::vector<ColumnDeclaration>;

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

/// The first of these columns, `count` at most, ahead of those of the subjects, which 成绩表 has
/// with their ranks.
Columns head(const Columns& columns, size_t count, const Columns& scores)
{
    const auto last = columns.begin() + qsizetype(std::min(count, columns.size()));
    const auto subject = std::find_if(columns.begin(), last, [&](const ColumnDeclaration& column) {
        return holds(scores, column.name) && holds(scores, column.name + u"年名"_s);
    });
    return Columns(columns.begin(), subject);
}

/// The columns of one table as they are and as they shall be.
class ColumnPlan
{
public:
    ColumnPlan(database::Connection& library, const QString& table, Columns known)
        : m_table(table),
          m_present(database::columnDeclarations(library, table)),
          m_known(std::move(known))
    {
        m_head =
            head(m_present, m_known.size(), database::columnDeclarations(library, u"成绩表"_s));
        m_strange = m_head;
        std::erase_if(m_strange, [&](const auto& column) { return holds(m_known, column.name); });
        if (columnsByPlace().contains(table))
            planByPlace();
        else
            planByName();
        if (table == u"考试名称表"_s)
            keepOrderOfHead();
        keepOneNumber();
    }

    const QStringList& missing() const { return m_missing; }
    const Columns& wanted() const { return m_wanted; }
    /// The column that numbered the rows until another one came; "" for none.
    const QString& formerNumber() const { return m_formerNumber; }
    /// What is missing goes behind all others.
    bool onlyAppends() const
    {
        return std::equal(m_present.begin(), m_present.end(), m_wanted.begin(),
                          [](const auto& one, const auto& other) { return one.name == other.name; })
               && std::none_of(
                   m_wanted.begin() + qsizetype(m_present.size()), m_wanted.end(),
                   [](const auto& column) { return column.key != ColumnDeclaration::Key::None; });
    }

private:
    void planByPlace()
    {
        for (const ColumnDeclaration& column : m_known)
            m_wanted.push_back(columnAtPlaceOf(column));
        addRest();
    }

    /// Of 考试名称表 only the place is asked for where the subjects begin.
    void keepOrderOfHead()
    {
        const Columns planned = std::exchange(m_wanted, m_head);
        for (const ColumnDeclaration& column : planned) {
            if (holds(m_known, column.name) && !holds(m_wanted, column.name))
                m_wanted.push_back(column);
        }
        addRest();
    }

    void keepOneNumber()
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

    void planByName()
    {
        const bool needsKey = std::any_of(m_known.begin(), m_known.end(), [&](const auto& column) {
            return column.key != ColumnDeclaration::Key::None && !holds(m_present, column.name);
        });
        // A key is made together with its table, whose order is the usual one then.
        if (needsKey)
            return planByPlace();
        addRest();
        for (const ColumnDeclaration& column : m_known) {
            if (!holds(m_present, column.name))
                m_wanted.push_back(missingColumn(column));
        }
    }

    void addRest()
    {
        for (const ColumnDeclaration& column : m_present) {
            if (!holds(m_wanted, column.name))
                m_wanted.push_back(column);
        }
    }

    ColumnDeclaration columnAtPlaceOf(const ColumnDeclaration& known)
    {
        if (const ColumnDeclaration* same = findColumn(m_present, known.name))
            return *same;
        const auto byPlace = columnsByPlace().find(m_table);
        if (m_strange.empty() || byPlace == columnsByPlace().end()
            || !byPlace->second.contains(known.name))
            return missingColumn(known);
        const ColumnDeclaration other = m_strange.front();
        m_strange.erase(m_strange.begin());
        return other;
    }

    ColumnDeclaration missingColumn(const ColumnDeclaration& known)
    {
        m_missing.append(known.name);
        return known;
    }

    QString m_table;
    Columns m_present;
    Columns m_known;
    /// Those ahead of the subjects.
    Columns m_head;
    /// Columns of other names that can stand where the program asks for no name.
    Columns m_strange;
    Columns m_wanted;
    QStringList m_missing;
    QString m_formerNumber;
};

void carryOut(database::Connection& library, const QString& table, const ColumnPlan& plan)
{
    if (!plan.onlyAppends())
        return rebuildTable(library, table, plan.wanted());
    for (const ColumnDeclaration& column : plan.wanted()) {
        if (plan.missing().contains(column.name))
            database::addColumn(library, table, column);
    }
}

/// Without a stream and a category the program would pass the rows over; a school without streams
/// has "理". "" for columns that can be empty.
QString neededValue(const QString& table, const QString& column)
{
    if (table != u"信息表"_s && table != u"成绩表"_s && table != u"考试名称表"_s)
        return {};
    return column == u"科类"_s ? u"理"_s : column == u"类别代码"_s ? u"1"_s : QString();
}

/// Scores have what their student has.
void fillColumn(database::Connection& library, const QString& table, const QString& column)
{
    const QString value = neededValue(table, column);
    if (value.isEmpty())
        return;
    const database::SqlPiece name = database::SqlPiece::names({column});
    database::Statement all(library, database::sqlWith(u"update %1 set %2=?1"_s,
                                                       {database::SqlPiece::names({table}), name}));
    all.bind({value});
    all.run();
    if (table != u"成绩表"_s)
        return;
    database::Statement own(library, database::sqlWith(u"update 成绩表 set %1=s.%1 from 信息表 s "
                                                       "where s.ID=成绩表.id and s.%1<>''"_s,
                                                       {name}));
    own.run();
}

QString sentence(const QString& table, const ColumnDeclaration& column, const QString& formerNumber)
{
    const QString value = neededValue(table, column.name);
    if (table == u"成绩表"_s && !value.isEmpty())
        return u"旧库没有这一列，已经添加，值与学生信息一致，查不到学生的是 %1。"_s.arg(value);
    if (!value.isEmpty())
        return u"旧库没有这一列，已经添加，值是 %1。"_s.arg(value);
    if (column.key == ColumnDeclaration::Key::AutoNumber)
        return formerNumber.isEmpty()
                   ? u"旧库没有这一列，已经添加，各行从 1 起编号。"_s
                   : u"旧库没有这一列，已经添加，编号与“%1”列相同。"_s.arg(formerNumber);
    if (!column.defaultValue.isEmpty())
        return u"旧库没有这一列，已经添加，值是 %1。"_s.arg(column.defaultValue);
    return u"旧库没有这一列，已经添加，没有值。"_s;
}

/// Gives columns of 设置表 that were missing the values of the settings that both libraries know.
void fillSettings(database::Connection& library, database::Connection& emptyLibrary,
                  const QStringList& columns)
{
    for (const QString& column : columns) {
        const database::SqlPiece name = database::SqlPiece::names({column});
        database::Statement rows(emptyLibrary,
                                 database::sqlWith(u"select %1, 名称 from 设置表"_s, {name}));
        database::Statement row(
            library,
            database::sqlWith(u"update 设置表 set %1=?1 where 名称=?2 collate rtrim"_s, {name}));
        while (rows.step()) {
            row.bind({rows.value(0), rows.value(1)});
            row.run();
        }
    }
}

void completeTable(database::Connection& library, database::Connection& emptyLibrary,
                   const QString& table, std::vector<Finding>& findings)
{
    const Columns known = database::columnDeclarations(emptyLibrary, table);
    const ColumnPlan plan(library, table, known);
    if (plan.missing().isEmpty())
        return;
    carryOut(library, table, plan);
    for (const QString& column : plan.missing()) {
        fillColumn(library, table, column);
        findings.push_back({table,
                            0,
                            column,
                            {},
                            sentence(table, *findColumn(known, column), plan.formerNumber())});
    }
    if (table != u"设置表"_s)
        return;
    QStringList values = plan.missing();
    values.removeAll(u"ID"_s);
    // Without names no row is the one of a setting.
    if (!values.removeAll(u"名称"_s))
        fillSettings(library, emptyLibrary, values);
}

} // namespace

void addMissingColumns(database::Connection& library, database::Connection& emptyLibrary,
                       std::vector<Finding>& findings)
{
    for (const QString& table : tableNames(emptyLibrary))
        completeTable(library, emptyLibrary, table, findings);
}

} // namespace oldlibraries
