#pragma once

#include <bit>
#include <string_view>

#include <QByteArray>
#include <QtEndian>

namespace runtime {

/// What a ByteCursor throws when bytes end ahead of what should stand in them.
struct BytesCutOff
{
};

/// Reads bytes from the front: numbers as files of the PC keep them, lowest byte first. Nothing
/// behind the end is ever touched; asking for it throws BytesCutOff. The bytes stay their owner's.
class ByteCursor
{
public:
    explicit ByteCursor(std::string_view bytes) : m_bytes(bytes) {}
    explicit ByteCursor(const QByteArray& bytes) : m_bytes(bytes.constData(), size_t(bytes.size()))
    {
    }

    qsizetype left() const { return qsizetype(m_bytes.size() - m_at); }
    void skip(qsizetype count) { take(count); }

    /// Goes to a place counted from the first byte.
    void seek(qint64 place)
    {
        if (place < 0 || place > qint64(m_bytes.size()))
            throw BytesCutOff();
        m_at = size_t(place);
    }

    /// A cursor over the same bytes that stands at a place counted from the first one.
    ByteCursor at(qint64 place) const
    {
        ByteCursor there(m_bytes);
        there.seek(place);
        return there;
    }

    std::string_view take(qsizetype count)
    {
        if (count < 0 || count > left())
            throw BytesCutOff();
        const std::string_view taken(m_bytes.data() + m_at, size_t(count));
        m_at += size_t(count);
        return taken;
    }

    int u8() { return static_cast<unsigned char>(take(1)[0]); }
    int u16() { return qFromLittleEndian<quint16>(take(2).data()); }
    quint32 u32() { return qFromLittleEndian<quint32>(take(4).data()); }
    double real() { return std::bit_cast<double>(qFromLittleEndian<quint64>(take(8).data())); }

private:
    std::string_view m_bytes;
    size_t m_at = 0;
};

} // namespace runtime
