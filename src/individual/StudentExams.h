#pragma once

#include "library/ScoreLibrary.h"
#include "platform/grid/FlexGrid.h"
#include "platform/runtime/Value.h"

namespace individual {

/// The student that individual analysis shows, with the grid of his exams. Failures are shown with
/// the routine's tag, and old values stay.
class StudentExams
{
public:
    /// A Chinese character of the grid's font, where no screen says otherwise, in twips.
    static constexpr double usualCharacterWidth = 180;

    /// No student yet: the headings, and an empty row for each exam of the library. The columns'
    /// widths follow from the width of a Chinese character of the grid's font, in twips.
    explicit StudentExams(library::ScoreLibrary& scores,
                          double characterWidth = usualCharacterWidth);

    /// The grid: exams by rows, then a column for each subject and total with the score, then one
    /// for each with the rank in the grade.
    grid::FlexGrid MSFlexGrid1;

    /// ID of the student; 0 before the first choice.
    qint64 StuID = 0;
    // Stream, class and name as they stand in the row of the student's earliest exam; Null before
    // the first choice.
    runtime::Value StuKL;
    runtime::Value StuBJ;
    runtime::Value StuName;

    /// Fills grid and student from the exams in which the student has a row, in their order. One
    /// without a row costs a message for each of the three texts, which stay those of the student
    /// before, and leaves the headings alone.
    void ShowGeRenCJ(qint64 id);

    /// The exams of the grid's rows behind the heading.
    QStringList exams() const;

private:
    void fillRow(int row, database::Recordset& rows);
    void setMark(int row, int col, database::Recordset& rows, const QString& column);

    library::ScoreLibrary& m_scores;
};

/// What is told of a library without exams.
QString noExams();

/// The title of a window that shows the student.
QString studentTitle(library::ScoreLibrary& scores, qint64 id);

/// The tip of a cell of the grid under the pointer: the heading's text, nothing in the rows below.
QString cellTip(const grid::FlexGrid& grid, int row, int col);

} // namespace individual
