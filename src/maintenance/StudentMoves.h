#pragma once

#include "library/LibraryBackup.h"
#include "library/ScoreLibrary.h"
#include "maintenance/MovePlan.h"
#include "platform/runtime/Progress.h"

namespace maintenance {

/// "学生调整": moves, swaps and removals of single students, gathered first and carried out
/// together, all of them or none.
class StudentMoves
{
public:
    /// Declined: nothing is gathered or possible, or the question was answered so. Stopped: the run
    /// was cancelled or failed; the library is as it was.
    enum class Result { Declined, Stopped, Done };

    explicit StudentMoves(library::ScoreLibrary& scoreLibrary) : m_library(scoreLibrary) {}

    const std::vector<StudentMove>& gathered() const { return m_moves; }
    /// Throws Refusal for a place that is none, a student who changes places with himself, and one
    /// who is part of a change that was gathered before.
    void add(const StudentMove& move);
    /// Takes back the change of that place, counted from 0.
    void takeBack(size_t move);

    /// What the changes will do, as the library is now. Throws database::Error.
    MovePlan plan() { return planMoves(m_library.Conn, m_moves); }
    /// A number that nobody of the class will have, or had in an exam. Throws database::Error.
    double freeNumber(double classNumber);

    /// Asks with the counts, then carries everything out. Tells the library's followers and the
    /// user when it is done, and offers to score the exams anew whose ranks are stale. What was
    /// carried out is no longer gathered.
    Result run(runtime::Progress& progress, library::Backup backup);

private:
    bool isPartOfOne(qint64 id) const;
    bool isWanted(const MovePlan& plan, library::Backup backup) const;
    /// False if the run was cancelled.
    bool write(const MovePlan& asked, runtime::Progress& progress);
    void tell(const MovePlan& done, runtime::Progress& progress);
    void score(const QStringList& exams, runtime::Progress& progress);

    library::ScoreLibrary& m_library;
    std::vector<StudentMove> m_moves;
};

} // namespace maintenance
