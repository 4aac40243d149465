#pragma once

#include <sqlite3.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "platform/database/Connection.h"
#include "platform/database/Error.h"
#include "platform/database/Recordset.h"
#include "support/OtherProgram.h"
#include "support/PrintQString.h"
#include "support/RowTexts.h"

namespace database {

using namespace Qt::StringLiterals;

using support::OtherProgram;

/// A database file in a folder of its own.
class DatabaseFile
{
public:
    explicit DatabaseFile(const char* sql) { OtherProgram(path()).run(sql); }

    QString path() const { return folder.filePath(u"库.CJK"_s); }

    QByteArray bytes() const
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void replaceBytes(const QByteArray& bytes) const
    {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    /// Names of the files in the folder.
    QStringList files() const { return QDir(folder.path()).entryList(QDir::Files); }

    QTemporaryDir folder;
};

/// The rows of a statement as rowTexts() writes them.
inline QString rowsOf(Connection& connection, const QString& sql, Trust trust = Trust::Program)
{
    Recordset rows;
    rows.Open(sql, connection, trust);
    return support::rowTexts(rows);
}

/// The error that a call throws; fails the test if it throws none.
template <class Call> Error errorOf(Call call)
{
    try {
        call();
    } catch (const Error& error) {
        return error;
    }
    ADD_FAILURE() << "no error";
    return Error(Failure::Other, QString());
}

/// The statements that the engine runs while it lives.
class Traced
{
public:
    explicit Traced(Connection& connection) : m_handle(connection.handle())
    {
        sqlite3_trace_v2(m_handle, SQLITE_TRACE_STMT, note, this);
    }
    ~Traced() { sqlite3_trace_v2(m_handle, 0, nullptr, nullptr); }
    Traced(const Traced&) = delete;
    Traced& operator=(const Traced&) = delete;

    QStringList statements;

private:
    static int note(unsigned, void* self, void*, void* sql)
    {
        static_cast<Traced*>(self)->statements.append(
            QString::fromUtf8(static_cast<const char*>(sql)));
        return 0;
    }

    sqlite3* m_handle;
};

} // namespace database
