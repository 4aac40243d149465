#include "cli/ChosenOptions.h"

#include <QFileInfo>
#include <QSet>

#include "export/ExportOffers.h"
#include "individual/ChartColors.h"
#include "library/ColumnNames.h"
#include "platform/database/Error.h"
#include "platform/database/FileCheck.h"
#include "platform/database/FileIdentity.h"
#include "platform/database/OpenFile.h"
#include "workbench/Offers.h"

namespace cli {

using namespace Qt::StringLiterals;
using workbench::SortKey;

namespace {

/// Those of `offered` that are wanted, in the order offered. Throws UsageError, naming `kind`, for
/// one that is not offered.
QStringList chosen(const QStringList& offered, const QStringList& wanted, const QString& kind)
{
    QSet<qsizetype> places;
    for (const QString& text : wanted) {
        const qsizetype place = offered.indexOf(text);
        if (place < 0)
            throw UsageError(u"成绩库里没有%1“%2”。"_s.arg(kind, text));
        places.insert(place);
    }
    QStringList found;
    for (qsizetype place = 0; place < offered.size(); ++place) {
        if (places.contains(place))
            found.append(offered[place]);
    }
    return found;
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

} // namespace

QStringList chosenExams(const Session& session)
{
    const QStringList& exams = session.scores.catalogue.ExamList;
    if (!session.arguments.has(u"exam"_s))
        return exams.mid(0, 1);
    const QStringList wanted = session.arguments.list(u"exam"_s);
    session.requireExams(wanted);
    return chosen(exams, wanted, u"考试"_s);
}

QStringList chosenSubjects(const Session& session)
{
    return chosen(session.scores.catalogue.AllColumns, session.arguments.list(u"subjects"_s),
                  u"科目"_s);
}

QStringList chosenCategories(const Session& session)
{
    QStringList offered = workbench::categories(session.scores);
    if (!session.arguments.has(u"categories"_s))
        return offered;
    return chosen(offered, session.arguments.list(u"categories"_s), u"类别代码"_s);
}

QStringList chosenClasses(const Session& session, const QString& stream)
{
    const library::Catalogue& catalogue = session.scores.catalogue;
    const qsizetype index = catalogue.Streams.indexOf(stream);
    if (stream != library::AllStreams && index < 0)
        throw UsageError(u"成绩库里没有科类“%1”。"_s.arg(stream));
    QStringList offered = workbench::classes(catalogue);
    if (session.arguments.has(u"classes"_s))
        return chosen(offered, session.arguments.list(u"classes"_s), u"班级"_s);
    if (stream != library::AllStreams) {
        const QStringList ofStream = workbench::classesOf(catalogue, int(index));
        offered.removeIf([&](const QString& number) { return !ofStream.contains(number); });
    }
    return offered;
}

double chosenClass(const Session& session)
{
    return chosen(exporting::classesToExport(session.scores),
                  {session.arguments.value(u"class"_s).trimmed()}, u"班级"_s)
        .constFirst()
        .toDouble();
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

std::vector<individual::TickedColumn> chosenTicks(const Session& session)
{
    const QStringList& columns = session.scores.catalogue.AllColumns;
    const QStringList names =
        session.arguments.has(u"columns"_s)
            ? chosen(columns, session.arguments.list(u"columns"_s), u"科目或总分"_s)
            : columns.mid(0, 1);
    individual::ChartColors colors(session.scores);
    colors.load();
    std::vector<individual::TickedColumn> ticked;
    for (const QString& name : names)
        ticked.push_back({name, colors.color(int(columns.indexOf(name)) + 1)});
    return ticked;
}

individual::RankKind chosenRanks(const Session& session)
{
    return session.arguments.oneOf(u"rank"_s, {u"年名"_s, u"班名"_s}) == u"年名"_s
               ? individual::RankKind::Grade
               : individual::RankKind::Class;
}

double chosenNumber(const Arguments& arguments, const QString& option)
{
    bool isNumber = false;
    const double number = arguments.value(option).toDouble(&isNumber);
    if (!isNumber)
        throw UsageError(u"选项 --%1 的值必须是数字。"_s.arg(option));
    return number;
}

library::Backup chosenBackup(const Arguments& arguments)
{
    return arguments.has(u"no-backup"_s) ? library::Backup::SwitchedOff : library::Backup::Make;
}

void refuseExisting(const Session& session, const QString& path)
{
    const QFileInfo target(path);
    if (!target.exists() && !target.isSymLink())
        return;
    if (!target.isFile())
        throw runtime::Error(u"%1 不是普通文件，不能覆盖。"_s.arg(path));
    if (database::isSameFile(path, session.scores.Conn.path()))
        throw database::inUseError(path);
    if (!session.arguments.has(u"force"_s))
        throw runtime::Error(u"文件 %1 已存在，没有覆盖。要覆盖它，请加上 --force。"_s.arg(path));
}

void refuseOutput(const Session& session, const QString& path)
{
    refuseExisting(session, path);
    if (database::isLibraryFile(path))
        throw runtime::Error(u"%1 是成绩库，不能覆盖。"_s.arg(path));
}

QString chosenFile(const Session& session, const QString& option)
{
    if (!session.arguments.has(option))
        return {};
    QString path = QFileInfo(session.arguments.value(option)).absoluteFilePath();
    refuseOutput(session, path);
    return path;
}

} // namespace cli
