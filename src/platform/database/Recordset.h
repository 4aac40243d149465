#pragma once

#include <memory>

#include <QString>

#include "platform/database/Connection.h"
#include "platform/runtime/Value.h"

namespace database {

class Recordset;

/// One field of the current row of a recordset, or of the row being added.
class Field
{
public:
    runtime::Value Value() const;

    /// Refused at once if the value does not fit the column (Error, Failure::Value); the other
    /// fields of the row are not affected.
    void setValue(const runtime::Value& value);

    QString Name() const;

    /// Length in bytes of a binary value, or of a text as the file keeps it; 0 for NULL.
    qint64 ActualSize() const;

    /// The bytes of a binary value from `from` on, `length` at most; the others are not read.
    QByteArray GetChunk(qint64 length, qint64 from = 0) const;

    /// Appends bytes to the value that is being written to the row.
    void AppendChunk(const QByteArray& bytes);

    /// Forgets what was assigned and not updated yet.
    void takeBack();

private:
    friend class Recordset;
    Field(Recordset& rows, int position) : m_rows(&rows), m_position(position) {}

    bool isInFile() const;

    Recordset* m_rows;
    int m_position;
};

/// The rows of a statement. Over `select * from` one table, with or without conditions and order,
/// it is a keyset: the row ids are taken at the first need, each row is fetched when it is read,
/// Update writes the changed fields. Anything else is a read-only snapshot, and a statement without
/// rows (update, delete) is run by Open and leaves the recordset closed.
///
/// Order: by row id where the statement names none, and with the row id as last key where it does;
/// `select distinct` comes ascending.
class Recordset
{
public:
    Recordset();
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    /// Closes what was open first. Throws Error; the recordset is closed then.
    void Open(const QString& sql, Connection& connection, Trust trust = Trust::Program);
    /// The same for a statement of ours with values in the places of its question marks. A text
    /// with an apostrophe among them is refused as a wrong statement, and nothing runs.
    void Open(const QString& sql, const std::vector<runtime::Value>& values, Connection& connection,
              Trust trust = Trust::Program);

    bool isOpen() const;
    /// Throws Error if the recordset is closed, as the calls below do.
    qint64 RecordCount() const;
    /// True behind the last row. (EOF is a macro of the C library.)
    bool Eof() const;
    void MoveNext();

    int fieldCount() const;
    /// Position of a field counted from 0, or -1; names ignore case.
    int position(const QString& name) const;
    /// Throws Error if there is no such field.
    Field Fields(const QString& name);
    /// Counted from 0.
    Field Fields(int position);

    /// Begins a new row; its fields are what is assigned, and the table's defaults elsewhere.
    void AddNew();
    /// Writes the row being added, or the changed fields of the current row; does nothing if
    /// nothing was changed. Throws Error; what was pending is dropped then. An added row is the
    /// current one afterwards.
    void Update();
    void Close();

    /// Row id of the row last added.
    qint64 lastInsertId() const;

private:
    friend class Field;

    struct Private;
    Private& open() const;

    std::unique_ptr<Private> d;
};

/// A field by its name, looked up once for many rows. One that is missing fails by its name
/// whenever it is asked for.
class FieldByName
{
public:
    /// `position` counts from 0; -1 for a field that is missing.
    FieldByName(const QString& name, int position) : m_name(name), m_position(position) {}
    /// Throws Error if the recordset is closed.
    FieldByName(const Recordset& rows, const QString& name) : FieldByName(name, rows.position(name))
    {
    }

    const QString& name() const { return m_name; }
    /// The field in the current row. Throws Error as Recordset::Fields does.
    Field in(Recordset& rows) const
    {
        return m_position < 0 ? rows.Fields(m_name) : rows.Fields(m_position);
    }

private:
    QString m_name;
    int m_position;
};

} // namespace database
