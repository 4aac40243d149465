#pragma once

#include "library/ScoreLibrary.h"
#include "platform/runtime/Progress.h"

namespace workbench {

/// Whether a statement that the user typed may run: it only reads, or he was told what it would
/// change and wants that. A copy of the library has been made then; false, after a message, if it
/// could not be. Throws runtime::Error for a statement that cannot run.
bool mayRun(library::ScoreLibrary& scoreLibrary, const QString& sql, runtime::Progress& progress);

/// As long as it lives, statements that the user typed tell the progress that they run, and end
/// when it is cancelled.
class StoppableStatements
{
public:
    StoppableStatements(database::Connection& connection, runtime::Progress& progress);
    ~StoppableStatements();
    StoppableStatements(const StoppableStatements&) = delete;
    StoppableStatements& operator=(const StoppableStatements&) = delete;

private:
    database::Connection& m_connection;
    database::UserLimits m_former;
};

} // namespace workbench
