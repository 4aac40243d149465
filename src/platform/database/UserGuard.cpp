#include "platform/database/UserGuard.h"

#include <sqlite3.h>

namespace database {

namespace {

/// What a typed statement may not do: reach other files, end or begin transactions, change how the
/// file is kept, or leave something behind that runs later.
int authorize(void*, int action, const char*, const char* name, const char*, const char*)
{
    switch (action) {
    case SQLITE_FUNCTION:
        return sqlite3_stricmp(name, "load_extension") == 0 ? SQLITE_DENY : SQLITE_OK;
    case SQLITE_ATTACH:
    case SQLITE_DETACH:
    case SQLITE_PRAGMA:
    case SQLITE_TRANSACTION:
    case SQLITE_SAVEPOINT:
    case SQLITE_CREATE_VTABLE:
    case SQLITE_DROP_VTABLE:
    case SQLITE_CREATE_TRIGGER:
    case SQLITE_CREATE_TEMP_TRIGGER:
    case SQLITE_CREATE_TEMP_TABLE:
    case SQLITE_CREATE_TEMP_VIEW:
    case SQLITE_CREATE_TEMP_INDEX:
    case SQLITE_CREATE_VIEW:
        return SQLITE_DENY;
    default:
        return SQLITE_OK;
    }
}

} // namespace

UserGuard::UserGuard(sqlite3* handle, Trust trust)
    : m_handle(trust == Trust::User ? handle : nullptr)
{
    if (m_handle)
        sqlite3_set_authorizer(m_handle, authorize, nullptr);
}

UserGuard::~UserGuard()
{
    if (m_handle)
        sqlite3_set_authorizer(m_handle, nullptr, nullptr);
}

} // namespace database
