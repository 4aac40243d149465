#pragma once

#include <optional>
#include <vector>

#include "import/ImportState.h"
#include "import/WorkbookIntake.h"
#include "library/Catalogue.h"

namespace importing {

/// A sheet of exam results with the right headings, and the subjects that it holds.
struct ExamSheet
{
    excel::Worksheet* sheet = nullptr;
    /// In sheet order, without full marks.
    std::vector<ImportSubject> subjects;
};

/// Opens a sheet of exam results. Nothing, after a message, for one whose headings are others; no
/// subjects, after a message too, for one that holds none of the library's.
std::optional<ExamSheet> openExamSheet(const WorkbookIntake& intake,
                                       const library::Catalogue& catalogue,
                                       const QString& sheetName);

/// Whether openExamSheet would find what it wants; no message is given.
bool isExamSheet(const WorkbookIntake& intake, const library::Catalogue& catalogue,
                 const QString& sheetName);

} // namespace importing
