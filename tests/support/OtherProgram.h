#pragma once

#include <sqlite3.h>

#include <QString>

#include <gtest/gtest.h>

namespace support {

/// A second program that has the file open: the engine itself, without our layer.
class OtherProgram
{
public:
    explicit OtherProgram(const QString& path)
    {
        EXPECT_EQ(sqlite3_open(path.toUtf8().constData(), &m_handle), SQLITE_OK);
        run("pragma synchronous=off");
    }
    ~OtherProgram() { sqlite3_close(m_handle); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    void run(const char* sql)
    {
        EXPECT_EQ(sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(m_handle);
    }

private:
    sqlite3* m_handle = nullptr;
};

} // namespace support
