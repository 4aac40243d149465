#pragma once

#include "import/preview/Preview.h"
#include "workbooks/model/Worksheet.h"

namespace importing {

/// An entry about a row of a sheet: class and number read as numbers, the name without blanks
/// around it.
PreviewEntry sheetEntry(PreviewKind kind, const excel::Worksheet& sheet, int row,
                        const QString& remark);

/// Tells of rows that are not taken: their first cells as they stand, and why.
void tellRowsLeft(const excel::Worksheet& sheet, const std::vector<int>& rows, const QString& why,
                  Preview& preview);

} // namespace importing
