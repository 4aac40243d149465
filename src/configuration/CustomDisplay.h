#pragma once

#include "library/ScoreLibrary.h"
#include "platform/grid/FlexGrid.h"

namespace configuration {

/// Rows of a grid, both ends included.
struct RowBlock
{
    int first = 1;
    int last = 1;

    friend bool operator==(const RowBlock&, const RowBlock&) = default;
};

/// Which columns of 成绩表 are shown, and in which order, for one item of the workbench and one
/// stream, or for the export of scores.
class CustomDisplay
{
public:
    /// The column of ticks.
    static constexpr int TickCol = 1;

    explicit CustomDisplay(library::ScoreLibrary& scoreLibrary);

    /// A row for each column, with "√" behind those that are shown; they are saved in grid order.
    grid::FlexGrid columns;

    /// "全", then the streams.
    QStringList streamChoices() const;

    /// Fills the grid with the columns of 成绩表 from the fourth on, in the table's order, and
    /// ticks those that the latest browse showed (DisplayItems). An order saved before is not
    /// shown.
    void load();

    /// Ticks the column of a row, or takes the tick away; a heading row has none.
    void flip(int row);

    /// Moves a block by one row; gives its new place.
    RowBlock moveUp(RowBlock block);
    RowBlock moveDown(RowBlock block);

    /// Saves the ticked columns under a key, such as 原始分和名次 with a stream behind it.
    void save(const QString& key);

private:
    QString tickedColumns() const;

    library::ScoreLibrary& m_library;
};

} // namespace configuration
