#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include "cli/ChosenOptions.h"
#include "cli/ChosenStudent.h"
#include "cli/Command.h"
#include "individual/StudentReport.h"
#include "individual/paint/ChartFiles.h"
#include "platform/grid/GridText.h"

namespace cli {

using namespace Qt::StringLiterals;
using individual::RankChart;

namespace {

QSizeF chosenSize(const Arguments& arguments)
{
    static const QRegularExpression form(u"^(\\d{1,6})[xX](\\d{1,6})$"_s);
    constexpr int largest = 100'000;
    const auto match = form.match(arguments.value(u"size"_s, u"9000x4000"_s));
    const QSizeF size(match.captured(1).toInt(), match.captured(2).toInt());
    if (size.isEmpty() || size.width() > largest || size.height() > largest)
        throw UsageError(
            u"选项 --size 的值是宽x高，例如 9000x4000，各在 1 到 %1 之间。"_s.arg(largest));
    return size;
}

void checkFiles(const Arguments& arguments)
{
    if (arguments.has(u"picture"_s) && !individual::isChartFile(arguments.value(u"picture"_s)))
        throw UsageError(u"选项 --picture 的文件只能是 .png、.bmp 或 .pdf。"_s);
    if (arguments.has(u"with-chart"_s) && !arguments.has(u"out"_s))
        throw missingOption(u"out"_s);
    if (arguments.has(u"out"_s) && arguments.value(u"out"_s).isEmpty())
        throw missingOption(u"out"_s);
}

QJsonArray lineJson(const RankChart::Line& line)
{
    return {line.x1, line.y1, line.x2, line.y2};
}

/// An array of what `object` makes of each.
template <class Items, class Object> QJsonArray arrayOf(const Items& items, const Object& object)
{
    QJsonArray array;
    for (const auto& item : items)
        array.append(object(item));
    return array;
}

QJsonObject segmentJson(const RankChart::Segment& segment)
{
    return {{u"column"_s, segment.column}, {u"x1"_s, segment.line.x1},
            {u"y1"_s, segment.line.y1},    {u"x2"_s, segment.line.x2},
            {u"y2"_s, segment.line.y2},    {u"colour"_s, segment.colour}};
}

QJsonObject pointJson(const RankChart::Point& point)
{
    return {{u"column"_s, point.column},
            {u"x"_s, point.x},
            {u"y"_s, point.y},
            {u"colour"_s, point.colour}};
}

QJsonObject rankLabelJson(const RankChart::RankLabel& label)
{
    return {{u"text"_s, label.text},
            {u"tip"_s, label.tip},
            {u"x"_s, label.x},
            {u"bottom"_s, label.bottom}};
}

QJsonObject examLabelJson(const RankChart::ExamLabel& label)
{
    return {{u"text"_s, label.text}, {u"x"_s, label.x}};
}

QJsonObject chartJson(const RankChart& chart)
{
    return {{u"Width"_s, chart.width},
            {u"Height"_s, chart.height},
            {u"Frame"_s, lineJson(chart.frame)},
            {u"Dotted"_s, arrayOf(chart.dotted, lineJson)},
            {u"Segments"_s, arrayOf(chart.segments, segmentJson)},
            {u"Points"_s, arrayOf(chart.points, pointJson)},
            {u"RankLabels"_s, arrayOf(chart.rankLabels, rankLabelJson)},
            {u"ExamLabels"_s, arrayOf(chart.examLabels, examLabelJson)},
            {u"Note"_s, chart.note.value_or(QString())},
            {u"Name"_s, chart.name}};
}

void saveBook(const Session& session, const individual::StudentExams& student,
              const RankChart& chart, const QString& path)
{
    excel::Applications applications;
    const auto content = session.arguments.has(u"with-chart"_s)
                             ? individual::ReportContent::ExamsAndChart
                             : individual::ReportContent::Exams;
    const auto savePic = [&](const QString& picture) {
        individual::saveChart(chart, picture);
        return true;
    };
    excel::Application& application = individual::wydc(
        applications, session.scores.paths(), student.MSFlexGrid1, chart.name, content, savePic);
    application.Workbooks().Item(1).SaveAs(path);
}

void print(const Session& session, const QString& title, const individual::StudentExams& student,
           const RankChart& chart)
{
    session.dialogs.endCommand();
    const QJsonObject object{
        {u"Title"_s, title},
        {u"Grid"_s, grid::gridJson(student.MSFlexGrid1)},
        {u"Chart"_s, chartJson(chart)},
        {u"Messages"_s, QJsonArray::fromStringList(session.dialogs.messages())}};
    printResult(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)) + u'\n');
}

} // namespace

Exit runStudent(Session& session)
{
    const Arguments& arguments = session.arguments;
    const QString format = arguments.oneOf(u"format"_s, {u"tsv"_s, u"json"_s});
    const individual::RankKind kind = chosenRanks(session);
    const QSizeF size = chosenSize(arguments);
    checkStudent(arguments);
    checkFiles(arguments);
    if (!session.openLibrary())
        return Exit::Error;
    const qint64 id = chosenStudent(session);
    const std::vector<individual::TickedColumn> ticked = chosenTicks(session);
    const QString picture = chosenFile(session, u"picture"_s);
    const QString book = chosenFile(session, u"out"_s);

    if (session.scores.catalogue.ExamList.isEmpty())
        runtime::warn(individual::noExams());
    const QString title = individual::studentTitle(session.scores, id);
    individual::StudentExams student(session.scores);
    student.ShowGeRenCJ(id);
    individual::RankChartRequest request =
        individual::readRanks(session.scores, student, ticked, kind);
    request.width = size.width();
    request.height = size.height();
    const RankChart chart = individual::rankChart(request);
    if (!picture.isEmpty())
        individual::saveChart(chart, picture);
    if (!book.isEmpty())
        saveBook(session, student, chart, book);
    if (format == "json"_L1)
        print(session, title, student, chart);
    else
        printResult(grid::gridText(student.MSFlexGrid1));
    return session.result();
}

} // namespace cli
