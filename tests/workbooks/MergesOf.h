#pragma once

#include <QStringList>

#include "workbooks/model/Worksheet.h"

/// Merged blocks as "row,column-row,column", sorted.
inline QString mergesOf(const excel::Worksheet& sheet)
{
    using namespace Qt::StringLiterals;
    QStringList all;
    for (const excel::CellRange& m : sheet.merges().all())
        all.append(
            u"%1,%2-%3,%4"_s.arg(m.firstRow).arg(m.firstColumn).arg(m.lastRow).arg(m.lastColumn));
    all.sort();
    return all.join(u' ');
}
