#include "cli/Command.h"
#include "cli/SelectionOptions.h"
#include "statistics/NamedReports.h"
#include "workbench/StatisticsRun.h"

namespace cli {

using namespace Qt::StringLiterals;

namespace {

/// True if the grid holds a result, false after a refusal.
bool fill(workbench::Selection& selection, const Arguments& arguments, grid::FlexGrid& grid)
{
    statistics::ReportContext context(selection.library());
    if (arguments.has(u"button"_s)) {
        selection.Combo3.text = arguments.value(u"button"_s);
        return workbench::CommandZXTJ_Click(selection, context, grid);
    }
    const QString item = arguments.value(u"item"_s);
    const statistics::Report report = statistics::namedReport(item);
    if (!report)
        throw UsageError(u"没有名为“%1”的报表。"_s.arg(item));
    QString exams = selection.ListKSMC.selectedTexts().join(u',');
    report(context, exams, grid, statistics::Transfer::GridOnly);
    return true;
}

} // namespace

Exit runReport(Session& session)
{
    const Arguments& arguments = session.arguments;
    const QString format = arguments.oneOf(u"format"_s, {u"tsv"_s, u"json"_s});
    if (arguments.has(u"item"_s) == arguments.has(u"button"_s))
        throw UsageError(u"--item 和 --button 必须给出其中一个。"_s);
    if (!arguments.has(u"exam"_s))
        throw UsageError(u"缺少选项 --exam。"_s);
    if (!session.openLibrary())
        return Exit::Error;
    workbench::Selection selection(session.scores);
    selection.Form_Load();
    chooseExamsAndCategories(selection, arguments);
    selection.scTJ();
    grid::FlexGrid grid;
    if (fill(selection, arguments, grid) || format == "json"_L1)
        printGrid(session, grid, {}, format);
    return session.result();
}

} // namespace cli
