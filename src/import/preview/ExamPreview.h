#pragma once

#include <optional>

#include <QHash>

#include "import/ExamImport.h"
#include "import/preview/Preview.h"

namespace importing {

/// The answer to the question which of a student's two names counts: the sheet's, the library's, or
/// neither, which ends the import. Ask if it will be asked.
enum class NameAnswer { Ask, Replace, Keep, Cancel };

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
    /// If it will be asked, names are compared as if all were put into the library.
    NameAnswer names = NameAnswer::Ask;
};

/// What the import would do to the open library; nothing is written and nothing asked. Nothing,
/// after the import's own message, where it would not begin. Throws runtime::Error if the library
/// cannot be read.
std::optional<Preview> previewExam(library::ScoreLibrary& scoreLibrary,
                                   const WorkbookIntake& intake, const ExamPreviewRequest& request);

} // namespace importing
