#include "library/AskedRestore.h"

#include <QFileInfo>

#include "library/LibraryRestore.h"
#include "platform/database/FileIdentity.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/OneLine.h"

namespace library {

using namespace Qt::StringLiterals;

namespace {

const QString CopiedFirst = u"现在的成绩库会先备份，以后可以再恢复回来。"_s;

/// A line with the first names behind it.
QString shortLine(const DifferenceLine& line)
{
    constexpr qsizetype namesShown = 3;
    QStringList shown = line.details.mid(0, namesShown);
    for (QString& name : shown)
        name = runtime::headOnOneLine(name);
    QString names = shown.join(u"；"_s);
    if (line.details.size() > namesShown)
        names += u" 等"_s;
    return line.text + u"（"_s + names + u"）"_s;
}

QString linesOf(const CopyDifferences& differences)
{
    QStringList lines;
    for (const DifferenceLine& line : differenceLines(differences))
        lines.append(shortLine(line));
    return lines.join(u'\n');
}

QString copyText(const LibraryCopy& copy)
{
    const QString occasion = copy.occasionText();
    return timeText(copy.time) + (occasion.isEmpty() ? QString() : u"，"_s + occasion + u" 之前"_s);
}

QString whatChanges(const ScoreLibrary& scoreLibrary,
                    const std::optional<CopyDifferences>& differences)
{
    if (differences)
        return differences->any() ? linesOf(*differences) : noDifferenceText();
    return scoreLibrary.Conn.isOpen() ? u"没有比较这份备份和现在的成绩库。"_s
                                      : u"现在的成绩库没有打开，无法比较。"_s;
}

bool isConfirmed(const QString& question, const QString& button, const QString& title)
{
    constexpr int goOn = 0;
    return runtime::choose({.text = question + u"\n\n"_s + CopiedFirst,
                            .buttons = {button, u"取消"_s},
                            .safe = 1,
                            .title = title})
           == goOn;
}

bool restoreAndTell(ScoreLibrary& scoreLibrary, const QString& libraryPath, const LibraryCopy& copy,
                    const Occasion& occasion, runtime::Progress& progress)
{
    try {
        const QString former =
            restoreLibrary(scoreLibrary, libraryPath, copy.path, occasion, progress);
        const QString kept =
            former.isEmpty() ? QString()
                             : u"\n恢复前的成绩库已备份为 %1。"_s.arg(QFileInfo(former).fileName());
        if (!scoreLibrary.Conn.isOpen()) {
            runtime::warn(u"成绩库已换成 %1 的备份，但是没有能打开。"_s.arg(timeText(copy.time))
                          + kept);
            return false;
        }
        runtime::MsgBox(u"恢复完毕，成绩库现在是 %1 的备份的内容。"_s.arg(timeText(copy.time))
                        + kept);
        return true;
    } catch (const runtime::Error& error) {
        runtime::warn(error.description());
        return false;
    }
}

QString broughtText(const CopyDifferences& ofImport, Occasion::Kind kind)
{
    if (!ofImport.any())
        return u"这次导入的内容已经不在成绩库里。"_s;
    const QString heading = kind == Occasion::Kind::ExamImport
                                ? u"这次导入带来的，以及导入以后对这次考试和名单的改动：\n"_s
                                : u"这次导入带来的，以及导入以后增加的学生：\n"_s;
    return heading + linesOf(ofImport);
}

/// What was done since then, as far as it left a copy.
QString laterText(const QStringList& later)
{
    constexpr qsizetype mostShown = 5;
    if (later.isEmpty())
        return {};
    QStringList shown = later.mid(0, mostShown);
    for (QString& text : shown)
        text = runtime::headOnOneLine(text);
    const QString more = later.size() > mostShown ? u" 等 %1 项"_s.arg(later.size()) : QString();
    return u"\n\n导入以后，下列操作之前也留过备份："_s + shown.join(u"；"_s) + more + u"。"_s;
}

bool canCompare(const ScoreLibrary& scoreLibrary, const QString& libraryPath)
{
    return scoreLibrary.Conn.isOpen()
           && database::isSameFile(scoreLibrary.Conn.path(), libraryPath);
}

QString undoQuestion(const CopiedImport& latest, const CopyDifferences& differences)
{
    const Occasion& import = latest.import.occasion;
    const SplitDifferences split = splitByImport(differences, import);
    const QString others = split.others.any()
                               ? u"除此以外，还有下列改动也会一起撤消：\n"_s + linesOf(split.others)
                               : u"成绩库的其他内容没有改动。"_s;
    return u"撤消 %1 的“%2”？成绩库恢复为那次导入之前的备份。\n\n"_s.arg(
               timeText(latest.import.time), import.text)
           + broughtText(split.ofImport, import.kind) + u"\n\n"_s + others
           + laterText(latest.later);
}

struct ComparedImport
{
    CopiedImport import;
    /// None for one of which the library no longer has all that it brought.
    CopyDifferences differences;
};

/// Whether something that the import brings is in the library and not in the copy.
bool broughtAnything(const ComparedImport& compared)
{
    const Occasion& import = compared.import.import.occasion;
    const CopyDifferences brought = splitByImport(compared.differences, import).ofImport;
    // Students come by other ways, too.
    return import.kind == Occasion::Kind::ExamImport
               ? !brought.examsAdded.isEmpty() || !brought.examsChanged.empty()
               : brought.any();
}

/// The latest that brought something or may be taken back; without any, the latest. Those passed
/// over were cancelled or failed. Nothing if they were not compared.
std::optional<ComparedImport> importToUndo(ScoreLibrary& scoreLibrary,
                                           const std::vector<CopiedImport>& imports,
                                           runtime::Progress& progress)
{
    std::optional<ComparedImport> latest;
    for (const CopiedImport& import : imports) {
        if (import.presence != Presence::InLibrary)
            return ComparedImport{import, {}};
        const std::optional<CopyDifferences> differences =
            differencesFrom(scoreLibrary, scoreLibrary.Conn.path(), import.copy.path, progress);
        if (!differences)
            return std::nullopt;
        const ComparedImport compared{import, *differences};
        if (broughtAnything(compared))
            return compared;
        if (!latest)
            latest = compared;
    }
    return latest;
}

/// The latest first, also where a restore was broken off.
std::vector<CopiedImport> settledImports(const QString& libraryPath)
{
    const QDateTime now = QDateTime::currentDateTime();
    std::vector<CopiedImport> imports = copiedImports(libraryPath, now);
    const bool isSettled = imports.empty() || imports.front().presence == Presence::InLibrary;
    return !isSettled && equalsNewestCopy(libraryPath)
               ? copiedImports(libraryPath, now, NewestCopy::EqualsLibrary)
               : imports;
}

QString whyNotUndone(const ComparedImport& latest)
{
    const NotedOccasion& import = latest.import.import;
    const auto sentence = [&](const QString& text) -> QString {
        return u"没有可以撤消的导入："_s + text.arg(timeText(import.time), import.occasion.text);
    };
    switch (latest.import.presence) {
    case Presence::TakenBack:
        return sentence(u"%1 的“%2”之前的备份已经恢复过。要回到别的时候，请用“恢复备份…”。"_s);
    case Presence::Unknown:
        return sentence(u"%1 的“%2”以后恢复过备份，不能确定那次导入还在不在成绩库里。"
                        "要回到别的时候，请用“恢复备份…”。"_s);
    case Presence::InLibrary:
        break;
    }
    return latest.differences.any() ? QString()
                                    : sentence(u"成绩库现在和 %1 的“%2”之前的备份内容相同。"_s);
}

} // namespace

std::optional<CopyDifferences> differencesFrom(ScoreLibrary& scoreLibrary,
                                               const QString& libraryPath, const QString& copy,
                                               runtime::Progress& progress)
{
    if (!canCompare(scoreLibrary, libraryPath))
        return std::nullopt;
    std::optional<CopyDifferences> differences;
    try {
        differences = compareWithCopy(scoreLibrary.Conn, copy, progress);
        progress.finish();
    } catch (const runtime::Error& error) {
        progress.finish();
        runtime::warn(error.description());
    }
    return differences;
}

bool restoreAsked(ScoreLibrary& scoreLibrary, const QString& libraryPath, const LibraryCopy& copy,
                  runtime::Progress& progress)
{
    const std::optional<CopyDifferences> differences =
        differencesFrom(scoreLibrary, libraryPath, copy.path, progress);
    if (progress.cancelled())
        return false;
    // Why it could not be compared has been told.
    if (!differences && canCompare(scoreLibrary, libraryPath) && !isSoundCopy(copy.path, progress))
        return false;
    const QString question = u"把成绩库恢复为这份备份？\n"_s + copyText(copy) + u"\n\n"_s
                             + whatChanges(scoreLibrary, differences);
    return isConfirmed(question, u"恢复"_s, u"恢复备份"_s)
           && restoreAndTell(scoreLibrary, libraryPath, copy, Occasion::restoring(), progress);
}

bool undoLastImport(ScoreLibrary& scoreLibrary, runtime::Progress& progress)
{
    const QString library = scoreLibrary.Conn.path();
    const std::vector<CopiedImport> imports = settledImports(library);
    if (imports.empty()) {
        runtime::MsgBox(u"没有可以撤消的导入：成绩库旁边没有导入前的备份。"_s);
        return false;
    }
    const std::optional<ComparedImport> latest = importToUndo(scoreLibrary, imports, progress);
    if (!latest)
        return false;
    if (const QString why = whyNotUndone(*latest); !why.isEmpty()) {
        runtime::MsgBox(why);
        return false;
    }
    return isConfirmed(undoQuestion(latest->import, latest->differences), u"撤消导入"_s,
                       u"撤消上次导入"_s)
           && restoreAndTell(scoreLibrary, library, latest->import.copy,
                             Occasion::undoing(latest->import.import.occasion), progress);
}

} // namespace library
