#pragma once

#include <vector>

#include "oldlibraries/ConversionReport.h"
#include "oldlibraries/OldDatabase.h"

namespace oldlibraries {

/// Adds what an old library holds that a new one cannot: linked tables, queries and parts of
/// programs are left behind, columns of an unknown type go over as their bytes. Throws
/// OldFileError.
void findLosses(OldDatabase& database, const std::vector<OldTable>& tables,
                std::vector<Finding>& findings);

} // namespace oldlibraries
