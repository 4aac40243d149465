#include "workbooks/model/CellText.h"

#include <charconv>

namespace excel {

namespace {

// What a double holds for certain, and the zeros behind the point before an exponent is shown.
constexpr qsizetype certainDigits = 15;
constexpr qsizetype mostLeadingZeros = 3;
// Sign, point and the zero before it.
constexpr qsizetype longestNumber = certainDigits + mostLeadingZeros + 3;

bool areDigits(QStringView text)
{
    return std::all_of(text.begin(), text.end(),
                       [](QChar letter) { return letter >= u'0' && letter <= u'9'; });
}

bool isPlainFraction(QStringView whole, QStringView fraction)
{
    if (fraction.isEmpty() || !areDigits(fraction) || fraction.back() == u'0')
        return false;
    if (whole != u"0")
        return whole.size() + fraction.size() <= certainDigits;
    qsizetype zeros = 0;
    while (fraction[zeros] == u'0')
        ++zeros;
    return zeros <= mostLeadingZeros && fraction.size() - zeros <= certainDigits;
}

/// Whether a number is shown by just these letters.
bool isPlainNumber(QStringView text)
{
    if (text.size() > longestNumber)
        return false;
    const bool negative = text.startsWith(u'-');
    const QStringView size = negative ? text.mid(1) : text;
    const qsizetype point = size.indexOf(u'.');
    const QStringView whole = point < 0 ? size : size.left(point);
    if (whole.isEmpty() || whole.size() > certainDigits || !areDigits(whole))
        return false;
    if (whole.size() > 1 && whole.front() == u'0')
        return false;
    if (point < 0)
        return !negative || whole != u"0";
    return isPlainFraction(whole, size.mid(point + 1));
}

double numberOf(const QString& text)
{
    char latin[longestNumber];
    for (qsizetype i = 0; i < text.size(); ++i)
        latin[i] = text[i].toLatin1();
    double number = 0;
    std::from_chars(latin, latin + text.size(), number);
    return number;
}

} // namespace

runtime::Value cellFromText(const QString& text)
{
    if (text.isEmpty())
        return {};
    if (isPlainNumber(text))
        return numberOf(text);
    return text;
}

} // namespace excel
