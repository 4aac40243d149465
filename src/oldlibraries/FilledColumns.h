#pragma once

#include <QStringList>

#include "platform/database/Connection.h"

namespace oldlibraries {

/// What every row has of a column that the table lacked: without a stream and a category the
/// program would pass the row over. "" for columns that can be empty.
QString neededValue(const QString& table, const QString& column);

/// Gives the columns that were added to a table their values: scores have what their student has,
/// settings that both libraries know what the empty one has. Throws database::Error.
void fillColumns(database::Connection& library, database::Connection& emptyLibrary,
                 const QString& table, const QStringList& added);

} // namespace oldlibraries
