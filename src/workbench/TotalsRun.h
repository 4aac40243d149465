#pragma once

#include "platform/runtime/Progress.h"
#include "scoring/Scoring.h"

namespace workbench {

/// "计算总分": scores the exams one after the other and tells when it began and ended. Cancelling
/// ends the run; the exams before are scored then, the one at work is as before, and no time is
/// told.
void computeTotals(const QStringList& exams, scoring::Scoring& scoring,
                   runtime::Progress& progress);

/// Computes the grade and class ranks of the exams anew.
void rankExams(const QStringList& exams, scoring::Scoring& scoring, runtime::Progress& progress);

} // namespace workbench
