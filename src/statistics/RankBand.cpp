#include "statistics/RankBand.h"

#include "library/ColumnNames.h"
#include "platform/runtime/Numbers.h"

namespace statistics {

using namespace Qt::StringLiterals;
using runtime::doubleText;

RankBand::RankBand(const QString& entry) : m_entry(entry), m_number(runtime::Val(entry)) {}

QString RankBand::name() const
{
    return m_number > 0 ? u"前"_s + m_entry : u"后"_s + doubleText(std::abs(m_number));
}

Condition RankBand::condition(const QString& item, ExamFigures& figures) const
{
    const QString rank = library::gradeRankColumn(item);
    if (m_number > 0)
        return Condition(rank + u"<="_s + m_entry + u" and "_s + rank + u">0"_s);
    const double last = figures.highest(rank).value_or(0);
    return Condition(rank + u">="_s + doubleText(last + m_number + 1));
}

} // namespace statistics
