#pragma once

#include "platform/database/Error.h"

struct sqlite3;

namespace database {

/// The engine's last error on this handle, in words that a teacher can read.
Error engineError(sqlite3* handle);

} // namespace database
