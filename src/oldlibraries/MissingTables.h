#pragma once

#include <vector>

#include "oldlibraries/ConversionReport.h"
#include "platform/database/Connection.h"

namespace oldlibraries {

/// Makes the tables that a library lacks and the empty one has, with the rows that these have
/// there. Throws database::Error.
void addMissingTables(database::Connection& library, database::Connection& emptyLibrary,
                      std::vector<Finding>& findings);

} // namespace oldlibraries
