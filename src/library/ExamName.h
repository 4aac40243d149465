#pragma once

#include <QStringList>

namespace library {

/// True for letters that no name has: line breaks, tabs and the like.
bool isControlLetter(QChar letter);

/// Why no exam can have this name beside the known ones; "" if it can. A known name can be given
/// again.
QString examNameFault(const QString& exam, const QStringList& known);

} // namespace library
