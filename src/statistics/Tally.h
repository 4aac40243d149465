#pragma once

#include <limits>
#include <optional>

#include "platform/runtime/Deviation.h"

namespace statistics {

enum class Aggregate { Count, Average, Maximum, Minimum, Deviation };

/// Takes the values of one figure, in row order, as the engine's aggregates do.
class Tally
{
public:
    explicit Tally(Aggregate aggregate) : m_aggregate(aggregate) {}

    void add(double value)
    {
        m_lowest = value < m_lowest ? value : m_lowest;
        m_highest = value > m_highest ? value : m_highest;
        m_sum += value;
        ++m_count;
        if (m_aggregate == Aggregate::Deviation)
            m_deviation.add(value);
    }

    /// Nothing where the engine gives NULL.
    std::optional<double> result() const;

private:
    Aggregate m_aggregate;
    size_t m_count = 0;
    double m_sum = 0;
    double m_lowest = std::numeric_limits<double>::infinity();
    double m_highest = -std::numeric_limits<double>::infinity();
    runtime::Deviation m_deviation;
};

} // namespace statistics
