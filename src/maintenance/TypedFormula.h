#pragma once

#include <QString>

namespace maintenance {

/// A formula as it is meant where it is typed: what an input method for Chinese makes of "+" is one
/// too, and blanks are none of it.
QString normalFormula(QString typed);

} // namespace maintenance
