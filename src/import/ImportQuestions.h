#pragma once

#include "import/ImportState.h"

namespace importing {

/// What the exam import asks on its way; each call returns with the answers in the state.
class ImportQuestions
{
public:
    virtual ~ImportQuestions() = default;

    /// Asks for the full marks: fills KMFull of the subjects. `label` names stream and exam.
    virtual void fullMarks(ImportState& state, const QString& label) = 0;
    /// Asks for an answer to every bad score.
    virtual void errorList(ImportState& state) = 0;
};

} // namespace importing
