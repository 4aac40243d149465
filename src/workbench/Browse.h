#pragma once

#include "library/ScoreLibrary.h"
#include "platform/grid/FlexGrid.h"
#include "platform/runtime/Progress.h"
#include "workbench/ScoreQuery.h"

namespace workbench {

/// What a browse shows.
struct BrowseRequest
{
    /// No exam is refused.
    RowChoice rows;
    /// One of columnFamilies().
    QString family;
    /// A stream, or AllStreams.
    QString stream;
    /// The statement that gives the rows: rowsSql of `rows`, or one that the user typed.
    QString sql;
};

/// True if an exam is chosen; otherwise the message that asks for one.
bool checkExamChosen(const QStringList& exams);

/// The columns that a family and stream show: the stored selection of that name, or the default
/// list.
QStringList shownColumns(library::ScoreLibrary& scoreLibrary, const QString& family,
                         const QString& stream);

/// The same. They become the DisplayItems of the library's settings.
QStringList MKzdyxs(library::ScoreLibrary& scoreLibrary, const QString& family,
                    const QString& stream);

/// Fills the grid: a heading row, then a row for each record of the statement, a column for each
/// item. Of the looks of the table before, its merges and fixed rows stay. A failing statement is
/// shown and the next one runs, so that a name that is no field costs one message for each row.
/// False, and the grid as it was, if the statement would change the library and the user does not
/// want that, or no copy of the library could be made before.
bool ShowKSCJmain(library::ScoreLibrary& scoreLibrary, const QString& sql, const QStringList& items,
                  grid::FlexGrid& grid, runtime::Progress& progress);

/// Fills the grid and shows it. False, after a message, if no exam is chosen, and if the user does
/// not want the typed statement to run.
bool browse(library::ScoreLibrary& scoreLibrary, const BrowseRequest& request, grid::FlexGrid& grid,
            runtime::Progress& progress);

/// The heading of a column: "语文年名" is shown as "语名".
QString browseHeading(const QString& item);

/// Writes the headings of these columns into row 0 and gives the columns their widths.
void writeHeadings(grid::FlexGrid& grid, const QStringList& items);

} // namespace workbench
