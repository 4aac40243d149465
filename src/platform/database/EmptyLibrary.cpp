#include "platform/database/EmptyLibrary.h"

#include <QFile>

#include "platform/runtime/Error.h"
#include "platform/runtime/FileErrors.h"

namespace database {

using namespace Qt::StringLiterals;

QByteArray emptyLibraryBytes(const QString& templateFile)
{
    QFile source(templateFile);
    QByteArray bytes;
    if (source.open(QIODevice::ReadOnly))
        bytes = source.readAll();
    if (bytes.isEmpty() || source.error() != QFileDevice::NoError)
        throw runtime::Error(u"找不到空白成绩库 %1（%2）。"_s.arg(
            templateFile, runtime::fileErrorText(source.error())));
    return bytes;
}

} // namespace database
