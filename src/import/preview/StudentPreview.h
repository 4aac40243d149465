#pragma once

#include <optional>

#include "import/WorkbookIntake.h"
#include "import/preview/Preview.h"
#include "library/ScoreLibrary.h"

namespace importing {

/// What is done with students whose class and number are taken; Ask if that will be asked, and
/// Cancel if the import ends there.
enum class TakenStudents { Ask, Skip, Add, Cancel };

/// What the import of a student list would do to the open library; nothing is written and nothing
/// asked. Nothing, after the import's own message, where it would not begin. Throws runtime::Error
/// if the library cannot be read.
std::optional<Preview> previewStudents(library::ScoreLibrary& scoreLibrary,
                                       const WorkbookIntake& intake, const QString& sheetName,
                                       TakenStudents taken = TakenStudents::Ask);

} // namespace importing
