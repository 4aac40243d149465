#include "platform/database/FileUse.h"

#include <QFileInfo>

#include "platform/database/ConnectionPrivate.h"
#include "platform/database/Error.h"

namespace database {

bool isInUse(const QString& path)
{
    if (!QFileInfo(path).isFile())
        return false;
    try {
        const Handle handle = openedFile(path, {});
        // Closing the connection takes the transaction back.
        const int code =
            sqlite3_exec(handle.get(), "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr) & 0xff;
        return code == SQLITE_BUSY;
    } catch (const Error& error) {
        return error.failure() == Failure::Locked;
    }
}

} // namespace database
