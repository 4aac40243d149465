#include "platform/runtime/Numbers.h"

#include <charconv>
#include <cmath>

#include <QVarLengthArray>

#include "platform/runtime/PlainNumber.h"

namespace runtime {

namespace {

using NumberHead = QVarLengthArray<char, 64>;

/// The longest head of the text that reads as a number, blanks dropped, exponent letter as 'e'.
NumberHead numberHead(QStringView text)
{
    enum class At { Sign, Whole, Fraction, ExponentSign, Exponent } at = At::Sign;
    NumberHead head;
    for (const QChar c : text) {
        const char16_t ch = c.unicode();
        const bool digit = ch >= u'0' && ch <= u'9';
        const bool sign = ch == u'+' || ch == u'-';
        if (ch == u' ' || ch == u'\t' || ch == u'\n' || ch == u'\r')
            continue;
        if (digit) {
            at = at == At::Sign ? At::Whole : at == At::ExponentSign ? At::Exponent : at;
        } else if (sign && (at == At::Sign || at == At::ExponentSign)) {
            at = at == At::Sign ? At::Whole : At::Exponent;
        } else if (ch == u'.' && (at == At::Sign || at == At::Whole)) {
            at = At::Fraction;
        } else if ((ch | 0x20) == u'e' || (ch | 0x20) == u'd') {
            if (at != At::Whole && at != At::Fraction)
                break;
            at = At::ExponentSign;
            head.append('e');
            continue;
        } else {
            break;
        }
        head.append(char(ch));
    }
    return head;
}

/// A number of hundredths as text, without zeros at the end of its fraction.
QString hundredthsText(qint64 hundredths)
{
    char16_t buffer[24];
    char16_t* const end = buffer + std::size(buffer);
    char16_t* at = end;
    const auto put = [&at](qint64 digit) { *--at = char16_t(u'0' + digit); };
    qint64 whole = std::abs(hundredths) / 100;
    const qint64 fraction = std::abs(hundredths) % 100;
    if (fraction % 10 != 0)
        put(fraction % 10);
    if (fraction != 0) {
        put(fraction / 10);
        *--at = u'.';
    }
    do {
        put(whole % 10);
        whole /= 10;
    } while (whole > 0);
    if (hundredths < 0)
        *--at = u'-';
    return QString(reinterpret_cast<const QChar*>(at), end - at);
}

/// As printf's %g with so many significant digits, the exponent letter in upper case.
QString significant(double number, int digits)
{
    // Marks and their averages mostly have two decimals at most. The double nearest to such a
    // number is printed as it.
    const double hundredths = std::nearbyint(number * 100);
    const double wholeBelow = digits < 15 ? 1e7 : 1e14;
    if (hundredths / 100 == number
        && std::abs(number) < (number == std::trunc(number) ? wholeBelow : 1e5))
        return hundredthsText(qint64(hundredths));
    char buffer[64];
    const auto [end, error] =
        std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::general, digits);
    Q_UNUSED(error)
    return QString::fromLatin1(buffer, end - buffer).replace(u'e', u'E');
}

/// True for what is seen at a glance to be the number of its own text.
bool isShortDecimal(double number)
{
    const double hundredths = std::nearbyint(number * 100);
    return hundredths / 100 == number && std::abs(hundredths) < 1e15;
}

/// The usual ones without a call of pow, which gives the same numbers.
double powerOfTen(int digits)
{
    static constexpr double powers[] = {1, 10, 100, 1000, 10000};
    return digits >= 0 && digits < int(std::size(powers)) ? powers[digits] : std::pow(10.0, digits);
}

} // namespace

double Val(QStringView text)
{
    if (const std::optional<double> plain =
            plainNumber(std::u16string_view(text.utf16(), size_t(text.size()))))
        return *plain;
    const NumberHead head = numberHead(text);
    const qsizetype begin = !head.isEmpty() && head[0] == '+' ? 1 : 0;
    double number = 0;
    // from_chars stops before an exponent without digits, as Val does.
    std::from_chars(head.constData() + begin, head.constData() + head.size(), number);
    return std::isfinite(number) ? number : 0;
}

double Val(const Value& value)
{
    const double number = value.toDouble();
    const bool asItIs =
        value.kind() == Value::Kind::Double ? isShortDecimal(number) : value.isNumber();
    return asItIs ? number : Val(value.text());
}

double Round(double number, int digits)
{
    // From here on a double has no half, and the way there and back would only change it.
    constexpr double wholeFrom = 0x1p52;
    const double scale = powerOfTen(digits);
    const double scaled = number * scale;
    return std::abs(scaled) < wholeFrom ? std::nearbyint(scaled) / scale : number;
}

double Int(double number)
{
    return std::floor(number);
}

QString singleText(float number)
{
    return significant(double(number), 7);
}

QString doubleText(double number)
{
    return significant(number, 15);
}

} // namespace runtime
