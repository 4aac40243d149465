#pragma once

#include "scoring/ExamTables.h"
#include "scoring/Scoring.h"

namespace scoring {

/// Computes Z and T scores of all subjects in the exam's tables, stream by stream. False, after its
/// message, if a stream could not be read; the others are computed all the same.
bool computeStandardScores(Scoring& scoring, ExamTables& tables);

} // namespace scoring
