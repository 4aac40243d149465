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

    /// False for a name that the original rule cannot look up, so that nothing is stored.
    bool canLookUp(const QString& name) const;

    /// Finds out which row a student's scores go to. `name` says under which name his first row is
    /// looked for; nothing if no row bears it any more by then. Rows come in order; of those that
    /// go to one row the last score counts that its column takes. Throws Error.
    void take(int sheetRow, const ScoredStudent& student, std::optional<RowName> name);

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

    qint64 rowOf(const ScoredStudent& student, std::optional<RowName> name);
    qint64 newRow(const ScoredStudent& student);
    std::map<qint64, Stored> storedRows() const;
    void compare(const std::vector<int>& sheetRows, const Stored& stored, Preview& preview);
    /// The one of the rows whose score of a subject is stored in the end, and that score; 0 where
    /// all are refused.
    std::pair<int, runtime::Value> lastStored(const std::vector<int>& sheetRows,
                                              const ImportSubject& subject,
                                              const database::Column& column);
    void tellMissing(const std::map<qint64, Stored>& rows, const QString& stream,
                     Preview& preview) const;

    library::ScoreLibrary& m_library;
    const excel::Worksheet& m_sheet;
    const QString m_exam;
    const ScoreTarget m_target;
    const std::vector<ImportSubject>& m_subjects;
    ExamScoreRows m_examRows;
    ScoreCells m_cells;
    /// The sheet rows of each row that is written; rows to come have numbers below 0.
    std::map<qint64, std::vector<int>> m_sheetRows;
    /// First rows that stem from other exams.
    std::set<qint64> m_otherExams;
    std::map<std::tuple<double, double, QString>, qint64> m_newRows;
    std::set<std::pair<double, double>> m_onSheet;
};

} // namespace importing
