#pragma once

#include "platform/runtime/Progress.h"
#include "scoring/Scoring.h"
#include "workbench/Selection.h"

namespace workbench {

/// Scores the selected exams one after the other and tells when it began and ended. Cancelling ends
/// the run; the exams before are scored then, the one at work is as before, and no time is told.
void CommandZF_Click(const Selection& selection, scoring::Scoring& scoring,
                     runtime::Progress& progress);

/// Computes the grade and class ranks of all exams in the list anew.
void Command_Click(const Selection& selection, scoring::Scoring& scoring,
                   runtime::Progress& progress);

} // namespace workbench
