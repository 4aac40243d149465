#include "library/LibraryBackup.h"

#include <algorithm>
#include <utility>

#include <QFileInfo>

#include "library/CopyKeeping.h"
#include "library/LibraryCopies.h"
#include "platform/database/FileIdentity.h"
#include "platform/database/LockedBytes.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Error.h"

namespace library {

using namespace Qt::StringLiterals;

namespace {

/// Removes what is not kept; not the copy just made, even if the clock was put back since the
/// others.
void removeOldCopies(const QString& libraryPath, const QString& justMade,
                     const CopyRequest& request)
{
    std::vector<LibraryCopy> copies = datedCopies(libraryPath);
    std::stable_partition(copies.begin(), copies.end(), [&](const LibraryCopy& copy) {
        return !database::isSameFile(copy.path, justMade);
    });
    const std::vector<CopiedImport> imports = copiedImports(libraryPath, request.now);
    std::vector<DatedSize> sizes;
    sizes.reserve(copies.size());
    for (const LibraryCopy& copy : copies)
        sizes.push_back(
            {copy.time, copy.size, !imports.empty() && copy.path == imports.front().copy.path});
    const qint64 room = roomForCopies(freeBytesBeside(libraryPath));
    for (const size_t place : copiesToRemove(sizes, request.now, room)) {
        if (!database::isSameFile(copies[place].path, request.spared))
            removeCopy(libraryPath, copies[place].path);
    }
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

/// A copy under a dated name, made by `fill`.
template <class Fill>
QString newCopy(const QString& libraryPath, const CopyRequest& request, Fill&& fill)
{
    runtime::UnfinishedFile unfinished(libraryPath);
    fill(unfinished);
    QString copy = takeDatedName(unfinished, libraryPath, request.now);
    removeOldCopies(libraryPath, copy, request);
    return copy;
}

/// The newest copy if it equals the library; otherwise empty.
QString equalCopy(const database::LockedBytes& bytes, const QString& libraryPath)
{
    const std::vector<LibraryCopy> copies = datedCopies(libraryPath);
    return !copies.empty() && bytes.isSameAs(copies.back().path) ? copies.back().path : QString();
}

/// The newest copy if it equals the library, otherwise one that is made now.
QString currentCopy(const QString& libraryPath, const CopyRequest& request,
                    runtime::Progress& progress)
{
    const database::LockedBytes bytes(libraryPath);
    if (QString copy = equalCopy(bytes, libraryPath); !copy.isEmpty())
        return copy;
    checkRoomForCopy(bytes.size(), freeBytesBeside(libraryPath));
    return newCopy(libraryPath, request, [&](runtime::UnfinishedFile& unfinished) {
        copyBytes(bytes, unfinished, progress);
    });
}

/// What a broken write left beside a damaged file may be what is to be saved of it.
void keepJournal(const QString& path, const QString& copy)
{
    const QString journal = path + u"-journal"_s;
    if (!QFileInfo(journal).isFile())
        return;
    runtime::UnfinishedFile unfinished(copy);
    unfinished.writeAllOf(journal);
    unfinished.replace(journalOfCopy(copy), copy);
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
    return backUpLibrary(libraryPath, {now, occasion}, progress);
}

QString backUpLibrary(const QString& libraryPath, const CopyRequest& request,
                      runtime::Progress& progress)
{
    QString copy = currentCopy(libraryPath, request, progress);
    noteOccasion(copy, {request.now, request.occasion});
    return copy;
}

QString backUpDamaged(const QString& path, const CopyRequest& request)
{
    checkRoomForCopy(QFileInfo(path).size(), freeBytesBeside(path));
    // The engine does not read it.
    QString copy = newCopy(
        path, request, [&](runtime::UnfinishedFile& unfinished) { unfinished.writeAllOf(path); });
    keepJournal(path, copy);
    noteOccasion(copy, {request.now, request.occasion});
    return copy;
}

bool equalsNewestCopy(const QString& libraryPath)
{
    try {
        return !equalCopy(database::LockedBytes(libraryPath), libraryPath).isEmpty();
    } catch (const runtime::Error&) {
        return false;
    }
}

bool hasRoomForBackup(const ScoreLibrary& scoreLibrary, Backup backup)
{
    if (backup == Backup::SwitchedOff)
        return true;
    try {
        const QString path = scoreLibrary.Conn.path();
        const qint64 size = QFileInfo(path).size();
        const qint64 freeBytes = freeBytesBeside(path);
        // All bytes are compared only where there is no room.
        if (size > freeBytes && equalCopy(database::LockedBytes(path), path).isEmpty())
            checkRoomForCopy(size, freeBytes);
    } catch (const runtime::Error& error) {
        runtime::warn(error.description());
        return false;
    }
    return true;
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
