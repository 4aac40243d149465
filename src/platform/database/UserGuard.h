#pragma once

#include <functional>

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
    /// Rows and values of a result.
    qint64 rows = 1'000'000;
    qint64 cells = 20'000'000;
    /// Bytes of the texts and pictures of a result that is read at once.
    qint64 bytes = 500'000'000;
    /// Asked between rows, and now and then within one: true once the user wants it to stop.
    std::function<bool()> isStopped = {};
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
