#pragma once

#include "library/LibraryBackup.h"
#include "library/ScoreLibrary.h"
#include "maintenance/ErasureCounts.h"
#include "platform/runtime/Progress.h"

namespace maintenance {

/// "彻底删除所选考试": takes exams out of 成绩表, 考试名称表 and 教师表, all of them or none.
class ExamErasure
{
public:
    /// Declined: nothing was selected, or the question was answered so. Stopped: the run was
    /// cancelled or failed; the library is as it was.
    enum class Result { Declined, Stopped, Done };

    explicit ExamErasure(library::ScoreLibrary& scoreLibrary) : m_library(scoreLibrary) {}

    /// Asks with the counts of what goes, then erases the exams. Tells the library's followers and
    /// the user when it is done. An exam is known by its name to the letter.
    Result run(const QStringList& exams, runtime::Progress& progress, library::Backup backup);

private:
    /// What was erased, for the closing words.
    struct Erased
    {
        qint64 scoreRows = 0;
        qint64 examRows = 0;
        qint64 teacherRows = 0;
    };

    bool isWanted(const ErasureCounts& counts, library::Backup backup) const;
    /// False if the run was cancelled. Throws Refusal if the exams are not as they were when the
    /// user was asked.
    bool eraseAll(const QStringList& exams, const ErasureCounts& asked,
                  runtime::Progress& progress);
    bool eraseScores(const QString& exam, qint64 total, runtime::Progress& progress);

    library::ScoreLibrary& m_library;
    Erased m_erased;
};

} // namespace maintenance
