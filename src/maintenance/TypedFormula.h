#pragma once

#include <QString>

namespace maintenance {

/// As many letters as a total's column of 考试名称表 holds.
inline constexpr qsizetype longestFormula = 50;

/// A formula as it is meant where it is typed: what an input method for Chinese makes of "+" is one
/// too, and blanks are none of it.
QString normalFormula(QString typed);

} // namespace maintenance
