#include "library/LibraryCopies.h"

#include <algorithm>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QRegularExpression>

#include "platform/database/FileIdentity.h"
#include "platform/database/OpenFile.h"

namespace library {

using namespace Qt::StringLiterals;

namespace {

QRegularExpression namesBeside(const QFileInfo& library, const QString& ending)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(
        QRegularExpression::escape(library.fileName()) + ending));
}

/// The files beside the library whose names match, with the times that `timeOf` reads of the match.
template <class TimeOf>
std::vector<LibraryCopy> copiesNamed(const QFileInfo& library, const QRegularExpression& names,
                                     TimeOf&& timeOf)
{
    std::vector<LibraryCopy> found;
    for (const QFileInfo& file : library.dir().entryInfoList(QDir::Files)) {
        const QRegularExpressionMatch match = names.match(file.fileName());
        if (!match.hasMatch())
            continue;
        // No copy of ours is named to a time that there is not.
        const QDateTime time = timeOf(match, file);
        if (time.isValid())
            found.push_back({file.filePath(), time, file.size(), notedOccasions(file.filePath())});
    }
    return found;
}

/// Copies are named to the second, older ones to the minute.
QDateTime datedTime(const QRegularExpressionMatch& match, const QFileInfo&)
{
    const QString seconds = match.hasCaptured(2) ? match.captured(2) : u"00"_s;
    return QDateTime::fromString(match.captured(1) + seconds, u"yyyy-MM-dd_HHmmss"_s);
}

/// Those of compaction are named to the day.
QDateTime compactedTime(const QRegularExpressionMatch& match, const QFileInfo& file)
{
    const QDate day = QDate::fromString(match.captured(1), Qt::ISODate);
    return file.lastModified().date() == day ? file.lastModified() : day.startOfDay();
}

std::vector<LibraryCopy> compactedCopies(const QFileInfo& library)
{
    const QRegularExpression names = namesBeside(library, u"_(\\d{4}-\\d{2}-\\d{2})_\\.bak"_s);
    std::vector<LibraryCopy> copies = copiesNamed(library, names, compactedTime);
    for (LibraryCopy& copy : copies)
        copy.occasions = {{copy.time, {u"压缩数据库"_s}}};
    return copies;
}

QFileInfo realFile(const QString& libraryPath)
{
    return QFileInfo(QFileInfo(database::realPath(libraryPath)).absoluteFilePath());
}

QStringList textsSince(const QDateTime& time, const QDateTime& now,
                       const std::vector<NotedOccasion>& all)
{
    QStringList texts;
    for (const NotedOccasion& noted : all) {
        if (noted.time > time && noted.time <= now)
            texts.prepend(noted.occasion.text);
    }
    texts.removeDuplicates();
    return texts;
}

/// Where names run ahead of the clock the first note tells the time; it may be of a later use, as
/// not all are kept.
void takeNotedTime(LibraryCopy& copy)
{
    if (!copy.occasions.empty() && copy.occasions.front().time.isValid())
        copy.time = std::min(copy.time, copy.occasions.front().time);
}

std::vector<NotedRestore> allRestores(const std::vector<LibraryCopy>& copies)
{
    std::vector<NotedRestore> all;
    for (const LibraryCopy& copy : copies) {
        const std::vector<NotedRestore> restores = notedRestores(copy.path);
        all.insert(all.end(), restores.begin(), restores.end());
    }
    return all;
}

/// Earlier versions did not note what they restored, nor does one that is broken off too early.
bool isRestoreOfUnknown(const NotedOccasion& noted, const std::vector<NotedRestore>& restores)
{
    return noted.occasion.kind == Occasion::Kind::Restore
           && std::none_of(restores.begin(), restores.end(),
                           [&](const auto& restore) { return restore.time == noted.time; });
}

HistoryStep stepOf(size_t copy, const NotedOccasion& noted)
{
    return {noted.occasion.isImport() ? HistoryStep::Kind::Imported : HistoryStep::Kind::Copied,
            noted.time, copy};
}

HistoryStep stepOf(const NotedRestore& restore)
{
    return {restore.isDone ? HistoryStep::Kind::Restored : HistoryStep::Kind::MaybeRestored,
            restore.time, 0, restore.restored};
}

std::vector<HistoryStep> historyOf(const std::vector<LibraryCopy>& copies, const QDateTime& now)
{
    const std::vector<NotedRestore> restores = allRestores(copies);
    std::vector<HistoryStep> steps;
    for (size_t place = 0; place < copies.size(); ++place) {
        for (const NotedOccasion& noted : copies[place].occasions) {
            steps.push_back(stepOf(place, noted));
            if (isRestoreOfUnknown(noted, restores))
                steps.push_back({HistoryStep::Kind::Restored, noted.time});
        }
    }
    // Behind what is noted for the same time.
    for (const NotedRestore& restore : restores)
        steps.push_back(stepOf(restore));
    sortSteps(steps, now);
    return steps;
}

