#include "oldlibraries/MissingColumns.h"

#include "oldlibraries/ColumnPlan.h"
#include "oldlibraries/FilledColumns.h"
#include "oldlibraries/TableRebuild.h"
#include "platform/database/ColumnDeclaration.h"
#include "platform/database/TableNames.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using database::ColumnDeclaration;

namespace {

void carryOut(database::Connection& library, const QString& table, const ColumnPlan& plan)
{
    if (!plan.onlyAppends())
        return rebuildTable(library, table, plan.wanted());
    for (const ColumnDeclaration& column : plan.wanted()) {
        if (plan.missing().contains(column.name))
            database::addColumn(library, table, column);
    }
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

void completeTable(database::Connection& library, database::Connection& emptyLibrary,
                   const QString& table, std::vector<Finding>& findings)
{
    const ColumnPlan::Columns known = database::columnDeclarations(emptyLibrary, table);
    const ColumnPlan plan(library, table, known);
    if (plan.missing().isEmpty())
        return;
    carryOut(library, table, plan);
    fillColumns(library, emptyLibrary, table, plan.missing());
    for (const QString& column : plan.missing()) {
        findings.push_back(
            {table,
             0,
             column,
             {},
             sentence(table, *database::findColumn(known, column), plan.formerNumber())});
    }
}

} // namespace

void addMissingColumns(database::Connection& library, database::Connection& emptyLibrary,
                       std::vector<Finding>& findings)
{
    for (const QString& table : database::tableNames(emptyLibrary))
        completeTable(library, emptyLibrary, table, findings);
}

} // namespace oldlibraries
