#include "support/OldFilePages.h"

#include "oldlibraries/FileHeader.h"
#include "oldlibraries/PageFile.h"
#include "platform/runtime/Error.h"

namespace support {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype pageSize = oldlibraries::PageFile::pageSize;
constexpr qsizetype freeSpacePlace = 2;
constexpr qsizetype rowCountPlace = 12;
constexpr qsizetype entriesPlace = 14;
/// A pointer has one byte for the row.
constexpr int mostRows = 255;

constexpr quint32 smallMapPages = 512;
constexpr qsizetype bitsHead = 4;
constexpr quint32 bitsPerPage = quint32(pageSize - bitsHead) * 8;
constexpr quint32 mostBitsPages = 17;

void setBit(QByteArray& bytes, qsizetype from, quint32 bit)
{
    const qsizetype place = from + bit / 8;
    bytes[place] = char(bytes[place] | 1 << bit % 8);
}

QByteArray bitsRow(const std::vector<quint32>& pages)
{
    constexpr qsizetype head = 5;
    const quint32 first = pages.empty() ? 0 : pages.front() / 8 * 8;
    const quint32 size = pages.empty() ? 0 : pages.back() / 8 + 1 - first / 8;
    QByteArray row(head + qMax(qsizetype(size), qsizetype(smallMapPages / 8)), '\0');
    put(row, 1, first);
    for (const quint32 page : pages)
        setBit(row, head, page - first);
    return row;
}

QByteArray bitsPage(const std::vector<quint32>& pages, quint32 first)
{
    QByteArray bits;
    for (const quint32 page : pages) {
        if (page / bitsPerPage != first / bitsPerPage)
            continue;
        if (bits.isEmpty())
            bits = QByteArray("\x05\x01").leftJustified(pageSize, '\0');
        setBit(bits, bitsHead, page - first);
    }
    return bits;
}

QByteArray pagesOfBitsRow(OldPageSink& sink, const std::vector<quint32>& pages)
{
    QByteArray row("\x01");
    for (quint32 i = 0; i < mostBitsPages; ++i) {
        const QByteArray bits = bitsPage(pages, i * bitsPerPage);
        const quint32 number = bits.isEmpty() ? 0 : sink.newPages();
        if (number != 0)
            sink.write(number, bits);
        append(row, number);
    }
    return row;
}

} // namespace

OldPageSink::OldPageSink(const QString& path, quint32 key) : m_file(path), m_key(key)
{
    check(m_file.open(QIODevice::WriteOnly | QIODevice::Truncate));
}

quint32 OldPageSink::newPages(quint32 count)
{
    m_pages += count;
    return m_pages - count;
}

void OldPageSink::write(quint32 number, QByteArray page)
{
    page.resize(pageSize, '\0');
    if (m_key != 0 && number != 0)
        page = oldlibraries::withKey(page, m_key ^ number);
    check(m_file.seek(qint64(number) * pageSize) && m_file.write(page) == pageSize);
}

void OldPageSink::close()
{
    check(m_file.size() == qint64(m_pages) * pageSize && m_file.flush());
    m_file.close();
}

void OldPageSink::check(bool isWritten) const
{
    if (!isWritten)
        throw runtime::Error(u"无法写入文件 %1。"_s.arg(m_file.fileName()));
}

OldRowsPage::OldRowsPage(quint32 number, quint32 owner)
    : m_number(number), m_rowsBegin(pageSize), m_bytes(pageSize, '\0')
{
    put(m_bytes, 0, quint16(0x0101));
    put(m_bytes, 4, owner);
    put(m_bytes, freeSpacePlace, quint16(room()));
}

qsizetype OldRowsPage::room() const
{
    return m_rowsBegin - entriesPlace - 2 * m_rowCount;
}

bool OldRowsPage::hasRoom(qsizetype size) const
{
    return m_rowCount < mostRows && size + 2 <= room();
}

quint32 OldRowsPage::add(const QByteArray& row, Flag flag)
{
    if (!hasRoom(row.size()))
        throw runtime::Error(u"一行太长。"_s);
    m_rowsBegin -= row.size();
    m_bytes.replace(m_rowsBegin, row.size(), row);
    put(m_bytes, entriesPlace + 2 * m_rowCount, quint16(m_rowsBegin | flag));
    ++m_rowCount;
    put(m_bytes, rowCountPlace, quint16(m_rowCount));
    put(m_bytes, freeSpacePlace, quint16(room()));
    return m_number << 8 | quint32(m_rowCount - 1);
}

QByteArray oldUsedPages(OldPageSink& sink, const std::vector<quint32>& pages, OldMapForm form)
{
    const bool isSmall = pages.empty() || pages.back() - pages.front() < smallMapPages - 8;
    if (form == OldMapForm::Bits || (form == OldMapForm::Usual && isSmall))
        return bitsRow(pages);
    return pagesOfBitsRow(sink, pages);
}

} // namespace support
