#pragma once

#include "platform/jet/Error.h"

struct sqlite3;

namespace jet {

/// The engine's last error on this handle, in words that a teacher can read.
Error engineError(sqlite3* handle);

} // namespace jet
