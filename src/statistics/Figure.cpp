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

namespace {

double highestAbsent()
{
    static const double highest = absentCondition(u"x"_s).comparisons().front().highest();
    return highest;
}

} // namespace

bool isSitting(double mark)
{
    return mark > highestAbsent();
}

bool isAbsent(double mark)
{
    return mark <= highestAbsent();
}

} // namespace statistics
