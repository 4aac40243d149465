#include "platform/database/LockedBytes.h"

#include <algorithm>

#include <sqlite3.h>

#include <QFile>

#include "platform/database/Error.h"

namespace database {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 chunkSize = 1 << 20;

sqlite3_file* fileOf(sqlite3* handle)
{
    sqlite3_file* file = nullptr;
    sqlite3_file_control(handle, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    return file;
}

/// What another program writes with a log of its own is not all in the file.
bool hasLog(sqlite3* handle)
{
    const auto note = [](void* found, int, char** values, char**) {
        *static_cast<bool*>(found) = qstricmp(values[0], "wal") == 0;
        return 0;
    };
    bool found = false;
    sqlite3_exec(handle, "PRAGMA journal_mode", note, &found, nullptr);
    return found;
}

/// The lock is taken by the first reading and held by the transaction.
void lockByReading(sqlite3* handle)
{
    runOnEngine(handle, "BEGIN; select count(*) from sqlite_master");
    if (hasLog(handle))
        throw Error(Failure::Locked, u"成绩库正被别的程序使用，请关闭那个程序后再试。"_s);
}

/// Any reading by statements would mend the file. Closing it gives the lock up.
void lockWithoutReading(sqlite3_file* file, const QString& path)
{
    // A file that cannot be written cannot be locked against readers either; none of them harms.
    for (const int lock : {SQLITE_LOCK_SHARED, SQLITE_LOCK_EXCLUSIVE}) {
        if ((file->pMethods->xLock(file, lock) & 0xff) == SQLITE_BUSY)
            throw Error(Failure::Locked,
                        u"文件 %1 正被别的程序使用，请关闭那个程序后再试。"_s.arg(path));
    }
}

} // namespace

LockedBytes::LockedBytes(const QString& path, BrokenWrite brokenWrite) : m_handle(rawFile(path))
{
    sqlite3_file* file = fileOf(m_handle.get());
    if (brokenWrite == BrokenWrite::TakenBack)
        lockByReading(m_handle.get());
    else
        lockWithoutReading(file, path);
    sqlite3_int64 size = 0;
    if (file->pMethods->xFileSize(file, &size) != SQLITE_OK)
        throw Error(Failure::Other, u"读成绩库文件时出错，磁盘可能已断开。"_s);
    m_size = size;
}

QByteArray LockedBytes::read(qint64 from) const
{
    QByteArray bytes(std::min(chunkSize, m_size - from), Qt::Uninitialized);
    sqlite3_file* file = fileOf(m_handle.get());
    if (file->pMethods->xRead(file, bytes.data(), int(bytes.size()), from) != SQLITE_OK)
        throw Error(Failure::Other, u"读成绩库文件时出错，磁盘可能已断开。"_s);
    return bytes;
}

bool LockedBytes::copyTo(runtime::UnfinishedFile& copy, const Tell& tell) const
{
    for (qint64 done = 0; done < m_size; done += chunkSize) {
        if (!tell(done))
            return false;
        copy.write(read(done));
    }
    return true;
}

bool LockedBytes::isSameAs(const QString& otherFile) const
{
    QFile other(otherFile);
    if (!other.open(QIODevice::ReadOnly) || other.size() != m_size)
        return false;
    for (qint64 done = 0; done < m_size; done += chunkSize) {
        const QByteArray bytes = read(done);
        if (other.read(bytes.size()) != bytes)
            return false;
    }
    return true;
}

} // namespace database
