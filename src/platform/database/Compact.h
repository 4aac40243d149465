#pragma once

#include <QString>

namespace database {

/// Copies a library without its unused pages into a new file. Throws Error; an unfinished target is
/// removed then, and the source is never changed.
void compactDatabase(const QString& source, const QString& target);

} // namespace database
