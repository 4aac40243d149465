#pragma once

#include "cli/Session.h"

namespace cli {

/// Throws UsageError unless a student is named by --id alone, or by --class and --number.
void checkStudent(const Arguments& arguments);

/// ID of the student whom --id names, or the first one of --class and --number. Throws UsageError
/// if the open library has none.
qint64 chosenStudent(const Session& session);

} // namespace cli
