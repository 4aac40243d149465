#pragma once

#include <QString>

namespace runtime {

/// True for a text that a program for spreadsheets would take for a formula when it is typed or
/// pasted there: one with = + - or @ in front, also as wide signs and behind blanks, such as the
/// name "-张三". A negative number is none.
bool looksLikeFormula(const QString& text);

} // namespace runtime
