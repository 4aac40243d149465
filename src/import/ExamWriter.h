#pragma once

#include "import/ClassAnswers.h"
#include "import/ExamImport.h"
#include "import/ImportState.h"

namespace importing {

/// Writes the exam's row of 考试名称表 and one row of 成绩表 for each row of the staging grid. The
/// caller holds the batch; a statement that fails is shown, and the next one runs.
class ExamWriter
{
public:
    ExamWriter(library::ScoreLibrary& scoreLibrary, ClassAnswers& classes, const ImportState& state,
               ExamChoice examChoice);

    /// Full marks, and the library's present formulas of the totals.
    void writeExamRow(const QString& stream);

    /// Call once before the score rows.
    void beginScores();

    /// Writes row `row` of the staging grid. A picked exam overwrites the first row of that class,
    /// number and name, from whichever exam it stems.
    void writeScoreRow(int row);

private:
    void copyFormulas();
    void set(const QString& column, const runtime::Value& value);
    bool openStudentRow(const QString& classText, const QString& numberText, const QString& name);
    void setStudent(const QString& classText, const QString& numberText, const QString& name);
    void setStudentId(double classNumber, double number);
    void setScores(int row);

    library::ScoreLibrary& m_library;
    ClassAnswers& m_classes;
    const ImportState& m_state;
    ExamChoice m_examChoice;
    jet::Recordset m_rows;
    int m_examNumber = 0;
};

} // namespace importing
