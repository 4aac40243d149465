#pragma once

#include <vector>

#include <gtest/gtest.h>

#include "oldlibraries/OldDatabase.h"
#include "oldlibraries/OldRows.h"
#include "platform/runtime/Value.h"

namespace tests {

using OldCells = std::vector<std::vector<runtime::Value>>;

inline runtime::Value oldCell(oldlibraries::OldRows& rows, int column, oldlibraries::OldType type)
{
    using oldlibraries::OldType;
    if (rows.isNull(column))
        return {};
    switch (type) {
    case OldType::Boolean:
        return rows.boolean(column);
    case OldType::Byte:
    case OldType::Integer:
    case OldType::Long:
        return rows.integer(column);
    case OldType::Single:
    case OldType::Double:
    case OldType::DateTime:
        return rows.real(column);
    case OldType::Currency:
        return rows.text(column).toDouble();
    case OldType::Binary:
    case OldType::LongBinary:
        return rows.bytes(column);
    default:
        return rows.text(column);
    }
}

/// All cells of a table, a Currency as a number.
inline OldCells oldCells(oldlibraries::PageFile& file, const oldlibraries::OldTable& table)
{
    OldCells found;
    oldlibraries::OldRows rows(file, table);
    while (rows.next()) {
        std::vector<runtime::Value>& row = found.emplace_back();
        for (size_t i = 0; i < table.columns.size(); ++i)
            row.push_back(oldCell(rows, int(i), table.columns[i].type));
    }
    return found;
}

/// The table of that name. One that is missing fails the test.
inline oldlibraries::OldTable oldTable(oldlibraries::OldDatabase& database, const QString& name)
{
    for (const oldlibraries::OldTable& table : database.readTables()) {
        if (table.name == name)
            return table;
    }
    ADD_FAILURE() << "no table " << name.toStdString();
    return {};
}

inline OldCells oldCells(const QString& path, const QString& tableName)
{
    oldlibraries::OldDatabase database(path);
    return oldCells(database.file(), oldTable(database, tableName));
}

/// Reads every cell of every table.
inline void readAllCells(const QString& path)
{
    oldlibraries::OldDatabase database(path);
    for (const oldlibraries::OldTable& table : database.readTables())
        oldCells(database.file(), table);
    database.file().checkUnchanged();
}

} // namespace tests
