#pragma once

#include <vector>

#include <gtest/gtest.h>

#include "oldlibraries/OldDatabase.h"
#include "support/OldCell.h"

namespace tests {

using OldCells = std::vector<std::vector<runtime::Value>>;

/// All cells of a table, a Currency as a number.
inline OldCells oldCells(oldlibraries::PageFile& file, const oldlibraries::OldTable& table)
{
    OldCells found;
    oldlibraries::OldRows rows(file, table);
    while (rows.next()) {
        std::vector<runtime::Value>& row = found.emplace_back();
        for (size_t i = 0; i < table.columns.size(); ++i)
            row.push_back(support::oldCell(rows, int(i), table.columns[i].type));
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
