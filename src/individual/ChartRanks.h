#pragma once

#include "individual/RankChart.h"
#include "individual/StudentExams.h"

namespace individual {

/// A column whose box is ticked.
struct TickedColumn
{
    QString name;
    int colour = 0; ///< 0xBBGGRR

    friend bool operator==(const TickedColumn&, const TickedColumn&) = default;
};

/// What the chart of the shown student is made of, but its size: the ranks of the ticked columns,
/// given in the order of the library's columns, in the exams of the grid. What it says is what
/// GetMC and GetZRS answer for each point, with their failures, but each exam is read once.
RankChartRequest readRanks(library::ScoreLibrary& scores, const StudentExams& student,
                           const std::vector<TickedColumn>& ticked, RankKind kind);

} // namespace individual
