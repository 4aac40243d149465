#pragma once

#include <optional>

#include <QHash>

#include "import/ExamImport.h"
#include "import/preview/Preview.h"

namespace importing {

/// What an import of scores would be asked for, and what it would be answered.
struct ExamPreviewRequest
{
    ExamImportRequest import;
    /// The answer to the question which rows are overwritten. Nothing if it will be asked: what
    /// changes in the exam alone is listed then, and what the original rule would cost.
    std::optional<ScoreTarget> overwritten = {};
    /// Full marks by subject. Of the others the exam's own are taken, or else the defaults of
    /// 满分.txt.
    QHash<QString, float> fullMarks = {};
};

/// What the import would do to the open library; nothing is written and nothing asked. Nothing,
/// after the import's own message, where it would not begin. Throws runtime::Error if the library
/// cannot be read.
std::optional<Preview> previewExam(library::ScoreLibrary& scoreLibrary,
                                   const WorkbookIntake& intake, const ExamPreviewRequest& request);

} // namespace importing
