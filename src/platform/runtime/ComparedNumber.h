#pragma once

#include <cmath>

namespace runtime {

/// A number as scores and marks are compared: rounded to four places, so that a 32-bit 89.3 is not
/// above 89.3. A half goes away from zero, as it does where the engine rounds.
inline double roundedToCompare(double value)
{
    constexpr double scale = 1e4;
    return std::round(value * scale) / scale;
}

} // namespace runtime
