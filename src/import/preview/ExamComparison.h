#pragma once

#include <map>
#include <optional>
#include <set>

#include "import/ImportState.h"
#include "import/ScoreCell.h"
#include "import/ScoreRows.h"
#include "import/SheetRows.h"
#include "import/preview/Preview.h"
#include "library/ScoreLibrary.h"

namespace importing {

/// The scores that an exam has beside those of a sheet that overwrites them.
class ExamComparison
{
public:
    /// All of them must outlive it. `target` is not NewRows.
    ExamComparison(library::ScoreLibrary& scoreLibrary, const excel::Worksheet& sheet,
                   const QString& exam, ScoreTarget target,
                   const std::vector<ImportSubject>& subjects);

    /// Finds out which row a student's scores go to. `name` says under which name his first row is
    /// looked for. Rows come in order; the last one that goes to a row is the one that counts.
    /// False for a student whom the original rule cannot look up. Throws Error.
    bool take(int sheetRow, const ScoredStudent& student, RowName name);

    /// Tells of every score that changes, of students without scores in the exam, and, where the
    /// stream is known, of those of it who are not on the sheet. Throws Error.
    void tell(const std::optional<QString>& stream, Preview& preview);

private:
    struct Stored
    {
        ScoredStudent student;
        QString stream;
        std::vector<runtime::Value> scores;
    };

    qint64 rowOf(const ScoredStudent& student, RowName name);
    qint64 newRow(const ScoredStudent& student);
    std::map<qint64, Stored> storedRows() const;
    void compare(int sheetRow, const Stored& stored, Preview& preview);
    void tellMissing(const std::map<qint64, Stored>& rows, const QString& stream,
                     Preview& preview) const;

    library::ScoreLibrary& m_library;
    const excel::Worksheet& m_sheet;
    const QString m_exam;
    const ScoreTarget m_target;
    const std::vector<ImportSubject>& m_subjects;
    ExamScoreRows m_examRows;
    ScoreCells m_cells;
    /// The sheet row of each row that is written; rows to come have numbers below 0.
    std::map<qint64, int> m_sheetRows;
    /// First rows that stem from other exams.
    std::set<qint64> m_otherExams;
    std::map<std::tuple<double, double, QString>, qint64> m_newRows;
    std::set<std::pair<double, double>> m_onSheet;
};

} // namespace importing
