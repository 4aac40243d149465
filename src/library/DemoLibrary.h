#pragma once

#include "platform/runtime/AppPaths.h"

namespace library {

/// The library that comes with the program as a demonstration, beside the template.
QString shippedDemoLibrary(const runtime::AppPaths& paths);

/// The user's own copy of it, in a folder of its own in `documents`. It is made if it is not there;
/// one that stands there stays as it is. Where that is a folder, or no whole library, a further
/// copy is made beside it and told of. Gives its path. Throws Error.
QString ownDemoLibrary(const runtime::AppPaths& paths, const QString& documents);

} // namespace library
