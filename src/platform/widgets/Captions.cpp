#include "platform/widgets/Captions.h"

namespace widgets {

using namespace Qt::StringLiterals;

QString withoutAccessKey(const QString& caption)
{
    QString text = caption;
    const qsizetype key = text.indexOf(u"(&"_s);
    if (key >= 0)
        text.remove(key, u"(&X)"_s.size());
    return text.remove(u'&');
}

QString literalCaption(const QString& text)
{
    return QString(text).replace(u'&', u"&&"_s);
}

} // namespace widgets
