#pragma once

#include <vector>

#include <QString>

namespace statistics {

enum class Operator { Less, LessOrEqual, Greater, GreaterOrEqual, Equal };

struct Comparison
{
    QString column;
    Operator op = Operator::Equal;
    double number = 0;

    /// The smallest and the largest number that it holds for; it holds for all between them, and
    /// for no NaN.
    double lowest() const;
    double highest() const;
};

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
    const std::vector<Comparison>& comparisons() const { return m_comparisons; }

private:
    QString m_text;
    std::vector<Comparison> m_comparisons;
    bool m_simple = true;
};

/// True for a name that SQL takes for a column without brackets: a letter or an underscore first,
/// then letters, digits and underscores.
bool isBareName(QStringView name);

} // namespace statistics
