#pragma once

#include "library/ScoreLibrary.h"
#include "scoring/ExamTables.h"

namespace scoring {

/// Computes the totals with their weighted Z and T scores in the exam's tables, stream by stream.
/// False, after its message, if a stream could not be read; the others are computed all the same.
bool computeTotals(library::ScoreLibrary& scoreLibrary, ExamTables& tables);

} // namespace scoring
