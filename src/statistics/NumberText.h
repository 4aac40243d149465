#pragma once

#include <cmath>

#include <QString>

namespace statistics {

/// True if all of the text is a number, blanks around it aside, so that Val reads what stands
/// there.
inline bool isNumberText(const QString& text)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    return isNumber && std::isfinite(number);
}

} // namespace statistics
