#pragma once

#include <vector>

#include "platform/database/ColumnDeclaration.h"
#include "platform/database/Connection.h"

namespace oldlibraries {

/// Makes a table anew with these columns, of which it keeps the values of those that it had, and
/// with its rows in their order; new columns have their defaults. Its indexes go. Call within a
/// WriteBatch. Throws database::Error.
void rebuildTable(database::Connection& library, const QString& table,
                  const std::vector<database::ColumnDeclaration>& columns);

} // namespace oldlibraries
