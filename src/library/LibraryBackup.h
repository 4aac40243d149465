#pragma once

#include <QDateTime>
#include <QString>

namespace library {

/// Copies the library to LIB_YYYY-MM-DD_HHMM.bak beside it and removes all but the newest five such
/// copies. Throws runtime::Error if the copy cannot be written; nothing is harmed then.
QString backUpLibrary(const QString& libraryPath, const QDateTime& now);

} // namespace library
