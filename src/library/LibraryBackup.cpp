#include "library/LibraryBackup.h"

#include <algorithm>
#include <utility>

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include "platform/database/LockedBytes.h"
#include "platform/runtime/Error.h"

namespace library {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype copiesKept = 5;
/// A bar of progress counts in these, so that its numbers stay small.
constexpr qint64 kibibyte = 1024;

/// Copies are named to the second, older ones to the minute.
QRegularExpression copyNames(const QFileInfo& library)
{
    return QRegularExpression(
        QRegularExpression::anchoredPattern(QRegularExpression::escape(library.fileName())
                                            + u"_(\\d{4}-\\d{2}-\\d{2}_\\d{4})(\\d{2})?\\.bak"_s));
}

/// The dated copies that stand beside the library, the oldest first.
QStringList datedCopies(const QFileInfo& library)
{
    const QRegularExpression names = copyNames(library);
    QStringList copies = library.dir().entryList(QDir::Files).filter(names);
    const auto time = [&](const QString& name) -> QString {
        const QRegularExpressionMatch match = names.match(name);
        return match.captured(1) + (match.hasCaptured(2) ? match.captured(2) : u"00"_s);
    };
    std::sort(copies.begin(), copies.end(),
              [&](const QString& a, const QString& b) { return time(a) < time(b); });
    return copies;
}

/// Removes the oldest copies. The one just made stays, even if the clock was put back since the
/// others.
void removeOldCopies(const QFileInfo& library, const QString& justMade)
{
    QStringList copies = datedCopies(library);
    copies.removeOne(QFileInfo(justMade).fileName());
    while (copies.size() > copiesKept - 1)
        removeCopy(library.dir().filePath(copies.takeFirst()));
}

void copyBytes(const database::LockedBytes& bytes, runtime::UnfinishedFile& copy,
               runtime::Progress& progress)
{
    const auto tell = [&](qint64 done) {
        // What is copied at once needs no bar.
        if (done > 0)
            progress.report(u"备份成绩库..."_s, int(done / kibibyte), int(bytes.size() / kibibyte));
        return !progress.cancelled();
    };
    if (!bytes.copyTo(copy, tell))
        throw runtime::Error(u"备份没有做完就取消了。"_s);
}

/// The name of a copy of this moment, or of the first second after it that has none.
QString takeDatedName(runtime::UnfinishedFile& file, const QString& libraryPath, QDateTime time)
{
    for (;; time = time.addSecs(1)) {
        QString name = libraryPath + time.toString(u"'_'yyyy-MM-dd'_'HHmmss'.bak'"_s);
        if (file.takeName(name, libraryPath))
            return name;
    }
}

/// The newest copy if it equals the library, otherwise one that is made now.
QString currentCopy(const QString& libraryPath, const QDateTime& now, runtime::Progress& progress)
{
    const QFileInfo library(libraryPath);
    const database::LockedBytes bytes(libraryPath);
    const QStringList copies = datedCopies(library);
    if (!copies.isEmpty() && bytes.isSameAs(library.dir().filePath(copies.last())))
        return library.dir().filePath(copies.last());
    runtime::UnfinishedFile unfinished(libraryPath);
    copyBytes(bytes, unfinished, progress);
    QString copy = takeDatedName(unfinished, libraryPath, now);
    removeOldCopies(library, copy);
    return copy;
}

} // namespace

void copyLibrary(const QString& libraryPath, const QString& copy, runtime::Progress& progress)
{
    runtime::UnfinishedFile unfinished(copy);
    copyBytes(database::LockedBytes(libraryPath), unfinished, progress);
    database::removeLogs(copy);
    unfinished.replace(copy, libraryPath);
}

QString backUpLibrary(const QString& libraryPath, const QDateTime& now, const Occasion& occasion,
                      runtime::Progress& progress)
{
    QString copy = currentCopy(libraryPath, now, progress);
    noteOccasion(copy, {now, occasion});
    return copy;
}

BackupBeforeWrite::BackupBeforeWrite(ScoreLibrary& scoreLibrary, runtime::Progress& progress,
                                     Backup backup, Occasion occasion)
    : m_connection(scoreLibrary.Conn)
{
    if (backup == Backup::SwitchedOff)
        return;
    m_connection.setBeforeFirstWrite([this, &progress, occasion = std::move(occasion)] {
        try {
            backUpLibrary(m_connection.path(), QDateTime::currentDateTime(), occasion, progress);
        } catch (const runtime::Error& error) {
            throw runtime::PhaseError(u"备份没有成功，什么也没有写入："_s + error.description());
        }
    });
}

BackupBeforeWrite::~BackupBeforeWrite()
{
    m_connection.setBeforeFirstWrite({});
}

} // namespace library
