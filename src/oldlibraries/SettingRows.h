#pragma once

#include <vector>

#include "oldlibraries/ConversionReport.h"
#include "platform/database/Connection.h"

namespace oldlibraries {

/// Adds the settings that a library lacks behind those that it has, and numbers all of them from 1
/// without gaps: first those that are no items of the statistics menu, then the others in their
/// order. Throws database::Error.
void completeSettings(database::Connection& library, database::Connection& emptyLibrary,
                      std::vector<Finding>& findings);

/// Adds the chart colours that a library lacks. Throws database::Error.
void completeColors(database::Connection& library, database::Connection& emptyLibrary,
                    std::vector<Finding>& findings);

} // namespace oldlibraries
