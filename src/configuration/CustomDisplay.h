#pragma once

#include "library/ScoreLibrary.h"
#include "platform/grid/FlexGrid.h"

namespace configuration {

/// Which columns of 成绩表 are shown, and in which order, for one item of the workbench and one
/// stream. The rows of the grid are the columns; those with "√" are saved in grid order.
class CustomDisplay
{
public:
    explicit CustomDisplay(library::ScoreLibrary& scoreLibrary) : m_library(scoreLibrary) {}

    /// The item's text, as in "原始分和名次"; to be set before init.
    QString XMName;
    /// First and last row of the block that CommandUP and CommandDown move.
    int SelTop = 1;
    int SelBottom = 1;
    grid::FlexGrid MSFlexGrid1;

    /// Writes the headings.
    void Form_Load();

    /// What ComboKL offers: "全", then the streams.
    QStringList streamChoices() const;

    /// The window's title.
    QString caption() const;

    /// Fills the grid with the columns of 成绩表 from the fourth on, in the table's order, and
    /// ticks those that are in DisplayItems. An order saved before is not shown.
    void init();

    /// The mouse was released over a cell: flips the tick in column 1 and takes the selected rows.
    void MSFlexGrid1_MouseUp(int MouseRow, int MouseCol);
    /// Takes the rows that are selected in the grid as the block to move.
    void takeSelection();

    /// Moves the block by one row; its bounds go with it.
    void CommandUP_Click();
    void CommandDown_Click();

    /// Saves the ticked columns for the item and `stream`, which is the text of ComboKL.
    void Command1_Click(const QString& stream);

private:
    void flip(int row);
    QString tickedColumns() const;

    library::ScoreLibrary& m_library;
};

} // namespace configuration
