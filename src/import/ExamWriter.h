#pragma once

#include <optional>

#include "import/ClassAnswers.h"
#include "import/ImportState.h"
#include "import/ScoreRows.h"
#include "library/ScoreLibrary.h"

namespace importing {

/// Writes the exam's row of 考试名称表 and one row of 成绩表 for each row of the staging grid. The
/// caller holds the batch; a statement that fails is shown, and the next one runs.
class ExamWriter
{
public:
    ExamWriter(library::ScoreLibrary& scoreLibrary, ClassAnswers& classes, const ImportState& state,
               ScoreTarget target);

    /// Full marks, and the library's present formulas of the totals. Where each student's first row
    /// is overwritten, they go to the exam's first row, whichever its stream.
    void writeExamRow(const QString& stream);

    /// Finds the columns and the exam's number; to be called once before the score rows.
    void beginScores();

    /// Writes row `row` of the staging grid. First rows are found by class, number and name,
    /// the exam's rows by its name and the student.
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

    runtime::Value firstRow(const QString& sql, const std::vector<runtime::Value>& values) const;
    runtime::Value rowOfStream(const QString& stream) const;
    ScoredStudent studentOf(int row) const;
    qint64 rowOf(const ScoredStudent& student);
    void openExamRow(const QString& stream);
    void addExamRow(const QString& stream);
    void copyFormulas();
    void setExamField(const QString& column, const runtime::Value& value);
    database::FieldByName findColumn(const QString& name) const;
    void findColumns();
    void set(const database::FieldByName& column, const runtime::Value& value);
    bool openStudentRow(int row);
    void finishRow();
    void setStudent(int row);
    void setStudentId(qint64 student);
    void setScores(int row);

    library::ScoreLibrary& m_library;
    ClassAnswers& m_classes;
    const ImportState& m_state;
    ScoreTarget m_target;
    database::Recordset m_rows;
    ExamScoreRows m_examRows;
    /// The row that is written; 0 for a new one.
    qint64 m_row = 0;
    int m_examNumber = 0;
    std::optional<StudentColumns> m_columns;
    /// In the order of KMImport.
    std::vector<database::FieldByName> m_scoreColumns;
};

} // namespace importing
