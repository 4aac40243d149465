#pragma once

#include "import/preview/Preview.h"
#include "workbooks/model/Worksheet.h"

namespace importing {

/// An entry about a row of a sheet: class and number read as numbers, the name without blanks
/// around it.
PreviewEntry sheetEntry(PreviewKind kind, const excel::Worksheet& sheet, int row,
                        const QString& remark);

/// An entry about a row that is not taken: its first cells as they stand.
PreviewEntry leftEntry(const excel::Worksheet& sheet, int row, const QString& remark);

/// "3、9"; of many the first ones.
QString rowNumbers(const std::vector<int>& rows);

} // namespace importing
