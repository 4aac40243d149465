#pragma once

#include <QStringList>

namespace database {

class Connection;

/// The tables of a library in the order in which they were made. Throws Error.
QStringList tableNames(Connection& connection);

/// A name that nothing in the library has, made of this one. Throws Error.
QString freeName(Connection& connection, QString name);

} // namespace database
