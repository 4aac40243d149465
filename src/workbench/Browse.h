#pragma once

#include "platform/grid/FlexGrid.h"
#include "workbench/Selection.h"

namespace workbench {

/// Shows score rows in a grid: the rows come from an SQL text, the columns from the display list.
class Browse
{
public:
    explicit Browse(const Selection& selection) : m_selection(selection) {}

    /// Fills DisplayItems for the chosen family of columns and stream: the stored selection of that
    /// name, or the default list.
    void MKzdyxs();

    /// Fills the grid: a heading row, then a row for each record of the statement, a column for
    /// each of DisplayItems. A failing statement is shown and the next one runs, so that a name
    /// that is no field costs one message for each row.
    void ShowKSCJmain(const QString& sql, grid::FlexGrid& grid);

    /// Browses by Text1 and shows the grid. False if no exam is selected.
    bool CommandLLCJ_Click(grid::FlexGrid& grid);

private:
    QStringList defaultItems() const;

    const Selection& m_selection;
};

/// The heading of a column: "语文年名" is shown as "语名".
QString browseHeading(const QString& item);

} // namespace workbench
