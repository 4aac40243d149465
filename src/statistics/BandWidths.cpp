#include "statistics/BandWidths.h"

#include <QStringList>

#include "platform/runtime/Numbers.h"

namespace statistics {

using namespace Qt::StringLiterals;
using runtime::doubleText;

BandWidths BandWidths::parse(const QString& setting)
{
    const QStringList parts = setting.split(u',');
    return {runtime::Val(parts.value(0).mid(2)), runtime::Val(parts.value(1).mid(2))};
}

QString BandWidths::refusal() const
{
    return u"分数段设置有问题\n单科分数段="_s + doubleText(subject) + u"\n总分分数段="_s
           + doubleText(total);
}

} // namespace statistics
