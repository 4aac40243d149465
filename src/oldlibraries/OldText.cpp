#include "oldlibraries/OldText.h"

#include <algorithm>

#include <QtEndian>

namespace oldlibraries {

using namespace Qt::StringLiterals;

QString utf16Text(std::string_view bytes)
{
    if (bytes.size() < 2)
        return QString(u""_s);
    QString text(qsizetype(bytes.size() / 2), Qt::Uninitialized);
    qFromLittleEndian<char16_t>(bytes.data(), text.size(), text.data());
    return text;
}

namespace {

QString compressedText(std::string_view bytes)
{
    QString text;
    text.reserve(qsizetype(bytes.size()));
    bool isOneByte = true;
    while (!bytes.empty()) {
        if (bytes[0] == '\0') {
            isOneByte = !isOneByte;
            bytes.remove_prefix(1);
        } else if (isOneByte || bytes.size() == 1) {
            text.append(QLatin1Char(bytes[0]));
            bytes.remove_prefix(1);
        } else {
            text.append(utf16Text(bytes.substr(0, 2)));
            bytes.remove_prefix(2);
        }
    }
    return text;
}

} // namespace

QString storedText(std::string_view bytes)
{
    constexpr std::string_view compressedMark = "\xFF\xFE";
    if (bytes.starts_with(compressedMark))
        return compressedText(bytes.substr(compressedMark.size()));
    return utf16Text(bytes);
}

bool isName(const QString& text)
{
    const auto isControl = [](QChar letter) { return letter.unicode() < u' '; };
    return !text.isEmpty() && text.isValidUtf16()
           && std::none_of(text.begin(), text.end(), isControl);
}

} // namespace oldlibraries
