#pragma once

#include <vector>

#include <QString>

namespace statistics {

enum class Operator { Less, LessOrEqual, Greater, GreaterOrEqual, Equal };

/// A comparison of a value, rounded to ComparedDigits places, with a number: a mark of 89.7 is kept
/// as the nearest 32-bit float, which lies below, and is meant to reach a line of 89.7.
struct Comparison
{
    QString column;
    Operator op = Operator::Equal;
    double number = 0;

    /// The smallest and the largest value that it holds for; it holds for all between them, and
    /// for no NaN.
    double lowest() const;
    double highest() const;
};

/// Decimal places that conditions of reports look at.
inline constexpr int ComparedDigits = 4;

/// A condition of a report, such as "语文>=102 and 语文<=120": its SQL text, and the same as
/// comparisons, so that it can be evaluated without the engine.
class Condition
{
public:
    /// No condition: every row passes.
    Condition() = default;
    /// A text that is no chain of comparisons of bare column names with numbers is left to the
    /// engine, which then says what is wrong with it.
    explicit Condition(QString text);

    bool isNone() const { return m_simple && m_comparisons.empty(); }
    /// False if only the engine can answer it.
    bool isSimple() const { return m_simple; }
    const QString& text() const { return m_text; }
    /// The text for the engine: one that is simple with its columns rounded, another as it stands.
    QString sqlText() const;
    const std::vector<Comparison>& comparisons() const { return m_comparisons; }

private:
    QString m_text;
    std::vector<Comparison> m_comparisons;
    bool m_simple = true;
};

} // namespace statistics
