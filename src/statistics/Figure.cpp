#include "statistics/Figure.h"

namespace statistics {

using namespace Qt::StringLiterals;

Meaning Meaning::as(FigureKind other) const
{
    Meaning meaning = *this;
    meaning.kind = other;
    return meaning;
}

Condition sittingCondition(const QString& column)
{
    return Condition(column + u">=0"_s);
}

Condition absentCondition(const QString& column)
{
    return Condition(column + u"<0"_s);
}

} // namespace statistics
