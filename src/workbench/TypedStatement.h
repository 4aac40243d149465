#pragma once

#include "library/ScoreLibrary.h"

namespace workbench {

/// Whether a statement that the user typed may run: it only reads, or he was told what it would
/// change and wants that. A copy of the library has been made then. Throws runtime::Error for a
/// statement that cannot run, and if the copy cannot be made.
bool mayRun(library::ScoreLibrary& scoreLibrary, const QString& sql);

} // namespace workbench
