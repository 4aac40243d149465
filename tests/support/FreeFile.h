#pragma once

#include <sqlite3.h>

#include <QString>

namespace support {

/// True if another program can write the library file at this moment.
inline bool isFree(const QString& path)
{
    sqlite3* other = nullptr;
    sqlite3_open(path.toUtf8().constData(), &other);
    const int code =
        sqlite3_exec(other, "begin exclusive; commit", nullptr, nullptr, nullptr) & 0xff;
    sqlite3_close(other);
    return code == SQLITE_OK;
}

} // namespace support
