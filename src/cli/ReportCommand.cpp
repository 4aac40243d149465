#include "cli/ChosenOptions.h"
#include "cli/Command.h"
#include "cli/GridOutput.h"
#include "statistics/NamedReports.h"
#include "workbench/ScoreQuery.h"
#include "workbench/StatisticsRun.h"

namespace cli {

using namespace Qt::StringLiterals;

namespace {

/// True if the grid holds a result, false after a refusal or 取消.
bool fill(Session& session, const QStringList& exams, grid::FlexGrid& grid)
{
    const Arguments& arguments = session.arguments;
    statistics::ReportContext context(session.scores);
    if (arguments.has(u"button"_s))
        return workbench::runReport({exams, workbench::chosenItem(arguments.value(u"button"_s))},
                                    context, grid)
               && !session.dialogs.cancelled();
    const QString item = arguments.value(u"item"_s);
    const statistics::Report report = statistics::namedReport(item);
    if (!report)
        throw UsageError(u"没有名为“%1”的报表。"_s.arg(item));
    // In the order given, which is that of the rows and says which one is the last.
    QString list = arguments.list(u"exam"_s).join(u',');
    report(context, list, grid, statistics::Transfer::GridOnly);
    return !session.dialogs.cancelled();
}

} // namespace

Exit runReport(Session& session)
{
    const Arguments& arguments = session.arguments;
    const QString format = arguments.oneOf(u"format"_s, {u"tsv"_s, u"json"_s});
    if (arguments.has(u"item"_s) == arguments.has(u"button"_s))
        throw UsageError(u"--item 和 --button 必须给出其中一个。"_s);
    // The button has a message of its own for no exam.
    if (!arguments.has(u"exam"_s)
        || (arguments.has(u"item"_s) && arguments.list(u"exam"_s).isEmpty()))
        throw missingOption(u"exam"_s);
    if (!session.openLibrary())
        return Exit::Error;
    const QStringList exams = chosenExams(session);
    session.scores.settings.CategoryFilter =
        workbench::categoryCondition(chosenCategories(session));
    grid::FlexGrid grid;
    if (fill(session, exams, grid) || format == "json"_L1)
        printGrid(session, grid, {}, format);
    return session.dialogs.cancelled() ? Exit::Error : session.result();
}

} // namespace cli
