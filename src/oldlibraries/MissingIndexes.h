#pragma once

#include <vector>

#include "oldlibraries/ConversionReport.h"
#include "platform/database/Connection.h"

namespace oldlibraries {

/// Makes the indexes of the empty library; one that cannot be made is a finding. Throws
/// database::Error for trouble with the file.
void addMissingIndexes(database::Connection& library, database::Connection& emptyLibrary,
                       std::vector<Finding>& findings);

} // namespace oldlibraries
