#pragma once

#include "import/tidy/SheetJoin.h"

namespace tidy {

/// What was found out about a workbook when everything was read.
struct ReadState
{
    const Proposal& proposal;
    const Roster& roster;
    const SheetReadings& sheets;
    const std::vector<StudentRow>& students;
    const QStringList& joinQuestions;
};

/// What the user has to decide before the workbook can be tidied, as sentences.
QStringList openQuestions(const ReadState& state);

} // namespace tidy
