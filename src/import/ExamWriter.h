#pragma once

#include <optional>

#include "import/ClassAnswers.h"
#include "import/ExamImport.h"
#include "import/ImportState.h"
#include "import/KnownStudents.h"

namespace importing {

/// Writes the exam's row of 考试名称表 and one row of 成绩表 for each row of the staging grid. The
/// caller holds the batch; a statement that fails is shown, and the next one runs.
class ExamWriter
{
public:
    ExamWriter(library::ScoreLibrary& scoreLibrary, ClassAnswers& classes, KnownStudents& students,
               const ImportState& state, ExamChoice examChoice);

    /// Full marks, and the library's present formulas of the totals.
    void writeExamRow(const QString& stream);

    /// Finds the columns and the exam's number; to be called once before the score rows.
    void beginScores();

    /// Writes row `row` of the staging grid. A picked exam overwrites the first row of that class,
    /// number and name, from whichever exam it stems.
    void writeScoreRow(int row);

private:
    /// Columns of 成绩表, looked up once for all rows.
    struct StudentColumns
    {
        database::FieldByName classNumber;
        database::FieldByName number;
        database::FieldByName name;
        database::FieldByName category;
        database::FieldByName stream;
        database::FieldByName exam;
        database::FieldByName examNumber;
        database::FieldByName id;
    };

    void copyFormulas();
    void setExamField(const QString& column, const runtime::Value& value);
    database::FieldByName findColumn(const QString& name) const;
    void findColumns();
    void set(const database::FieldByName& column, const runtime::Value& value);
    bool openStudentRow(const QString& classText, const QString& numberText, const QString& name);
    void setStudent(const QString& classText, const QString& numberText, const QString& name);
    void setStudentId(double classNumber, double number);
    void setScores(int row);

    library::ScoreLibrary& m_library;
    ClassAnswers& m_classes;
    KnownStudents& m_students;
    const ImportState& m_state;
    ExamChoice m_examChoice;
    database::Recordset m_rows;
    int m_examNumber = 0;
    std::optional<StudentColumns> m_columns;
    /// In the order of KMImport.
    std::vector<database::FieldByName> m_scoreColumns;
};

} // namespace importing
