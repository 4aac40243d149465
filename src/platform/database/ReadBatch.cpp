#include "platform/database/ReadBatch.h"

#include <utility>

#include <sqlite3.h>

#include "platform/database/ConnectionPrivate.h"

namespace database {

ReadBatch::ReadBatch(Connection& connection)
    : m_connection(connection), m_beforeDialogs([this] { end(); })
{
    sqlite3* handle = connection.handle();
    // This alone takes no lock and cannot fail over the file; the first statement does.
    if (handle && sqlite3_get_autocommit(handle))
        m_begun = sqlite3_exec(handle, "BEGIN", nullptr, nullptr, nullptr) == SQLITE_OK;
    if (m_begun)
        connection.d->reading = true;
}

ReadBatch::~ReadBatch()
{
    end();
}

void ReadBatch::end()
{
    if (std::exchange(m_begun, false))
        m_connection.endReading();
}

} // namespace database
