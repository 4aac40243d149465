#pragma once

#include <vector>

#include "oldlibraries/ConversionReport.h"
#include "platform/database/Connection.h"

namespace oldlibraries {

/// The tables of a library in the order in which they were made.
QStringList tableNames(database::Connection& library);

/// Makes the tables that a library lacks and the empty one has, with the rows that these have
/// there. Throws database::Error.
void addMissingTables(database::Connection& library, database::Connection& emptyLibrary,
                      std::vector<Finding>& findings);

/// Makes the indexes of the empty library; one that cannot be made is a finding. Throws
/// database::Error for trouble with the file.
void addMissingIndexes(database::Connection& library, database::Connection& emptyLibrary,
                       std::vector<Finding>& findings);

} // namespace oldlibraries
