#include "workbooks/model/CellRange.h"

#include "platform/runtime/Error.h"

namespace excel {

using namespace Qt::StringLiterals;

QString columnName(int column)
{
    constexpr int letters = 26;
    QString name;
    for (int rest = column; rest > 0; rest = (rest - 1) / letters)
        name.prepend(QChar(u'A' + (rest - 1) % letters));
    return name;
}

void refuseCell(int row, int column)
{
    throw runtime::Error(u"工作表中没有第 %1 行第 %2 列的单元格。"_s.arg(row).arg(column));
}

} // namespace excel
