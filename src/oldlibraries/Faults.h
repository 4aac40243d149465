#pragma once

#include <vector>

#include "oldlibraries/ConversionReport.h"
#include "platform/database/Connection.h"

namespace oldlibraries {

/// Adds what stands in a copied library and should not: the same class and number, or the same exam
/// and stream, twice and the like. Nothing is changed. Throws database::Error.
void findFaults(database::Connection& library, std::vector<Finding>& findings);

} // namespace oldlibraries
