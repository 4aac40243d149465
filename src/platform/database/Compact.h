#pragma once

#include <QString>

namespace database {

/// Copies a library without its unused pages into a new file, or one that is empty. Throws Error;
/// what stands in the target is of no use then, and the source is never changed.
void compactDatabase(const QString& source, const QString& target);

/// Throws Error unless every page of the file is sound.
void checkPages(const QString& path);

/// Throws Error unless the pages of the copy are sound and its tables have as many rows as those of
/// the original.
void checkCopy(const QString& original, const QString& copy);

} // namespace database
