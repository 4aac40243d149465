#include "cli/ChosenOptions.h"
#include "cli/Command.h"
#include "cli/GridOutput.h"
#include "statistics/NamedReports.h"
#include "workbench/ExamByExam.h"
#include "workbench/ScoreQuery.h"
#include "workbench/StatisticsRun.h"

namespace cli {

using namespace Qt::StringLiterals;
using statistics::ReportContext;

namespace {

/// True if the grid holds a result, false after a refusal.
bool fillByButton(const Session& session, const QStringList& exams, ReportContext& context,
                  grid::FlexGrid& grid)
{
    workbench::ReportRequest request{exams,
                                     workbench::chosenItem(session.arguments.value(u"button"_s))};
    if (session.arguments.has(u"each"_s))
        request.tables = workbench::ExamGrouping::OneByOne;
    return workbench::runReport(request, context, grid);
}

void fillByName(const Session& session, ReportContext& context, grid::FlexGrid& grid)
{
    const QString item = session.arguments.value(u"item"_s);
    const statistics::Report report = statistics::namedReport(item);
    if (!report)
        throw UsageError(u"没有名为“%1”的报表。"_s.arg(item));
    const auto fill = [&](QString exams, grid::FlexGrid& table) {
        report(context, exams, table, statistics::Transfer::GridOnly);
    };
    // In the order given, which is that of the rows and says which one is the last.
    const QStringList exams = session.arguments.list(u"exam"_s);
    if (session.arguments.has(u"each"_s))
        workbench::reportExamByExam(exams, fill, grid);
    else
        fill(exams.join(u','), grid);
}

bool fill(const Session& session, const QStringList& exams, grid::FlexGrid& grid)
{
    ReportContext context(session.scores);
    if (session.arguments.has(u"button"_s))
        return fillByButton(session, exams, context, grid);
    fillByName(session, context, grid);
    return true;
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
    const bool filled = fill(session, exams, grid) && !session.dialogs.cancelled();
    if (filled || format == "json"_L1)
        printGrid(session, grid, {}, format);
    return session.dialogs.cancelled() ? Exit::Error : session.result();
}

} // namespace cli
