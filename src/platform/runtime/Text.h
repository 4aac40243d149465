#pragma once

#include <QString>

namespace runtime {

/// The text without blanks (U+0020) at both ends; other white space stays.
QString Trim(const QString& text);

/// The text without its last `count` characters; "", after a message, if it is shorter than that.
QString DelLast(const QString& text, int count);

/// The last `count` characters, or the whole text if it is shorter.
QString Right(const QString& text, int count);

} // namespace runtime
