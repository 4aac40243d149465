#include "oldlibraries/OldNumbers.h"

#include <algorithm>
#include <array>

#include <QUuid>

namespace oldlibraries {

using namespace Qt::StringLiterals;
using runtime::ByteCursor;

namespace {

/// A whole number of 128 bits, stored as four words, the highest first, as decimal digits.
QString wholeDigits(ByteCursor bytes)
{
    std::array<quint32, 4> words = {};
    for (quint32& word : words)
        word = bytes.u32();
    QString digits;
    while (std::any_of(words.begin(), words.end(), [](quint32 word) { return word != 0; })) {
        quint64 remainder = 0;
        for (quint32& word : words) {
            const quint64 part = remainder << 32 | word;
            word = quint32(part / 10);
            remainder = part % 10;
        }
        digits.prepend(QChar(u'0' + char16_t(remainder)));
    }
    return digits;
}

QString withPoint(const QString& wholeNumber, int scale)
{
    QString digits = wholeNumber.rightJustified(scale + 1, u'0');
    if (scale > 0)
        digits.insert(digits.size() - scale, u'.');
    return digits;
}

} // namespace

QString decimalText(ByteCursor bytes, int scale)
{
    const bool isNegative = bytes.u8() != 0;
    return (isNegative ? u"-"_s : QString()) + withPoint(wholeDigits(bytes), scale);
}

QString currencyText(qint64 units)
{
    constexpr int scale = 4;
    // Without the overflow of the lowest number.
    const quint64 size = units < 0 ? quint64(0) - quint64(units) : quint64(units);
    return (units < 0 ? u"-"_s : QString()) + withPoint(QString::number(size), scale);
}

QString guidText(std::string_view bytes)
{
    ByteCursor cursor(bytes);
    const quint32 first = cursor.u32();
    const auto second = quint16(cursor.u16());
    const auto third = quint16(cursor.u16());
    const std::string_view rest = cursor.take(8);
    const auto at = [&](size_t i) { return uchar(rest[i]); };
    return QUuid(first, second, third, at(0), at(1), at(2), at(3), at(4), at(5), at(6), at(7))
        .toString();
}

} // namespace oldlibraries
