#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "cli/CliProgress.h"
#include "cli/Command.h"
#include "library/CopyGrids.h"
#include "library/LibraryRestore.h"
#include "platform/grid/GridText.h"

namespace cli {

using namespace Qt::StringLiterals;
using library::LibraryCopy;

namespace {

/// The copy that is named by its number in the list, or by its path.
QString chosenCopy(const QString& libraryPath, const QString& named)
{
    bool isNumber = false;
    const qsizetype number = named.toLongLong(&isNumber);
    if (!isNumber)
        return QFileInfo(named).absoluteFilePath();
    const std::vector<LibraryCopy> copies = library::copiesOf(libraryPath);
    if (number < 1 || number > qsizetype(copies.size()))
        throw UsageError(u"没有第 %1 份备份，一共有 %2 份。"_s.arg(number).arg(copies.size()));
    return copies[size_t(number - 1)].path;
}

void print(const QJsonObject& object)
{
    printResult(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)) + u'\n');
}

QJsonArray copiesJson(const std::vector<LibraryCopy>& copies)
{
    QJsonArray array;
    for (const LibraryCopy& copy : copies) {
        QJsonArray occasions;
        for (const library::NotedOccasion& noted : copy.occasions)
            occasions.append(QJsonObject{{u"Time"_s, noted.time.toString(Qt::ISODate)},
                                         {u"Text"_s, noted.occasion.text}});
        array.append(QJsonObject{{u"Number"_s, array.size() + 1},
                                 {u"Time"_s, copy.time.toString(Qt::ISODate)},
                                 {u"Occasions"_s, occasions},
                                 {u"Size"_s, copy.size},
                                 {u"Path"_s, copy.path}});
    }
    return array;
}

QJsonArray linesJson(const std::vector<library::DifferenceLine>& lines)
{
    QJsonArray array;
    for (const library::DifferenceLine& line : lines)
        array.append(QJsonObject{{u"Text"_s, line.text},
                                 {u"Details"_s, QJsonArray::fromStringList(line.details)}});
    return array;
}

Exit printDifferences(Session& session, const QString& format)
{
    const QString copy = chosenCopy(session.libraryPath(), session.arguments.value(u"diff"_s));
    if (!session.openLibrary())
        return Exit::Error;
    CliProgress progress;
    const std::optional<library::CopyDifferences> differences =
        library::compareWithCopy(session.scores.Conn, copy, progress);
    progress.finish();
    std::vector<library::DifferenceLine> lines = library::differenceLines(*differences);
    if (format == "json"_L1) {
        print({{u"Copy"_s, copy}, {u"Differences"_s, linesJson(lines)}});
        return session.result();
    }
    if (lines.empty())
        lines.push_back({library::noDifferenceText(), {}});
    printResult(grid::gridText(library::differencesGrid(lines, library::Details::Shown)));
    return session.result();
}

} // namespace

Exit runBackups(Session& session)
{
    const QString format = session.arguments.oneOf(u"format"_s, {u"tsv"_s, u"json"_s});
    if (session.arguments.has(u"diff"_s))
        return printDifferences(session, format);
    const QString libraryPath = session.libraryPath();
    const std::vector<LibraryCopy> copies = library::copiesOf(libraryPath);
    if (copies.empty() && !QFileInfo(libraryPath).isFile())
        throw runtime::Error(u"%1 不存在，旁边也没有它的备份。"_s.arg(libraryPath));
    if (format == "json"_L1)
        print({{u"LibPath"_s, libraryPath}, {u"Copies"_s, copiesJson(copies)}});
    else
        printResult(grid::gridText(library::copiesGrid(copies)));
    return session.result();
}

Exit runRestore(Session& session)
{
    const QString libraryPath = session.libraryPath();
    const QString copy = chosenCopy(libraryPath, session.arguments.positionals().at(1));
    CliProgress progress;
    const QString former = library::restoreCopy(libraryPath, copy, QDateTime::currentDateTime(),
                                                library::Occasion::restoring(), progress);
    progress.finish();
    printError(u"恢复完毕，成绩库现在是 %1 的内容。"_s.arg(copy));
    if (!former.isEmpty())
        printResult(former + u'\n');
    return session.result();
}

} // namespace cli
