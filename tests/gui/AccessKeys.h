#pragma once

#include <QRegularExpression>

namespace support {

/// "导入(&I)" without its access key.
inline QString withoutKey(const QString& caption)
{
    using namespace Qt::StringLiterals;
    static const QRegularExpression key(u"\\(&.\\)"_s);
    return QString(caption).remove(key);
}

} // namespace support
