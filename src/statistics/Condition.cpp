#include "statistics/Condition.h"

#include <optional>

#include <QRegularExpression>
#include <QStringList>

namespace statistics {

using namespace Qt::StringLiterals;

namespace {

Operator operatorOf(const QString& sign)
{
    if (sign == u"<"_s)
        return Operator::Less;
    if (sign == u"<="_s)
        return Operator::LessOrEqual;
    if (sign == u">"_s)
        return Operator::Greater;
    return sign == u">="_s ? Operator::GreaterOrEqual : Operator::Equal;
}

std::optional<Comparison> comparisonOf(const QString& text)
{
    static const QRegularExpression form(
        u"^([^<>=\\s]+)\\s*(<=|>=|<|>|=)\\s*(-?\\d+(?:\\.\\d+)?)$"_s);
    const QRegularExpressionMatch match = form.match(text.trimmed());
    if (!match.hasMatch() || !isBareName(match.captured(1)))
        return {};
    return Comparison{match.captured(1), operatorOf(match.captured(2)),
                      match.captured(3).toDouble()};
}

} // namespace

bool isBareName(QStringView name)
{
    if (name.isEmpty() || name.front().isDigit())
        return false;
    return std::all_of(name.begin(), name.end(),
                       [](QChar c) { return c.isLetterOrNumber() || c == u'_'; });
}

Condition::Condition(QString text) : m_text(std::move(text))
{
    for (const QString& piece : m_text.split(u" and "_s)) {
        const std::optional<Comparison> comparison = comparisonOf(piece);
        if (!comparison) {
            m_simple = false;
            m_comparisons.clear();
            return;
        }
        m_comparisons.push_back(*comparison);
    }
}

} // namespace statistics
