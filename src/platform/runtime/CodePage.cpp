#include "platform/runtime/CodePage.h"

#include <QStringDecoder>

#include <algorithm>

#include <QtEndian>

#include <iconv.h>

namespace runtime {

namespace {

const iconv_t noConverter = reinterpret_cast<iconv_t>(-1);

QByteArray encodingOf(int codePage)
{
    switch (codePage) {
    case CodePage::chinese:
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

/// Some pages keep a letter back, since a mark for it may follow.
void flush(iconv_t converter, char*& out, size_t& outLeft)
{
    iconv(converter, nullptr, nullptr, &out, &outLeft);
}

} // namespace

CodePage::~CodePage()
{
    if (m_converter != nullptr && m_converter != noConverter)
        iconv_close(m_converter);
}

/// Qt's own decoders do not cover these pages on every platform; iconv does.
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
    if (isAscii(bytes) || converter() == noConverter)
        return QString::fromLatin1(bytes.data(), qsizetype(bytes.size()));
    QString text(qsizetype(bytes.size()) * 2 + 2, Qt::Uninitialized);
    // iconv only reads what it takes as char**.
    char* in = const_cast<char*>(bytes.data()); // NOLINT(cppcoreguidelines-pro-type-const-cast)
    size_t inLeft = bytes.size();
    char* out = reinterpret_cast<char*>(text.data());
    size_t outLeft = size_t(text.size()) * sizeof(QChar);
    iconv(converter(), nullptr, nullptr, nullptr, nullptr);
    while (inLeft > 0 && iconv(converter(), &in, &inLeft, &out, &outLeft) == size_t(-1)
           && outLeft >= sizeof(QChar)) {
        if (inLeft == 0)
            break;
        flush(converter(), out, outLeft);
        if (outLeft < sizeof(QChar))
            break;
        // A byte that is no character becomes a replacement mark; what follows still reads.
        ++in;
        --inLeft;
        qToLittleEndian<quint16>(QChar::ReplacementCharacter, out);
        out += sizeof(QChar);
        outLeft -= sizeof(QChar);
    }
    flush(converter(), out, outLeft);
    text.chop(qsizetype(outLeft / sizeof(QChar)));
    return text;
}

QString decodeText(const QByteArray& bytes)
{
    // Stateless, so that a character cut off at the end counts as an error.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder(bytes);
    if (!decoder.hasError())
        return text;
    return CodePage(CodePage::chinese).decode({bytes.constData(), size_t(bytes.size())});
}

} // namespace runtime
