#include "statistics/Condition.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include <QStringTokenizer>

#include "platform/database/SqlPieces.h"
#include "platform/runtime/ComparedNumber.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/PlainNumber.h"

namespace statistics {

using namespace Qt::StringLiterals;

namespace {

struct Sign
{
    const char16_t* text;
    Operator op;
};

/// The longer ones stand ahead of those that they begin with.
constexpr Sign signs[] = {{u"<=", Operator::LessOrEqual},
                          {u">=", Operator::GreaterOrEqual},
                          {u"<", Operator::Less},
                          {u">", Operator::Greater},
                          {u"=", Operator::Equal}};

/// A number of at most 15 digits without an exponent, digits on both sides of its point, such as
/// -20 or 92.5.
std::optional<double> plainDecimal(QStringView text)
{
    const bool negative = text.startsWith(u'-');
    const QStringView digits = text.mid(negative ? 1 : 0);
    if (digits.startsWith(u'.') || digits.endsWith(u'.'))
        return {};
    const std::optional<double> number =
        runtime::plainNumber(std::u16string_view(digits.utf16(), size_t(digits.size())));
    return number && negative ? -*number : number;
}

std::optional<Comparison> comparisonOf(QStringView text)
{
    const QStringView piece = text.trimmed();
    const auto begin = std::find_if(piece.begin(), piece.end(),
                                    [](QChar c) { return c == u'<' || c == u'>' || c == u'='; });
    const QStringView name = piece.left(begin - piece.begin()).trimmed();
    const QStringView rest = piece.mid(begin - piece.begin());
    for (const Sign& sign : signs) {
        const QStringView signText(sign.text);
        if (!rest.startsWith(signText))
            continue;
        const std::optional<double> number = plainDecimal(rest.mid(signText.size()).trimmed());
        if (!number || !database::isBareName(name))
            return {};
        return Comparison{name.toString(), sign.op, *number};
    }
    return {};
}

constexpr double infinity = std::numeric_limits<double>::infinity();

/// The smallest value whose rounding passes `test`, as that of no smaller one does, next to
/// `number`. It lies half a place below a number of so many places.
template <class Test> double smallestThat(double number, const Test& test)
{
    constexpr double scale = 1e4;
    static_assert(ComparedDigits == 4);
    // A double from here on has no such places.
    if (std::abs(number) >= 4e11)
        return test(number) ? number : std::nextafter(number, infinity);
    double whole = std::floor(number * scale) - 1;
    while (!test(whole / scale))
        ++whole;
    const auto passes = [&](double value) { return test(runtime::roundedToCompare(value)); };
    double at = (whole - 0.5) / scale;
    while (passes(std::nextafter(at, -infinity)))
        at = std::nextafter(at, -infinity);
    while (!passes(at))
        at = std::nextafter(at, infinity);
    return at;
}

double smallestAtLeast(double number)
{
    return smallestThat(number, [number](double rounded) { return rounded >= number; });
}

double smallestAbove(double number)
{
    return smallestThat(number, [number](double rounded) { return rounded > number; });
}

} // namespace

double Comparison::lowest() const
{
    switch (op) {
    case Operator::Greater:
        return smallestAbove(number);
    case Operator::GreaterOrEqual:
    case Operator::Equal:
        return smallestAtLeast(number);
    default:
        return -infinity;
    }
}

double Comparison::highest() const
{
    switch (op) {
    case Operator::Less:
        return std::nextafter(smallestAtLeast(number), -infinity);
    case Operator::LessOrEqual:
    case Operator::Equal:
        return std::nextafter(smallestAbove(number), -infinity);
    default:
        return infinity;
    }
}

Condition::Condition(QString text) : m_text(std::move(text))
{
    for (const QStringView piece : QStringView(m_text).tokenize(u" and ")) {
        std::optional<Comparison> comparison = comparisonOf(piece);
        if (!comparison) {
            m_simple = false;
            m_comparisons.clear();
            return;
        }
        m_comparisons.push_back(std::move(*comparison));
    }
}

namespace {

QString signText(Operator op)
{
    const auto* sign = std::find_if(std::begin(signs), std::end(signs),
                                    [op](const Sign& known) { return known.op == op; });
    return QString::fromUtf16(sign->text);
}

} // namespace

QString Condition::sqlText() const
{
    if (!m_simple)
        return m_text;
    QStringList pieces;
    for (const Comparison& comparison : m_comparisons)
        pieces.append(u"round(%1,%2)%3%4"_s.arg(comparison.column)
                          .arg(ComparedDigits)
                          .arg(signText(comparison.op), runtime::doubleText(comparison.number)));
    return pieces.join(u" and "_s);
}

} // namespace statistics
