#pragma once

#include <memory>

#include "platform/database/FileCheck.h"

namespace database {

struct CloseHandle
{
    void operator()(sqlite3* handle) const;
};

using Handle = std::unique_ptr<sqlite3, CloseHandle>;

/// Opens the file, sets the connection up and checks that it is one of ours. Throws Error.
Handle openedFile(const QString& path, const FileShape& shape);

/// True if another connection reads or writes the library file at this moment, in this program or
/// in another one; one that merely has the file open is not noticed. A missing file, or one that is
/// no library, is not in use.
bool isInUse(const QString& path);

} // namespace database
