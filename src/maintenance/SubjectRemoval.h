#pragma once

#include "library/LibraryBackup.h"
#include "library/ScoreLibrary.h"
#include "platform/runtime/Progress.h"

namespace maintenance {

/// "删除科目": takes subjects and totals out of the library, with all columns derived of them.
class SubjectRemoval
{
public:
    /// Declined: nothing was selected, or a question was answered so that nothing happens.
    /// Stopped: the run was cancelled or failed; the library is as it was.
    enum class Result { Declined, Stopped, Done };

    explicit SubjectRemoval(library::ScoreLibrary& scoreLibrary) : m_library(scoreLibrary) {}

    /// What can be removed: the subjects and totals of the library.
    const QStringList& columns() const { return m_library.catalogue.AllColumns; }

    /// Asks, once more where formulas or settings name a subject, then removes the selected
    /// columns, given in the order of columns(), from the last to the first. All of them go, or
    /// none; what the engine refuses is told, and the rest goes on. Tells the library's followers
    /// and the user when it is done.
    Result run(const QStringList& selected, runtime::Progress& progress, library::Backup backup);

private:
    bool isWanted(const QStringList& selected, library::Backup backup) const;
    /// False if the run was cancelled.
    bool dropAll(const QStringList& selected, runtime::Progress& progress);

    library::ScoreLibrary& m_library;
};

} // namespace maintenance
