#pragma once

#include <vector>

#include <QString>

#include "oldlibraries/ConversionReport.h"
#include "platform/database/Connection.h"

namespace oldlibraries {

/// Gives a library that was copied from the old engine what today's program needs: tables that it
/// lacks with the rows that the empty library has, columns, settings under their names behind the
/// others, the numbers of the settings, the indexes. What is done is added to the findings. Call
/// within a WriteBatch. Throws database::Error.
void completeLibrary(database::Connection& library, const QString& templateFile,
                     std::vector<Finding>& findings);

} // namespace oldlibraries
