#include "workbooks/readers/XlsRecords.h"

#include <bit>

#include <QtEndian>

namespace excel {

namespace {

constexpr int endOfStream = -1;

} // namespace

void XlsBytes::skip(qsizetype count)
{
    take(count);
}

std::string_view XlsBytes::take(qsizetype count)
{
    if (count > left())
        throw ReadFailure{Fault::CutOffXls};
    const std::string_view taken = m_bytes.substr(m_at, size_t(count));
    m_at += size_t(count);
    return taken;
}

int XlsBytes::u8()
{
    return static_cast<unsigned char>(take(1)[0]);
}

int XlsBytes::u16()
{
    return qFromLittleEndian<quint16>(take(2).data());
}

quint32 XlsBytes::u32()
{
    return qFromLittleEndian<quint32>(take(4).data());
}

double XlsBytes::real()
{
    return std::bit_cast<double>(qFromLittleEndian<quint64>(take(8).data()));
}

int XlsStream::peekType() const
{
    return m_at + 4 <= m_bytes.size() ? qFromLittleEndian<quint16>(m_bytes.constData() + m_at)
                                      : endOfStream;
}

std::string_view XlsStream::takeRecord()
{
    m_budget.takeRecords(1);
    const qint64 length = qFromLittleEndian<quint16>(m_bytes.constData() + m_at + 2);
    m_at += 4;
    if (m_at + length > m_bytes.size())
        throw ReadFailure{Fault::CutOffXls};
    const std::string_view taken(m_bytes.constData() + m_at, size_t(length));
    m_at += length;
    return taken;
}

bool XlsStream::next(XlsRecord& into)
{
    into.type = peekType();
    if (into.type == endOfStream)
        return false;
    into.bytes = takeRecord();
    into.pieces.clear();
    into.pieces.push_back(into.bytes);
    while (peekType() == record::continued)
        into.pieces.push_back(takeRecord());
    return true;
}

void XlsStream::seek(qint64 place)
{
    if (place < 0 || place > m_bytes.size())
        throw ReadFailure{Fault::CutOffXls};
    m_at = place;
}

} // namespace excel
