#pragma once

#include <QStringList>

#include "library/ScoreLibrary.h"

namespace exporting {

/// The classes of the open library's students in ascending order. A failure is shown with the
/// screen's tag, and the list ends there.
QStringList classesToExport(library::ScoreLibrary& scoreLibrary);

} // namespace exporting
