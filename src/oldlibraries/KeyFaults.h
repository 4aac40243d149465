#pragma once

#include <vector>

#include "oldlibraries/ConversionReport.h"
#include "oldlibraries/TargetTables.h"
#include "platform/database/Connection.h"

namespace oldlibraries {

/// Adds the rows of a table, which was copied without its keys, in which a key has no value or one
/// that another row has too. `keyed` is the table with its keys. Throws database::Error.
void findKeyFaults(database::Connection& library, const TargetTable& keyed,
                   std::vector<Finding>& findings);

} // namespace oldlibraries
