#pragma once

#include "import/ImportState.h"
#include "import/ScoreCell.h"
#include "import/StudentMatch.h"
#include "import/WorkbookIntake.h"

namespace importing {

/// The first pass over a sheet of exam results: every row's student is matched, its scores are
/// judged, and what the sheet says goes to the staging grid.
class SheetPass
{
public:
    enum class Outcome { Continue, EndOfSheet, Cancelled };

    SheetPass(const excel::Worksheet& sheet, ImportState& state, StudentMatch& students,
              NewStudents newStudents);

    /// Takes sheet row `row`, counted from 1; rows come in order from 2 on. Throws Error if the
    /// names so far cannot be written when a question comes up.
    Outcome takeRow(int row);

private:
    bool nameAccepted(const QString& libraryName, double classNumber, double number,
                      const QString& name);
    void judgeScores(int row, const QStringList& student);
    void noteBadScore(const QStringList& student, const ImportSubject& subject,
                      const ScoreCell& cell);

    const excel::Worksheet& m_sheet;
    ImportState& m_state;
    StudentMatch& m_students;
    NewStudents m_newStudents;
    ScoreCells m_scores;
};

} // namespace importing
