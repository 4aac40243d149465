#pragma once

#include <QtGlobal>

namespace library {

/// Letters that a library's columns of names and formulas hold.
inline constexpr qsizetype LongestText = 50;

} // namespace library
