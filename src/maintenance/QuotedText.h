#pragma once

#include <QString>

namespace maintenance {

/// The head of a text, as much of it as a message says again.
QString quoted(const QString& text);

/// The number that a text is, for a condition. Throws database::Error for a text that is none, with
/// `complaint`, whose %1 becomes the text.
double numberIn(const QString& text, const QString& complaint);

} // namespace maintenance
