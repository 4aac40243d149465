#pragma once

#include <QByteArray>
#include <QString>

namespace database {

/// The empty library that new ones begin as, whole. Throws runtime::Error if it cannot be read.
QByteArray emptyLibraryBytes(const QString& templateFile);

} // namespace database
