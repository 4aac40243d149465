#include "import/preview/RowsByNumber.h"

#include <algorithm>

#include "import/preview/SheetEntry.h"

namespace importing {

using namespace Qt::StringLiterals;

namespace {

/// "3、9"; of many the first ones.
QString rowNumbers(const std::vector<int>& rows)
{
    constexpr size_t most = 10;
    QStringList numbers;
    for (size_t i = 0; i < std::min(most, rows.size()); ++i)
        numbers.append(QString::number(rows[i]));
    return numbers.join(u'、') + (rows.size() > most ? u" 等"_s : QString());
}

} // namespace

void RowsByNumber::tellTwice(const excel::Worksheet& sheet,
                             const std::function<QString(const Number&)>& what,
                             Preview& preview) const
{
    std::map<int, QString> remarks;
    for (const auto& [number, rows] : m_rows) {
        if (rows.size() < 2)
            continue;
        const QString remark = u"第 %1 行的班级和学号相同"_s.arg(rowNumbers(rows)) + what(number);
        for (const int row : rows)
            remarks[row] = remark;
    }
    for (const auto& [row, remark] : remarks)
        preview.add(sheetEntry(PreviewKind::Twice, sheet, row, remark));
}

} // namespace importing
