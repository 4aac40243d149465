#include "cli/CliProgress.h"
#include "cli/Command.h"
#include "scoring/Scoring.h"

namespace cli {

Exit runScore(Session& session)
{
    if (!session.openLibrary())
        return Exit::Error;
    const QStringList exams = session.arguments.positionals().mid(1);
    session.requireExams(exams);
    scoring::Scoring scoring(session.scores);
    CliProgress progress;
    bool done = true;
    for (const QString& exam : exams)
        done = scoring.score(exam, progress) && done;
    return done ? session.result() : Exit::Error;
}

} // namespace cli
