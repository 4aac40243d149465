#include "platform/runtime/FileNames.h"

#include <QRegularExpression>

namespace runtime {

using namespace Qt::StringLiterals;

QString fileNameFrom(QString text)
{
    static const QRegularExpression refused(
        u"[\\\\/:*?\"<>|\\x00-\\x1f\\x7f\\x{200e}\\x{200f}\\x{202a}-\\x{202e}\\x{2066}-\\x{2069}]"_s);
    return text.replace(refused, u"_"_s);
}

QString freeFileName(QString path, const QStringList& taken)
{
    while (taken.contains(path, Qt::CaseInsensitive))
        path.insert(path.lastIndexOf(u'.'), u'_');
    return path;
}

} // namespace runtime
