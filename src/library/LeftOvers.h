#pragma once

#include <QString>

namespace library {

/// Removes the temporary files that a crash left beside a library, also those with the names of
/// former versions, and the notes on copies that are gone; `templateFile` is the empty library that
/// new ones are copied from.
void removeLeftOvers(const QString& libraryPath, const QString& templateFile);

} // namespace library
