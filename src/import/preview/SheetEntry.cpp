#include "import/preview/SheetEntry.h"

#include <algorithm>

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

PreviewEntry leftEntry(const excel::Worksheet& sheet, int row, const QString& remark)
{
    return {PreviewKind::RowLeft,
            row,
            sheet.Cells(row, 1).text(),
            sheet.Cells(row, 2).text(),
            sheet.Cells(row, 3).text(),
            {},
            {},
            {},
            remark};
}

QString rowNumbers(const std::vector<int>& rows)
{
    constexpr size_t most = 10;
    QStringList numbers;
    for (size_t i = 0; i < std::min(most, rows.size()); ++i)
        numbers.append(QString::number(rows[i]));
    return numbers.join(u'、') + (rows.size() > most ? u" 等"_s : QString());
}

} // namespace importing
