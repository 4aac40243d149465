#include "cli/ChosenRows.h"
#include "cli/Command.h"
#include "cli/GridOutput.h"
#include "platform/database/Error.h"
#include "workbench/Browse.h"
#include "workbench/Offers.h"

namespace cli {

using namespace Qt::StringLiterals;
using workbench::SortKey;

namespace {

/// Class numbers of --classes, or else those of the stream. Throws UsageError.
QStringList chosenClasses(const Session& session, const QString& stream)
{
    const library::Catalogue& catalogue = session.scores.catalogue;
    const qsizetype index = catalogue.Streams.indexOf(stream);
    if (stream != workbench::AllStreams && index < 0)
        throw UsageError(u"成绩库里没有科类“%1”。"_s.arg(stream));
    QStringList offered = workbench::classes(catalogue);
    if (session.arguments.has(u"classes"_s))
        return chosen(offered, session.arguments.list(u"classes"_s), u"班级"_s);
    if (stream != workbench::AllStreams) {
        const QStringList ofStream = workbench::classesOf(catalogue, int(index));
        offered.removeIf([&](const QString& number) { return !ofStream.contains(number); });
    }
    return offered;
}

/// A sort key from a text such as "总分:desc". The workbench offers no class and number, but a
/// column can be typed. Throws UsageError.
SortKey sortKey(const database::TableColumns& columns, const QString& text)
{
    const qsizetype colon = text.lastIndexOf(u':');
    const QString word = colon < 0 ? u"asc"_s : text.mid(colon + 1).toLower();
    if (word != "asc"_L1 && word != "desc"_L1)
        throw UsageError(u"排序方式只能是 asc 或 desc：%1"_s.arg(text));
    const QString column = colon < 0 ? text : text.left(colon);
    if (columns.find(column) < 0)
        throw UsageError(database::noSuchColumn(column));
    return {column, word == "desc"_L1 ? workbench::SortDirection::Descending
                                      : workbench::SortDirection::Ascending};
}

std::vector<SortKey> chosenOrder(const Session& session)
{
    const QStringList texts = session.arguments.list(u"order"_s);
    if (texts.size() > workbench::MostSortKeys)
        throw UsageError(u"最多按 %1 项排序。"_s.arg(workbench::MostSortKeys));
    std::vector<SortKey> order;
    for (const QString& text : texts)
        order.push_back(sortKey(session.scores.Conn.columns(u"成绩表"_s), text));
    return order;
}

workbench::BrowseRequest browseRequest(const Session& session)
{
    const Arguments& arguments = session.arguments;
    workbench::RowChoice rows;
    workbench::BrowseRequest request;
    rows.exams = request.exams = chosenExams(session);
    rows.categories = chosenCategories(session);
    request.stream = arguments.value(u"stream"_s, workbench::AllStreams);
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
    const workbench::BrowseRequest request = browseRequest(session);
    grid::FlexGrid grid;
    const bool filled = workbench::browse(session.scores, request, grid);
    // A refusal leaves nothing to show as text; the object tells its message.
    if (filled || format == "json"_L1)
        printGrid(session, grid, request.sql, format);
    return session.result();
}

} // namespace cli
