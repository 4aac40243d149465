#pragma once

#include <vector>

#include <QStringList>

#include "oldlibraries/ConversionReport.h"
#include "platform/database/Connection.h"

namespace oldlibraries {

/// Adds the columns that the tables of a library lack and those of the empty one have. Where the
/// program reaches columns by their place, what is missing is put there, and a column of another
/// name at such a place counts as the one that is known by its place alone. Throws
/// database::Error.
void addMissingColumns(database::Connection& library, database::Connection& emptyLibrary,
                       std::vector<Finding>& findings);

} // namespace oldlibraries
