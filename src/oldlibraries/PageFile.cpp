#include "oldlibraries/PageFile.h"

#include <algorithm>

#include <QFileInfo>

#include "oldlibraries/OldFileError.h"
#include "platform/runtime/FileErrors.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 pagesAhead = 16;

/// Opening what is no file, as a pipe, could wait for ever.
void checkIsFile(const QString& path)
{
    const QFileInfo entry(path);
    if (!entry.exists())
        throw OldFileError(OldFileFailure::Missing, u"找不到文件 %1。"_s.arg(path));
    if (entry.isDir())
        throw OldFileError(OldFileFailure::Foreign, u"%1 是文件夹，不是成绩库。"_s.arg(path));
    if (!entry.isFile())
        throw OldFileError(OldFileFailure::Foreign, u"%1 不是普通文件，不是成绩库。"_s.arg(path));
}

} // namespace

PageFile::PageFile(const QString& path) : m_path(path), m_file(path)
{
    checkIsFile(path);
    if (!m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        throw OldFileError(
            OldFileFailure::Unreadable,
            u"无法读取文件 %1（%2）。"_s.arg(path, runtime::fileErrorText(m_file.error())));
    m_size = m_file.size();
    m_changed = m_file.fileTime(QFileDevice::FileModificationTime);
    if (m_size == 0)
        throw OldFileError(OldFileFailure::Foreign, u"%1 是空文件，不是成绩库。"_s.arg(path));
    m_pageCount = quint32(m_size / pageSize);
}

QByteArray PageFile::firstBytes()
{
    return read(0, std::min<qint64>(m_size, pageSize));
}

QByteArray PageFile::page(quint32 number)
{
    if (number >= m_pageCount)
        refuseCutOff();
    // Rows mostly go on on the next page.
    if (number == m_expected)
        readAhead(number);
    m_expected = number + 1;
    const qint64 place = qint64(number - m_aheadFrom) * pageSize;
    if (number >= m_aheadFrom && place < m_ahead.size())
        return m_ahead.mid(place, pageSize);
    return read(qint64(number) * pageSize, pageSize);
}

void PageFile::readAhead(quint32 number)
{
    if (number >= m_aheadFrom && qint64(number - m_aheadFrom) * pageSize < m_ahead.size())
        return;
    m_ahead.resize(qsizetype(std::min(pagesAhead, m_pageCount - number)) * pageSize);
    m_aheadFrom = number;
    // What cannot be read may be a page that nobody asks for.
    if (!fill(m_ahead, qint64(number) * pageSize))
        m_ahead.clear();
}

bool PageFile::fill(QByteArray& bytes, qint64 place)
{
    return m_file.seek(place) && m_file.read(bytes.data(), bytes.size()) == bytes.size();
}

QByteArray PageFile::read(qint64 place, qint64 size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    if (fill(bytes, place))
        return bytes;
    checkUnchanged();
    throw OldFileError(
        OldFileFailure::Unreadable,
        u"无法读取文件 %1（%2）。"_s.arg(m_path, runtime::fileErrorText(m_file.error())));
}

void PageFile::countReached(quint64 pointers, qint64 bytesInPass)
{
    qint64& most = m_reached[pointers];
    if (bytesInPass <= most)
        return;
    m_reachedByAll += bytesInPass - most;
    most = bytesInPass;
    if (m_reachedByAll > m_size)
        refuseDamaged(u"不同的地方指向同样的内容"_s);
}

void PageFile::checkUnchanged() const
{
    if (m_file.size() != m_size || m_file.fileTime(QFileDevice::FileModificationTime) != m_changed)
        throw OldFileError(
            OldFileFailure::Changed,
            u"%1 在读取时被别的程序改动了。请关闭用它的程序，再试一次。"_s.arg(m_path));
}

void PageFile::refuseCutOff() const
{
    checkUnchanged();
    throw OldFileError(OldFileFailure::CutOff,
                       u"%1 不完整（后面一部分丢失了），不能转换。"_s.arg(m_path));
}

void PageFile::refuseDamaged(const QString& what) const
{
    checkUnchanged();
    throw OldFileError(OldFileFailure::Damaged, u"%1 已损坏，不能转换：%2。"_s.arg(m_path, what));
}

} // namespace oldlibraries
