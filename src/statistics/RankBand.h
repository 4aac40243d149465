#pragma once

#include "statistics/ExamFigures.h"

namespace statistics {

/// A band of grade ranks: the first x of the grade, or the last |x| for x of 0 and less.
class RankBand
{
public:
    explicit RankBand(const QString& entry);

    /// "前50" or "后20".
    QString name() const;
    /// The condition on the item's rank column, which leaves absent students out. The last ones are
    /// counted back from the lowest rank of the stream, which costs a look at the exam.
    Condition condition(const QString& item, ExamFigures& figures) const;

private:
    QString m_entry;
    double m_number;
};

} // namespace statistics
