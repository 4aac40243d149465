#include "cli/ChosenOptions.h"
#include "cli/CliProgress.h"
#include "cli/Command.h"
#include "maintenance/ClassStreams.h"

namespace cli {

using namespace Qt::StringLiterals;

Exit runSetStreams(Session& session)
{
    const Arguments& arguments = session.arguments;
    if (!arguments.has(u"science"_s))
        throw missingOption(u"science"_s);
    if (!session.openLibrary())
        return Exit::Error;
    maintenance::ClassStreams streams(session.scores);
    const QStringList classes = streams.load();
    const QStringList science = arguments.list(u"science"_s);
    for (const QString& classNumber : science) {
        if (!classes.contains(classNumber))
            throw UsageError(u"成绩库里没有班级“%1”。"_s.arg(classNumber));
    }
    session.dialogs.answer(u"科类设为理"_s, u"设置"_s);
    const library::Backup backup = chosenBackup(arguments);
    if (!streams.confirmed(science, backup))
        return Exit::Error;
    CliProgress progress;
    streams.set(science, progress, backup);
    return session.result();
}

} // namespace cli
