#pragma once

#include <QString>

namespace database {

/// True if another connection reads or writes the library file at this moment, in this program or
/// in another one; one that merely has the file open is not noticed. A missing file, or one that is
/// no library, is not in use.
bool isInUse(const QString& path);

} // namespace database
