#pragma once

#include <QStringView>

#include "platform/runtime/Value.h"

namespace runtime {

/// The number at the head of a text, blanks skipped: sign, digits, one decimal point, an exponent
/// with e or d. 0 if there is none, so that names and remarks read as 0 without complaint.
double Val(QStringView text);
inline double Val(const QString& text)
{
    return Val(QStringView(text));
}

/// `Val` of the value's text, so that a Double counts with its 15 significant digits; an Integer or
/// Single is taken as it is. Never fails.
double Val(const Value& value);

/// Rounds to `digits` decimals (0 or more), a value exactly half way to the even neighbour.
double Round(double number, int digits = 0);

/// The largest whole number that is not above `number`.
double Int(double number);

/// A 32-bit float as text: at most 7 significant digits, no trailing zeros, point as separator.
QString singleText(float number);

/// A double as text: at most 15 significant digits, no trailing zeros, point as separator.
QString doubleText(double number);

} // namespace runtime