/// The latest first; behind all others those of a time still to come.
std::vector<CopiedImport> importsOf(const std::vector<LibraryCopy>& copies, const QDateTime& now)
{
    std::vector<CopiedImport> imports;
    std::vector<NotedOccasion> all;
    for (const LibraryCopy& copy : copies) {
        for (const NotedOccasion& noted : copy.occasions) {
            all.push_back(noted);
            if (noted.occasion.isImport())
                imports.insert(imports.begin(), {copy, noted});
        }
    }
    for (CopiedImport& import : imports)
        import.later = textsSince(import.import.time, now, all);
    std::stable_sort(imports.begin(), imports.end(), [&](const auto& a, const auto& b) {
        const bool isAhead = a.import.time > now;
        return isAhead == (b.import.time > now) ? a.import.time > b.import.time : !isAhead;
    });
    return imports;
}

} // namespace

QString LibraryCopy::occasionText() const
{
    QStringList texts;
    for (const NotedOccasion& noted : occasions)
        texts.prepend(noted.occasion.text);
    texts.removeDuplicates();
    return texts.join(u"；"_s);
}

QString sizeText(qint64 bytes)
{
    return QLocale::c()
        .formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat)
        .replace(u'k', u'K');
}

QString timeText(const QDateTime& time)
{
    return time.toString(u"yyyy-MM-dd HH:mm:ss"_s);
}

std::vector<LibraryCopy> datedCopies(const QString& libraryPath)
{
    const QFileInfo library = realFile(libraryPath);
    const QRegularExpression names =
        namesBeside(library, u"_(\\d{4}-\\d{2}-\\d{2}_\\d{4})(\\d{2})?\\.bak"_s);
    std::vector<LibraryCopy> copies = copiesNamed(library, names, datedTime);
    std::stable_sort(copies.begin(), copies.end(),
                     [](const auto& a, const auto& b) { return a.time < b.time; });
    std::for_each(copies.begin(), copies.end(), takeNotedTime);
    return copies;
}

std::vector<LibraryCopy> copiesOf(const QString& libraryPath)
{
    std::vector<LibraryCopy> all = datedCopies(libraryPath);
    std::reverse(all.begin(), all.end());
    for (const LibraryCopy& copy : compactedCopies(realFile(libraryPath)))
        all.push_back(copy);
    std::stable_sort(all.begin(), all.end(),
                     [](const auto& a, const auto& b) { return a.time > b.time; });
    return all;
}

QDateTime timeOfState(const QString& libraryPath, const QString& copy)
{
    const std::vector<LibraryCopy> copies = copiesOf(libraryPath);
    const auto found = std::find_if(copies.begin(), copies.end(), [&](const LibraryCopy& each) {
        return database::isSameFile(each.path, copy);
    });
    // Midnight stands for a day of which the time is not known.
    if (found == copies.end() || found->time == found->time.date().startOfDay())
        return {};
    const bool isNoted = !found->occasions.empty() && found->occasions.front().time.isValid();
    return isNoted ? found->occasions.front().time : found->time;
}

bool removeCopy(const QString& libraryPath, const QString& copy)
{
    const std::vector<LibraryCopy> copies = copiesOf(libraryPath);
    const auto found = std::find_if(copies.begin(), copies.end(), [&](const LibraryCopy& each) {
        return database::isSamePlace(each.path, copy);
    });
    if (found == copies.end())
        return false;
    passRestoresOn(libraryPath, found->path);
    if (!QFile::remove(found->path))
        return false;
    for (const QString& beside : {occasionFile(found->path), journalOfCopy(found->path)})
        QFile::remove(beside);
    return true;
}

void renameInNotes(const QString& libraryPath, const QString& exam, const QString& name)
{
    for (const LibraryCopy& copy : datedCopies(libraryPath))
        renameNotedExam(copy.path, exam, name);
}

void passRestoresOn(const QString& libraryPath, const QString& copy)
{
    const std::vector<NotedRestore> restores = notedRestores(copy);
    if (restores.empty())
        return;
    const std::vector<LibraryCopy> copies = datedCopies(libraryPath);
    const auto heir = std::find_if(copies.rbegin(), copies.rend(), [&](const LibraryCopy& each) {
        return !database::isSamePlace(each.path, copy);
    });
    if (heir != copies.rend())
        noteRestores(heir->path, restores);
}

void noteRestore(const QString& libraryPath, const QString& further, const NotedRestore& restore)
{
    const std::vector<LibraryCopy> copies = datedCopies(libraryPath);
    if (!importsOf(copies, restore.time).empty())
        noteRestores(further.isEmpty() ? copies.back().path : further, {restore});
}

std::vector<CopiedImport> copiedImports(const QString& libraryPath, const QDateTime& now,
                                        NewestCopy newest)
{
    const std::vector<LibraryCopy> copies = datedCopies(libraryPath);
    std::vector<CopiedImport> imports = importsOf(copies, now);
    const bool equalsNewest = newest == NewestCopy::EqualsLibrary && !copies.empty();
    std::vector<Presence> present =
        importsAfter(historyOf(copies, now), now, {equalsNewest, copies.size() - 1});
    // The history runs the other way.
    std::reverse(present.begin(), present.end());
    for (size_t place = 0; place < imports.size(); ++place) {
        const bool isUndone = imports[place].import.isUndone;
        imports[place].presence = isUndone ? Presence::TakenBack : present[place];
    }
    return imports;
}

} // namespace library
