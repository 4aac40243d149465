#pragma once

#include <QString>
#include <QStringList>

namespace runtime {

/// The text without blanks (U+0020) at both ends; other white space stays.
QString Trim(const QString& text);

/// The text without its last `count` characters; "", after a message, if it is shorter than that.
QString DelLast(const QString& text, int count);

/// The pieces between the separators; of an empty text there are none.
QStringList splitList(const QString& text, const QString& separator);

/// The last `count` characters, or the whole text if it is shorter.
QString Right(const QString& text, int count);

/// The text as a terminal may show it: control characters but line breaks and tabs by their
/// pictures (␛),
/// and what would turn the direction of the text behind it as "�".
QString forTerminal(QString text);

} // namespace runtime
