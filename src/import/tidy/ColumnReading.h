#pragma once

#include "import/tidy/HeadingWords.h"

namespace tidy {

/// Says what the columns of a sheet are taken for, from its headings. What somebody else than the
/// program decided stays where the heading is the same.
void readColumns(SheetProposal& sheet, const SheetView& view, const HeadingWords& words, Goal goal,
                 const QStringList& namesOfSheet);

/// A sentence for a column that holds scores of a subject that the roster lacks; empty otherwise.
QString missingSubjectText(const ColumnProposal& column, const HeadingWords& words,
                           const HeadingCell& heading);

} // namespace tidy
