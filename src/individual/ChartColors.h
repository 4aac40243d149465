#pragma once

#include <array>
#include <map>

#include "library/ScoreLibrary.h"
#include "platform/runtime/Trap.h"

namespace individual {

/// The colours of the charts' lines, as 0xBBGGRR, by the position of a column among all columns,
/// counted from 1. The library keeps those of 0 to 15. Failures are shown with the routine's tag.
class ChartColors
{
public:
    static constexpr int largestKept = 15;

    explicit ChartColors(library::ScoreLibrary& scores) : m_scores(scores) {}

    /// Reads 颜色表. A row that is no colour, or of no such position, costs a message, and the
    /// position stays black.
    void load();

    /// The colour of a position. One above 15 takes those of 1 to 15 again, after a message once.
    int color(int index);

    /// Gives a position another colour and keeps it. One above 15 has it as long as this object
    /// lives, after that message.
    void setColor(int index, int color);

    /// Writes one of the colours 0 to 15 to 颜色表.
    void SaveColor(int index);

private:
    void takeRow(database::Recordset& rows);
    /// Tells once that the position has no colour of its own.
    void refuse(int index, const runtime::Trap& trap);

    library::ScoreLibrary& m_scores;
    std::array<int, largestKept + 1> KMColors{};
    /// Colours of positions that are not kept.
    std::map<int, int> m_others;
    bool m_refused = false;
};

} // namespace individual
