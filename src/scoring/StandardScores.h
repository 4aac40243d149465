#pragma once

#include "scoring/ExamTables.h"
#include "scoring/Scoring.h"

namespace scoring {

/// Computes Z and T scores of all subjects in the exam's tables, stream by stream.
void computeStandardScores(Scoring& scoring, ExamTables& tables);

} // namespace scoring
