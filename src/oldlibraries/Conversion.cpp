#include "oldlibraries/Conversion.h"

#include <QDir>
#include <QFileInfo>

namespace oldlibraries {

using namespace Qt::StringLiterals;

QString suggestedPath(const QString& oldPath)
{
    const QFileInfo old(oldPath);
    return old.dir().filePath(old.completeBaseName() + u"（转换）.CJK"_s);
}

} // namespace oldlibraries
