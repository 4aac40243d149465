#pragma once

#include "library/ScoreLibrary.h"

namespace maintenance {

/// Where a library rests on subjects or totals besides their columns.
struct SubjectUses
{
    int examFormulas = 0;    ///< formulas of totals of single exams and streams
    int defaultFormulas = 0; ///< formulas of 总分公式
    int settings = 0;        ///< settings of reports that count by 总分
    int conditions = 0;      ///< rows of 详细设置表
    int displays = 0;        ///< selections of columns

    bool any() const
    {
        return examFormulas + defaultFormulas + settings + conditions + displays > 0;
    }
    /// A line for each place that rests on them, with the count.
    QString lines() const;
};

/// Counts what rests by name on any of the columns, or a column derived of them, and stays when
/// they are removed: the formula of a total that goes with them does not count. Throws
/// database::Error.
SubjectUses usesOf(library::ScoreLibrary& scoreLibrary, const QStringList& columns);

} // namespace maintenance
