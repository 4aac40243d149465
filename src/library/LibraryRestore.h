#pragma once

#include "library/LibraryBackup.h"

namespace library {

/// Whether a copy can be restored: it is there, a library, and all of it is sound. It stays as it
/// is.
bool isSoundCopy(const QString& copy, runtime::Progress& progress);

/// Puts a copy in the place of a library in one step, after what stands there was copied as a
/// further dated copy for `occasion`. The library may be damaged or missing. Gives the path of that
/// further copy, "" where no file stood. Throws Error: the library is as it was then.
QString restoreCopy(const QString& libraryPath, const QString& copy, const QDateTime& now,
                    const Occasion& occasion, runtime::Progress& progress);

/// The same with the library that is open, which may be another one: it is closed before and the
/// restored one opened afterwards. If that fails, the one that was open is open again, and the
/// Error is thrown.
QString restoreLibrary(ScoreLibrary& scoreLibrary, const QString& libraryPath, const QString& copy,
                       const Occasion& occasion, runtime::Progress& progress);

} // namespace library
