#include "library/LibraryRestore.h"

#include <memory>

#include <QFileInfo>

#include "library/CopyKeeping.h"
#include "library/LibraryCopies.h"
#include "library/LibraryShape.h"
#include "platform/database/Compact.h"
#include "platform/database/Error.h"
#include "platform/database/FileIdentity.h"
#include "platform/database/LockedBytes.h"
#include "platform/database/UntouchedFile.h"

namespace library {

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void refuseCopy(const QString& why)
{
    throw runtime::Error(u"这份备份不能用，成绩库没有改变："_s + why);
}

void stopIfCancelled(const runtime::Progress& progress)
{
    if (progress.cancelled())
        throw runtime::Error(u"恢复没有做完就取消了，成绩库没有改变。"_s);
}

/// What is read of a copy that is of use.
std::unique_ptr<database::UntouchedFile> soundCopy(const QString& copy, runtime::Progress& progress)
{
    progress.report(u"检查备份..."_s, 0, 0);
    stopIfCancelled(progress);
    if (!QFileInfo(copy).isFile())
        refuseCopy(u"文件 %1 不存在。"_s.arg(copy));
    try {
        auto content = std::make_unique<database::UntouchedFile>(copy);
        database::Connection opened;
        content->open(opened, libraryShape());
        database::checkPages(content->path());
        return content;
    } catch (const database::Error& error) {
        refuseCopy(error.failure() == database::Failure::Damaged ? u"文件 %1 已经损坏。"_s.arg(copy)
                                                                 : error.description());
    }
}

void copyTo(runtime::UnfinishedFile& unfinished, const QString& copy, runtime::Progress& progress)
{
    {
        const database::LockedBytes bytes(copy);
        bytes.copyTo(unfinished, [&](qint64 done) {
            progress.report(u"恢复备份..."_s, int(done / kibibyte), int(bytes.size() / kibibyte));
            return !progress.cancelled();
        });
    }
    stopIfCancelled(progress);
    database::checkCopy(copy, unfinished.path());
}

/// A lock that keeps other programs from writing the library; none where no library stands.
std::optional<database::FileLock> heldAgainstWriters(const QString& library)
{
    // Whoever reads it at this moment would go on reading what is no longer in force.
    if (!database::heldForReplacing(library))
        return {};
    return std::make_optional<database::FileLock>(library, database::FileLock::Against::Writers);
}

QString backUpPresent(const QString& library, const CopyRequest& request, bool isSound,
                      runtime::Progress& progress)
{
    if (!QFileInfo::exists(library))
        return {};
    return isSound ? backUpLibrary(library, request, progress) : backUpDamaged(library, request);
}

/// What was there before a restore is opened again if that fails.
void openAgain(ScoreLibrary& scoreLibrary, const QString& path)
{
    if (path.isEmpty())
        return;
    scoreLibrary.LibPath = path;
    scoreLibrary.OpenDB();
    if (!scoreLibrary.Conn.isOpen())
        scoreLibrary.notifyChanged();
}

} // namespace

bool isSoundCopy(const QString& copy, runtime::Progress& progress)
{
    bool isSound = false;
    try {
        isSound = soundCopy(copy, progress) != nullptr;
    } catch (const runtime::Error&) {
        // It is no copy to restore, whatever the reason.
    }
    progress.finish();
    return isSound;
}

QString restoreCopy(const QString& libraryPath, const QString& copy, const QDateTime& now,
                    const Occasion& occasion, runtime::Progress& progress)
{
    const QString library = database::realPath(libraryPath);
    if (database::isSameFile(library, copy))
        refuseCopy(u"它就是成绩库本身。"_s);
    const auto content = soundCopy(copy, progress);
    checkRoomForCopy(QFileInfo(copy).size() + QFileInfo(library).size(), freeBytesBeside(library));
    const std::optional<database::FileLock> held = heldAgainstWriters(library);
    runtime::removeLeftOvers(library);
    runtime::UnfinishedFile unfinished(library);
    copyTo(unfinished, content->path(), progress);
    NotedRestore restore{now, timeOfState(library, copy)};
    QString former = backUpPresent(library, {now, occasion, copy}, held.has_value(), progress);
    noteRestore(library, former, restore);
    database::removeLogs(library);
    unfinished.replace(library, QFileInfo::exists(library) ? library : copy);
    restore.isDone = true;
    noteRestore(library, former, restore);
    return former;
}

QString restoreLibrary(ScoreLibrary& scoreLibrary, const QString& libraryPath, const QString& copy,
                       const Occasion& occasion, runtime::Progress& progress)
{
    const QString open = scoreLibrary.Conn.path();
    scoreLibrary.Conn.Close();
    QString former;
    try {
        former = restoreCopy(libraryPath, copy, QDateTime::currentDateTime(), occasion, progress);
    } catch (const runtime::Error&) {
        progress.finish();
        openAgain(scoreLibrary, open);
        throw;
    }
    progress.finish();
    openAgain(scoreLibrary, libraryPath);
    return former;
}

} // namespace library
