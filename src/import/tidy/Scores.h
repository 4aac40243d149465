#pragma once

#include <vector>

#include <QHash>

#include "import/tidy/Proposal.h"
#include "import/tidy/RowReading.h"

namespace tidy {

/// What a cell of scores holds.
struct ScoreCell
{
    enum class Kind { Number, Mark, Odd };

    Kind kind = Kind::Number;
    /// Also of a mark that is a number below 0.
    double number = 0;
    /// Of a mark, as marks are compared; of an odd score as it is written.
    QString text = {};
};

/// Reads a cell of scores: a number, also one in full width or with 分 behind it; a text that
/// begins with a number, such as 95², is odd, any other text, such as ①, a blank cell, and a number
/// below 0, which no score is, is a mark.
ScoreCell scoreIn(const runtime::Value& cell);

/// Counts the marks of a workbook and says what each means.
class MarkCounts
{
public:
    /// Takes over what was decided by others than the program.
    MarkCounts(const std::vector<Mark>& former, const Aliases& aliases);

    Mark& count(const QString& text);
    /// Those that were counted, the most frequent first, and those that a user decided.
    std::vector<Mark> marks() const;

private:
    Mark read(const QString& text) const;

    const Aliases& m_aliases;
    QHash<QString, Mark> m_marks;
};

} // namespace tidy
