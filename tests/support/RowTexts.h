#pragma once

#include <QString>
#include <QStringList>

#include "platform/database/Recordset.h"

namespace support {

/// The rows from the current one on as text: values joined by "|", rows by " / "; NULL is "NULL".
inline QString rowTexts(database::Recordset& rows)
{
    using namespace Qt::StringLiterals;
    QStringList lines;
    for (; !rows.Eof(); rows.MoveNext()) {
        QStringList cells;
        for (int i = 0; i < rows.fieldCount(); ++i) {
            const runtime::Value value = rows.Fields(i).Value();
            cells.append(value.isNull() ? u"NULL"_s : value.text());
        }
        lines.append(cells.join(u'|'));
    }
    return lines.join(u" / "_s);
}

} // namespace support
