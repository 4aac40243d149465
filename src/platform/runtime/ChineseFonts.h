#pragma once

#include <QStringList>

namespace runtime {

/// Families that have the glyphs of Chinese names, the most complete first.
QStringList chineseFontFamilies();

} // namespace runtime
