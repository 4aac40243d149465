#pragma once

#include <QMimeData>
#include <QUrl>

namespace importing {

/// The first local workbook file of a drop; empty if there is none.
inline QString droppedBook(const QMimeData& data)
{
    using namespace Qt::StringLiterals;
    for (const QUrl& url : data.urls()) {
        QString path = url.toLocalFile();
        if (path.endsWith(u".xlsx"_s, Qt::CaseInsensitive)
            || path.endsWith(u".xls"_s, Qt::CaseInsensitive))
            return path;
    }
    return {};
}

} // namespace importing
