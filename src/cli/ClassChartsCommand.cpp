#include <QFileInfo>

#include "cli/ChosenOptions.h"
#include "cli/CliProgress.h"
#include "cli/Command.h"
#include "individual/paint/ClassCharts.h"

namespace cli {

using namespace Qt::StringLiterals;

Exit runClassCharts(Session& session)
{
    const Arguments& arguments = session.arguments;
    for (const QString& needed : {u"class"_s, u"out"_s}) {
        if (arguments.value(needed).isEmpty())
            throw missingOption(needed);
    }
    individual::ClassChartsRequest request;
    request.kind = chosenRanks(session);
    if (!session.openLibrary())
        return Exit::Error;
    request.classNumber = chosenClass(session);
    request.ticked = chosenTicks(session);
    const QString target = QFileInfo(arguments.value(u"out"_s)).absoluteFilePath();
    if (individual::isPdf(target))
        refuseOutput(session, target);
    if (arguments.has(u"force"_s))
        session.dialogs.answer(u"同名的图片"_s, u"覆盖"_s);
    CliProgress progress;
    const individual::ClassChartsResult result =
        individual::exportClassCharts(session.scores, request, target, progress);
    if (!result.files.isEmpty())
        printResult(result.files.join(u'\n') + u'\n');
    if (session.dialogs.cancelled())
        printError(u"图片没有导出。要覆盖同名的图片，请加上 --force。"_s);
    return result.isComplete ? session.result() : Exit::Error;
}

} // namespace cli
