#pragma once

#include <functional>
#include <optional>

#include "oldlibraries/OldRows.h"
#include "oldlibraries/PageFile.h"
#include "oldlibraries/TargetTables.h"
#include "platform/database/Connection.h"
#include "platform/database/Statement.h"

namespace oldlibraries {

/// The work on one table of an old library: its rows go over, and are compared.
class TableCopy
{
public:
    /// Called after a row with how many are done; false ends the work.
    using Tell = std::function<bool(qint64 rows)>;

    TableCopy(PageFile& file, const TargetTable& table, database::Connection& library)
        : m_file(file), m_table(table), m_library(library)
    {
    }

    /// Makes the table and copies all rows; their number, or nothing if it was ended. Values that
    /// are odd are added to the findings. Call within a WriteBatch. Throws OldFileError and
    /// database::Error.
    std::optional<qint64> copy(std::vector<Finding>& findings, const Tell& tell);

    /// Reads the old table anew and compares each value with the one in the library. False if it
    /// was ended. Throws OldFileError and database::Error.
    bool compare(qint64 rows, const Tell& tell);

private:
    void bind(database::Statement& insert, OldRows& rows, qint64 row,
              std::vector<Finding>& findings) const;
    void keepLastNumber() const;
    [[noreturn]] void refuseDifference() const;

    PageFile& m_file;
    const TargetTable& m_table;
    database::Connection& m_library;
};

} // namespace oldlibraries
