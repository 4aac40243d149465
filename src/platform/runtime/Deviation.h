#pragma once

#include <cmath>

#include <QtGlobal>

namespace runtime {

/// Running mean and sum of squared distances (Welford 1962): exactly 0 for equal values, which the
/// textbook difference of two large sums is not.
struct Deviation
{
    qint64 count = 0;
    double mean = 0;
    double squares = 0;

    void add(double value)
    {
        ++count;
        const double distance = value - mean;
        mean += distance / double(count);
        squares += distance * (value - mean);
    }

    /// Sample standard deviation (divisor n - 1), for two values and more.
    double result() const { return std::sqrt(squares / double(count - 1)); }
};

} // namespace runtime
