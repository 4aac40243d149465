#include "shell/ui/DroppedFile.h"

#include <QMimeData>
#include <QUrl>

namespace shell {

using namespace Qt::StringLiterals;

bool isWorkbook(const QString& path)
{
    return path.endsWith(u".xlsx"_s, Qt::CaseInsensitive)
           || path.endsWith(u".xls"_s, Qt::CaseInsensitive);
}

bool isLibrary(const QString& path)
{
    return path.endsWith(u".CJK"_s, Qt::CaseInsensitive);
}

QString droppedFile(const QMimeData* data)
{
    for (const QUrl& url : data->urls()) {
        QString path = url.toLocalFile();
        if (isLibrary(path) || isWorkbook(path))
            return path;
    }
    return {};
}

} // namespace shell
