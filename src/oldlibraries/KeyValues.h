#pragma once

#include <vector>

#include "oldlibraries/ConversionReport.h"
#include "oldlibraries/PageFile.h"
#include "oldlibraries/TargetTables.h"

namespace oldlibraries {

/// Takes the key from the columns of a table whose old values are not fit for one, because some are
/// missing or stand there twice; these rows are added to the findings. Throws OldFileError.
void settleKeys(PageFile& file, TargetTable& table, std::vector<Finding>& findings);

} // namespace oldlibraries
