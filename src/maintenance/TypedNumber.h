#pragma once

#include <optional>

#include <QString>

namespace maintenance {

/// The text as it is meant where a number is typed: full-width digits are plain ones, blanks at the
/// ends are none of it.
QString plainDigits(const QString& text);

/// The number that the text is, of at most 15 digits and without a sign; nothing for any other
/// text.
std::optional<double> typedNumber(const QString& text);

/// The same for whole numbers above 0.
std::optional<double> typedWholeNumber(const QString& text);

} // namespace maintenance
