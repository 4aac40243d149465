#pragma once

#include "library/ScoreLibrary.h"
#include "platform/grid/FlexGrid.h"
#include "statistics/Figure.h"

namespace workbench {

/// The students behind a figure of a report.
struct FigureList
{
    /// A heading row, then a row for each student.
    grid::FlexGrid grid;
    /// Which students these are, in words.
    QString sentence;
    /// What else there is to say; "" for nothing.
    QString details;
    /// That the library was changed since the report; "" if the figure still holds.
    QString change;
    /// The statement that gives the rows.
    QString sql;
};

/// Lists the students behind a figure as the library has them now: class, number and name, what the
/// figure is about, then the others of `columns` that there are. For 考试人数 those of the class
/// without a row in the exam follow at the end. Throws database::Error.
FigureList listStudents(library::ScoreLibrary& scoreLibrary, const statistics::Figure& figure,
                        const QStringList& columns);

} // namespace workbench
