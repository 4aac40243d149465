#pragma once

#include <QtGlobal>

struct sqlite3;

namespace database {

/// How much of SQL a text may use.
enum class Trust {
    Program, ///< statements that this program wrote
    User     ///< typed by the user: nothing that leaves the library or ends its transaction
};

/// What ends a typed query that would run away; none that makes sense on a library comes near.
struct UserLimits
{
    int milliseconds = 20'000;
    /// Values of a result that is read at once.
    qint64 cells = 20'000'000;
};

/// Holds a typed statement back from what leaves the library, as long as it lives.
class UserGuard
{
public:
    UserGuard(sqlite3* handle, Trust trust);
    ~UserGuard();
    UserGuard(const UserGuard&) = delete;
    UserGuard& operator=(const UserGuard&) = delete;

private:
    sqlite3* m_handle;
};

} // namespace database
