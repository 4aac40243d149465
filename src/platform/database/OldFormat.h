#pragma once

#include <QByteArray>

namespace database {

/// True if the bytes begin as a file of the old engine does.
bool isOldFormat(const QByteArray& firstBytes);

} // namespace database
