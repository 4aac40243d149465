#include "import/preview/SheetEntry.h"

#include "import/SheetRows.h"
#include "platform/runtime/Numbers.h"

namespace importing {

using namespace Qt::StringLiterals;

PreviewEntry sheetEntry(PreviewKind kind, const excel::Worksheet& sheet, int row,
                        const QString& remark)
{
    const SheetStudent student = studentIn(sheet, row);
    return {kind,
            row,
            runtime::doubleText(student.classNumber),
            runtime::doubleText(student.number),
            student.name,
            {},
            {},
            {},
            remark};
}

void tellRowsLeft(const excel::Worksheet& sheet, const std::vector<int>& rows, const QString& why,
                  Preview& preview)
{
    for (const int row : rows)
        preview.add({PreviewKind::RowLeft,
                     row,
                     sheet.Cells(row, 1).text(),
                     sheet.Cells(row, 2).text(),
                     sheet.Cells(row, 3).text(),
                     {},
                     {},
                     {},
                     why});
}

} // namespace importing
