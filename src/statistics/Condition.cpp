#include "statistics/Condition.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include <QStringTokenizer>

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
        if (!number || !isBareName(name))
            return {};
        return Comparison{name.toString(), sign.op, *number};
    }
    return {};
}

} // namespace

double Comparison::lowest() const
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    switch (op) {
    case Operator::Greater:
        return std::nextafter(number, infinity);
    case Operator::GreaterOrEqual:
    case Operator::Equal:
        return number;
    default:
        return -infinity;
    }
}

double Comparison::highest() const
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    switch (op) {
    case Operator::Less:
        return std::nextafter(number, -infinity);
    case Operator::LessOrEqual:
    case Operator::Equal:
        return number;
    default:
        return infinity;
    }
}

bool isBareName(QStringView name)
{
    if (name.isEmpty() || name.front().isDigit())
        return false;
    return std::all_of(name.begin(), name.end(),
                       [](QChar c) { return c.isLetterOrNumber() || c == u'_'; });
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

} // namespace statistics
