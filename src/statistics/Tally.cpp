#include "statistics/Tally.h"

namespace statistics {

std::optional<double> Tally::result() const
{
    if (m_aggregate == Aggregate::Count)
        return double(m_count);
    if (m_count == 0 || (m_aggregate == Aggregate::Deviation && m_count == 1))
        return {};
    switch (m_aggregate) {
    case Aggregate::Average:
        return m_sum / double(m_count);
    case Aggregate::Maximum:
        return m_highest;
    case Aggregate::Minimum:
        return m_lowest;
    default:
        return m_deviation.result();
    }
}

} // namespace statistics
