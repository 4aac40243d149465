#pragma once

#include <QStringList>

#include "library/ScoreLibrary.h"

namespace maintenance {

/// Asks, then removes the exams that are selected on the workbench, given in the order of its list,
/// from the last to the first. Nothing is asked where none is selected.
void removeExams(library::ScoreLibrary& scoreLibrary, const QStringList& selected);

/// Removes one exam by two statements that the engine refuses, each with its message, so that the
/// exam stays.
void DelKaoShi(library::ScoreLibrary& scoreLibrary, const QString& name);

} // namespace maintenance
