#pragma once

#include "library/ScoreLibrary.h"

namespace workbench {

/// Asks, then writes the order of the exams as their numbers. The statements are refused by the
/// engine, each with its message, so that no number changes, and the closing text follows.
void saveExamOrder(library::ScoreLibrary& scoreLibrary, const QStringList& exams);

} // namespace workbench
