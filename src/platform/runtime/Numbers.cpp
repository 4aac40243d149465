#include "platform/runtime/Numbers.h"

#include <charconv>
#include <cmath>

#include <QVarLengthArray>

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

/// As printf's %g with so many significant digits, the exponent letter in upper case.
QString significant(double number, int digits)
{
    if (number == std::trunc(number) && std::abs(number) < 1e7)
        return QString::number(int(number));
    // Half marks and the like, which most scores are.
    const double tenths = number * 10;
    if (tenths == std::trunc(tenths) && std::abs(number) < 1e5) {
        const int last = std::abs(int(tenths) % 10);
        const QString whole = QString::number(int(number)) + u'.' + QChar(u'0' + last);
        return number < 0 && number > -1 ? u'-' + whole : whole;
    }
    char buffer[64];
    const auto [end, error] =
        std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::general, digits);
    Q_UNUSED(error)
    return QString::fromLatin1(buffer, end - buffer).replace(u'e', u'E');
}

} // namespace

double Val(QStringView text)
{
    const NumberHead head = numberHead(text);
    const qsizetype begin = !head.isEmpty() && head[0] == '+' ? 1 : 0;
    double number = 0;
    // from_chars stops before an exponent without digits, as Val does.
    std::from_chars(head.constData() + begin, head.constData() + head.size(), number);
    return std::isfinite(number) ? number : 0;
}

double Val(const Value& value)
{
    if (value.isNumber())
        return value.toDouble();
    return Val(value.text());
}

double Round(double number, int digits)
{
    // From here on a double has no half, and the way there and back would only change it.
    constexpr double wholeFrom = 0x1p52;
    const double scale = std::pow(10.0, digits);
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
