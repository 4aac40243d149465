#pragma once

#include "oldlibraries/LibraryValue.h"
#include "oldlibraries/TableCopy.h"
#include "oldlibraries/TargetTables.h"
#include "platform/database/Connection.h"

namespace oldlibraries {

/// Reads the rows of an old table anew and compares each value with the one in the new library.
class TableComparison
{
public:
    /// `rowCount` is how many rows were copied.
    TableComparison(PageFile& file, const TargetTable& table, database::Connection& library,
                    qint64 rowCount);

    /// False if it was ended. Throws OldFileError for a difference, and database::Error.
    bool run(const TellRows& tell);

private:
    void checkCount() const;
    void go(qint64 number);
    void compareRow();
    bool isStored(int column) const;
    [[noreturn]] void refuse() const;

    PageFile& m_file;
    const TargetTable& m_table;
    database::Connection& m_library;
    const qint64 m_rowCount;
    const int m_numberColumn;
    OldRows m_rows;
    database::Statement m_stored;
    LibraryValue m_value;
    qint64 m_row = 0;
};

} // namespace oldlibraries
