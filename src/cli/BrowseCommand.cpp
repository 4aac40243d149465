#include "cli/ChosenOptions.h"
#include "cli/CliProgress.h"
#include "cli/Command.h"
#include "cli/GridOutput.h"
#include "library/ColumnNames.h"
#include "workbench/Browse.h"
#include "workbench/Offers.h"

namespace cli {

using namespace Qt::StringLiterals;

namespace {

workbench::BrowseRequest browseRequest(const Session& session)
{
    const Arguments& arguments = session.arguments;
    workbench::BrowseRequest request;
    workbench::RowChoice& rows = request.rows;
    rows.exams = chosenExams(session);
    rows.categories = chosenCategories(session);
    request.stream = arguments.value(u"stream"_s, library::AllStreams);
    rows.classes = chosenClasses(session, request.stream);
    request.family = arguments.oneOf(u"show"_s, workbench::columnFamilies());
    rows.order = chosenOrder(session);
    request.sql = arguments.value(u"sql"_s, workbench::rowsSql(rows));
    return request;
}

} // namespace

Exit runBrowse(Session& session)
{
    const Arguments& arguments = session.arguments;
    const QString format = arguments.oneOf(u"format"_s, {u"tsv"_s, u"json"_s});
    if (arguments.list(u"exam"_s).isEmpty() && !arguments.has(u"sql"_s))
        throw missingOption(u"exam"_s);
    if (!session.openLibrary())
        return Exit::Error;
    if (arguments.has(u"accept-changes"_s))
        session.dialogs.answer(u"这条语句会"_s, u"执行"_s);
    const workbench::BrowseRequest request = browseRequest(session);
    grid::FlexGrid grid;
    CliProgress progress;
    const bool filled = workbench::browse(session.scores, request, grid, progress);
    progress.finish();
    // A refusal leaves nothing to show as text; the object tells its message.
    if (filled || format == "json"_L1)
        printGrid(session, grid, request.sql, format);
    if (!session.dialogs.cancelled())
        return session.result();
    printError(u"语句没有执行。要执行它，请加上 --accept-changes。"_s);
    return Exit::Error;
}

} // namespace cli
