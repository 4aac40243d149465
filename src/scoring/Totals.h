#pragma once

#include "scoring/ExamTables.h"
#include "scoring/Scoring.h"

namespace scoring {

/// Computes the totals with their weighted Z and T scores in the exam's tables, stream by stream.
void computeTotals(Scoring& scoring, ExamTables& tables);

} // namespace scoring
