#pragma once

#include <vector>

#include "oldlibraries/ConversionReport.h"
#include "oldlibraries/OldTable.h"
#include "platform/database/ColumnDeclaration.h"
#include "platform/database/Connection.h"

namespace oldlibraries {

/// How a table of an old library stands in the new one.
struct TargetTable
{
    OldTable old;
    QString name;
    /// In step with the columns of the old table.
    std::vector<database::ColumnDeclaration> columns;

    /// The column that numbers the rows; -1 for none.
    int numberColumn() const;
    QStringList columnNames() const;
    bool hasKeys() const;
    /// The same table with columns that can hold anything any number of times.
    TargetTable withoutKeys() const;
};

/// Decides how the tables of an old library stand in the new one, in their order. What the empty
/// library knows is declared as there, unless the old column holds more; what it does not know is
/// declared by its type. Names that a library cannot have are changed. `emptyLibrary` is an open
/// copy of the empty library; what a user has to know is added to the findings.
std::vector<TargetTable> targetTables(const std::vector<OldTable>& oldTables,
                                      database::Connection& emptyLibrary,
                                      std::vector<Finding>& findings);

} // namespace oldlibraries
