#include <QJsonArray>
#include <QJsonDocument>

#include "cli/ChosenOptions.h"
#include "cli/CliProgress.h"
#include "cli/Command.h"
#include "export/ScoreExport.h"
#include "library/ColumnNames.h"
#include "workbooks/model/BookJson.h"

namespace cli {

using namespace Qt::StringLiterals;
using exporting::ScoreExportRequest;

namespace {

void checkOptions(const Arguments& arguments, const QString& format)
{
    for (const QString& name : {u"exam"_s, u"subjects"_s, u"classes"_s}) {
        if (!arguments.has(name))
            throw missingOption(name);
    }
    const bool prints = format == "json"_L1;
    if (arguments.value(u"out"_s).isEmpty() && (arguments.has(u"out"_s) || !prints))
        throw missingOption(u"out"_s);
    if (arguments.has(u"blank-rows"_s) && arguments.has(u"chart"_s))
        throw UsageError(u"--blank-rows 和 --chart 只能给出其中一个。"_s);
}

/// The box that the option ticks, with its exam chosen. Throws UsageError.
exporting::AverageBox averageBox(const Session& session, const QString& option)
{
    exporting::AverageBox box;
    if (!session.arguments.has(option))
        return box;
    box = {true, session.arguments.value(option).trimmed(), true};
    session.requireExams({box.exam});
    return box;
}

ScoreExportRequest exportRequest(const Session& session)
{
    const Arguments& arguments = session.arguments;
    ScoreExportRequest request;
    request.exams = chosenExams(session);
    request.subjects = chosenSubjects(session);
    request.classes = chosenClasses(session, library::AllStreams);
    request.infoRow = arguments.has(u"info-row"_s);
    request.classAverage = averageBox(session, u"class-average"_s);
    request.gradeAverage = averageBox(session, u"grade-average"_s);
    request.gradeAverageByItsExam = arguments.has(u"grade-by-own-exam"_s);
    request.blankRows = arguments.value(u"blank-rows"_s, request.blankRows);
    if (arguments.has(u"chart"_s))
        request.layout = exporting::BlockLayout::RankChart;
    request.keepBlocksTogether = arguments.has(u"keep-together"_s);
    if (arguments.has(u"columns"_s))
        request.columns = arguments.list(u"columns"_s);
    return request;
}

QString content(const Session& session, excel::Workbook& book)
{
    session.dialogs.endCommand();
    QJsonObject object = excel::bookJson(book, excel::BookDetail::CellsPagesAndDrawings);
    object.insert(u"Messages"_s, QJsonArray::fromStringList(session.dialogs.messages()));
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)) + u'\n';
}

} // namespace

Exit runExport(Session& session)
{
    const Arguments& arguments = session.arguments;
    const QString format = arguments.oneOf(u"format"_s, {u"paths"_s, u"json"_s});
    checkOptions(arguments, format);
    if (!session.openLibrary())
        return Exit::Error;
    const ScoreExportRequest request = exportRequest(session);
    const QString target = chosenFile(session, u"out"_s);
    const QString note = exporting::averageNote(request);
    if (!note.isEmpty())
        printError(note);
    excel::Applications applications;
    CliProgress progress;
    const exporting::ScoreExportResult result =
        exporting::exportScores(session.scores, request, applications, progress);
    if (result.end != exporting::ExportEnd::Finished)
        return Exit::Error;
    if (!target.isEmpty())
        result.book->SaveAs(target);
    printResult(format == "json"_L1 ? content(session, *result.book) : target + u'\n');
    return session.result();
}

} // namespace cli
