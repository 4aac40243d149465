#pragma once

#include <QString>

namespace runtime {

/// The first 200 characters of a text, with … where more follow.
QString shortened(const QString& text);

/// A text as a cell of one line shows it: line breaks and tabs as signs, and the rest as a terminal
/// may show it.
QString onOneLine(QString text);

/// The head of a text, on one line: what a sentence or a cell says of a text of any length.
QString headOnOneLine(const QString& text);

} // namespace runtime
