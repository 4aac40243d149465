#pragma once

#include "library/CopyDifferences.h"
#include "library/LibraryCopies.h"
#include "library/ScoreLibrary.h"
#include "platform/runtime/Progress.h"

namespace library {

/// Compares the open library with one of its copies. Nothing if it was cancelled, or could not be
/// done, which is told, or if the library is not the open one.
std::optional<CopyDifferences> differencesFrom(ScoreLibrary& scoreLibrary,
                                               const QString& libraryPath, const QString& copy,
                                               runtime::Progress& progress);

/// "恢复备份": asks, with counts of what will be otherwise, restores the copy in the place of the
/// library, opens it, and tells so or what failed. False if nothing was restored.
bool restoreAsked(ScoreLibrary& scoreLibrary, const QString& libraryPath, const LibraryCopy& copy,
                  runtime::Progress& progress);

/// "撤消上次导入": the same with the copy of the latest import, asking with what that import
/// brought and what has changed besides.
bool undoLastImport(ScoreLibrary& scoreLibrary, runtime::Progress& progress);

} // namespace library
