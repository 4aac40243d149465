#include "oldlibraries/TargetTables.h"

#include <algorithm>

#include <QStringList>

#include "oldlibraries/TargetColumns.h"
#include "oldlibraries/TargetNames.h"
#include "platform/database/Statement.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using database::ColumnDeclaration;
using database::findColumn;
using Key = ColumnDeclaration::Key;

namespace {

std::vector<ColumnDeclaration> columnsOf(const OldTable& table,
                                         const std::vector<ColumnDeclaration>& known)
{
    std::vector<ColumnDeclaration> columns;
    for (const OldColumn& column : table.columns) {
        const ColumnDeclaration* like = findColumn(known, column.name);
        columns.push_back(like ? declarationLike(*like, column) : ownDeclaration(column));
    }
    return columns;
}

/// A column that numbers by itself goes on doing so; one that the empty library knows does what it
/// does there.
void keepNumbering(TargetTable& table, const std::vector<ColumnDeclaration>& known)
{
    for (size_t i = 0; i < table.columns.size(); ++i) {
        ColumnDeclaration& column = table.columns[i];
        if (table.old.columns[i].isAutoNumber && table.numberColumn() < 0
            && !findColumn(known, column.name))
            column = {column.name, u"INTEGER"_s, {}, {}, Key::AutoNumber};
    }
}

void tellChanges(const TargetTable& table, const std::vector<ColumnDeclaration>& known,
                 std::vector<Finding>& findings)
{
    for (size_t i = 0; i < table.columns.size(); ++i) {
        const OldColumn& old = table.old.columns[i];
        const ColumnDeclaration* like = findColumn(known, old.name);
        for (const QString& change :
             {newForm(old.type), like ? newKind(*like, table.columns[i]) : QString()}) {
            if (!change.isEmpty())
                findings.push_back({table.old.name, 0, old.name, {}, change});
        }
    }
}

QStringList indexNames(database::Connection& emptyLibrary)
{
    QStringList names;
    database::Statement indexes(emptyLibrary,
                                u"select name from sqlite_master where type='index'"_s);
    while (indexes.step())
        names.append(indexes.text(0));
    return names;
}

QStringList namesOf(const std::vector<OldTable>& tables)
{
    QStringList names;
    for (const OldTable& table : tables)
        names.append(table.name);
    return names;
}

void renameColumns(TargetTable& table, std::vector<Finding>& findings)
{
    TargetNames names(table.columnNames());
    for (ColumnDeclaration& column : table.columns) {
        const QString name = names.nameFor(column.name);
        if (name != column.name)
            findings.push_back({table.old.name, 0, column.name, {}, u"列改名为“%1”。"_s.arg(name)});
        column.name = name;
    }
}

} // namespace

int TargetTable::numberColumn() const
{
    const ColumnDeclaration* found = database::numberColumn(columns);
    return found ? int(found - columns.data()) : -1;
}

QStringList TargetTable::columnNames() const
{
    return database::columnNames(columns);
}

bool TargetTable::hasKeys() const
{
    return std::any_of(columns.begin(), columns.end(),
                       [](const auto& column) { return column.key != Key::None; });
}

TargetTable TargetTable::withoutKeys() const
{
    TargetTable plain = *this;
    for (size_t i = 0; i < columns.size(); ++i) {
        ColumnDeclaration& column = plain.columns[i];
        if (column.key == Key::AutoNumber)
            column.type = ownDeclaration(old.columns[i]).type;
        column.key = Key::None;
    }
    return plain;
}

std::vector<TargetTable> targetTables(const std::vector<OldTable>& oldTables,
                                      database::Connection& emptyLibrary,
                                      std::vector<Finding>& findings)
{
    std::vector<TargetTable> tables;
    TargetNames names(namesOf(oldTables), indexNames(emptyLibrary));
    for (const OldTable& old : oldTables) {
        const QString name = names.nameFor(old.name);
        const auto known = database::columnDeclarations(emptyLibrary, name);
        TargetTable table{old, name, columnsOf(old, known)};
        if (table.name != old.name)
            findings.push_back({old.name, 0, {}, {}, u"表改名为“%1”。"_s.arg(table.name)});
        keepNumbering(table, known);
        tellChanges(table, known, findings);
        renameColumns(table, findings);
        tables.push_back(std::move(table));
    }
    return tables;
}

} // namespace oldlibraries
