#include "workbooks/readers/XlsStrings.h"

#include <algorithm>

#include <QtEndian>

namespace excel {

namespace {

constexpr int wideFlag = 0x01;
constexpr int phoneticFlag = 0x04;
constexpr int richFlag = 0x08;

} // namespace

/// Moves to the next piece where one ends; false behind the last.
bool XlsTextReader::atEnd()
{
    while (m_piece < m_pieces.size() && m_at >= m_pieces[m_piece].size()) {
        ++m_piece;
        m_at = 0;
    }
    return m_piece >= m_pieces.size();
}

std::string_view XlsTextReader::rest()
{
    if (atEnd())
        throw ReadFailure{Fault::CutOffXls};
    return m_pieces[m_piece].substr(m_at);
}

int XlsTextReader::u8()
{
    const int value = static_cast<unsigned char>(rest()[0]);
    ++m_at;
    return value;
}

int XlsTextReader::u16()
{
    const int low = u8();
    return low | (u8() << 8);
}

quint32 XlsTextReader::u32()
{
    const quint32 low = quint32(u16());
    return low | (quint32(u16()) << 16);
}

void XlsTextReader::skip(qint64 count)
{
    while (count > 0) {
        const qint64 step = std::min(count, qint64(rest().size()));
        m_at += size_t(step);
        count -= step;
    }
}

/// As many of `length` characters as the current piece holds.
QString XlsTextReader::characters(int length, bool wide)
{
    const std::string_view bytes = rest();
    const qsizetype width = wide ? 2 : 1;
    const qsizetype count = std::min<qsizetype>(length, qsizetype(bytes.size()) / width);
    // An odd byte at the end of a piece belongs to no character.
    m_at += size_t(count < length ? qsizetype(bytes.size()) : count * width);
    if (!wide)
        return QString::fromLatin1(bytes.data(), count);
    QString text(count, Qt::Uninitialized);
    qFromLittleEndian<quint16>(bytes.data(), count, text.data());
    return text;
}

QString XlsTextReader::unicodeText(int length)
{
    int flags = u8();
    const qint64 runs = (flags & richFlag) != 0 ? u16() : 0;
    const qint64 phonetic = (flags & phoneticFlag) != 0 ? qint64(u32()) : 0;
    QString text;
    while (length > 0) {
        if (m_piece < m_pieces.size() && m_at >= m_pieces[m_piece].size())
            flags = u8();
        const QString part = characters(length, (flags & wideFlag) != 0);
        text += part;
        length -= int(part.size());
    }
    skip(4 * runs + phonetic);
    return text;
}

QString XlsTextReader::byteText(int length, const runtime::CodePage& page)
{
    std::string bytes;
    while (length > 0) {
        const std::string_view part = rest().substr(0, size_t(length));
        m_at += part.size();
        bytes += part;
        length -= int(part.size());
    }
    return page.decode(bytes);
}

} // namespace excel
