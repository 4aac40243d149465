#include "workbooks/readers/XlsStrings.h"

#include <algorithm>

#include <QtEndian>

#include <iconv.h>

namespace excel {

namespace {

constexpr int wideFlag = 0x01;
constexpr int phoneticFlag = 0x04;
constexpr int richFlag = 0x08;

const iconv_t noConverter = reinterpret_cast<iconv_t>(-1);

QByteArray encodingOf(int codePage)
{
    switch (codePage) {
    case 936:
    case 10008:
        return "GB18030";
    case 367:
        return "ASCII";
    case 1200:
        return "UTF-16LE";
    case 10000:
    case 32768:
        return "MACINTOSH";
    case 32769:
        return "CP1252";
    case 65001:
        return "UTF-8";
    default:
        return "CP" + QByteArray::number(codePage);
    }
}

bool isAscii(std::string_view bytes)
{
    return std::all_of(bytes.begin(), bytes.end(),
                       [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

} // namespace

CodePage::~CodePage()
{
    if (m_converter != nullptr && m_converter != noConverter)
        iconv_close(m_converter);
}

void* CodePage::converter() const
{
    if (m_converter == nullptr)
        m_converter = iconv_open("UTF-16LE", encodingOf(m_number).constData());
    if (m_converter == noConverter)
        m_converter = iconv_open("UTF-16LE", "GB18030");
    return m_converter;
}

QString CodePage::decode(std::string_view bytes) const
{
    if (isAscii(bytes))
        return QString::fromLatin1(bytes.data(), qsizetype(bytes.size()));
    std::vector<char16_t> units(bytes.size() * 2 + 2);
    // iconv only reads what it takes as char**.
    char* in = const_cast<char*>(bytes.data()); // NOLINT(cppcoreguidelines-pro-type-const-cast)
    size_t inLeft = bytes.size();
    char* out = reinterpret_cast<char*>(units.data());
    size_t outLeft = units.size() * sizeof(char16_t);
    iconv(converter(), nullptr, nullptr, nullptr, nullptr);
    while (inLeft > 0 && iconv(converter(), &in, &inLeft, &out, &outLeft) == size_t(-1)
           && outLeft >= 2) {
        if (inLeft == 0)
            break;
        ++in;
        --inLeft;
        qToLittleEndian<quint16>(0xFFFD, out);
        out += 2;
        outLeft -= 2;
    }
    return QString::fromUtf16(units.data(), qsizetype(units.size() - outLeft / sizeof(char16_t)));
}

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

QString XlsTextReader::byteText(int length, const CodePage& page)
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
