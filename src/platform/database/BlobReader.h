#pragma once

#include <QByteArray>
#include <QString>

struct sqlite3_blob;

namespace database {

class Connection;

/// A binary value as it stands in the file, of which parts are read. Live it as short as a
/// statement: it keeps the file's lock.
class BlobReader
{
public:
    /// The row must have bytes in the column. Throws Error.
    BlobReader(Connection& connection, const QString& table, const QString& column, qint64 row);
    ~BlobReader();
    BlobReader(const BlobReader&) = delete;
    BlobReader& operator=(const BlobReader&) = delete;

    /// Nothing of the bytes is read for it.
    qint64 size() const;
    /// The bytes from `from` on, `length` at most. Throws Error.
    QByteArray read(qint64 from, qint64 length) const;

private:
    Connection& m_connection;
    sqlite3_blob* m_blob = nullptr;
};

} // namespace database
