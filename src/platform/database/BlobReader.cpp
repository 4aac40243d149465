#include "platform/database/BlobReader.h"

#include <algorithm>

#include <sqlite3.h>

#include "platform/database/Connection.h"

namespace database {

BlobReader::BlobReader(Connection& connection, const QString& table, const QString& column,
                       qint64 row)
    : m_connection(connection)
{
    constexpr int readOnly = 0;
    if (sqlite3_blob_open(connection.openHandle(), "main", table.toUtf8().constData(),
                          column.toUtf8().constData(), row, readOnly, &m_blob)
        != SQLITE_OK)
        connection.fail();
}

BlobReader::~BlobReader()
{
    sqlite3_blob_close(m_blob);
}

qint64 BlobReader::size() const
{
    return sqlite3_blob_bytes(m_blob);
}

QByteArray BlobReader::read(qint64 from, qint64 length) const
{
    from = std::clamp<qint64>(from, 0, size());
    QByteArray bytes(std::clamp<qint64>(length, 0, size() - from), Qt::Uninitialized);
    if (sqlite3_blob_read(m_blob, bytes.data(), int(bytes.size()), int(from)) != SQLITE_OK)
        m_connection.fail();
    return bytes;
}

} // namespace database
