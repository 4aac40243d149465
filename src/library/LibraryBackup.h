#pragma once

#include <QDateTime>
#include <QString>

#include "library/CopyOccasion.h"
#include "library/ScoreLibrary.h"
#include "platform/runtime/Progress.h"

namespace library {

/// Copies a library to a file beside it that takes its name when all of it is on the disk. One that
/// stands there is replaced. Throws Error; that one is as it was then.
void copyLibrary(const QString& libraryPath, const QString& copy, runtime::Progress& progress);

/// When and for what a copy is made.
struct CopyRequest
{
    QDateTime now;
    Occasion occasion;
    /// An older copy that stays, although its time would have come.
    QString spared = {};
};

/// Copies the library to LIB_YYYY-MM-DD_HHMMSS.bak beside it and removes the copies that
/// copiesToRemove() does not keep; no copy is ever replaced. One that equals the newest copy is not
/// copied again; that copy gets the new occasion too. Gives the path of the newest copy. Throws
/// Error if the copy cannot be written; nothing is harmed then.
QString backUpLibrary(const QString& libraryPath, const QDateTime& now, const Occasion& occasion,
                      runtime::Progress& progress);
QString backUpLibrary(const QString& libraryPath, const CopyRequest& request,
                      runtime::Progress& progress);

/// The same of a file that is no library, or not a whole one, as it is, with the journal that
/// stands beside it. Throws Error.
QString backUpDamaged(const QString& path, const CopyRequest& request);

/// Whether the library is, byte for byte, its newest dated copy. False also where that cannot be
/// read.
bool equalsNewestCopy(const QString& libraryPath);

/// Whether a dated copy of the library is made ahead of the first write.
enum class Backup { Make, SwitchedOff };

/// Whether a copy of the library fits beside it, or the newest one equals it; told where it does
/// not. Asked ahead of the questions of what writes, so that nobody answers them for nothing. True
/// where the copy is switched off.
bool hasRoomForBackup(const ScoreLibrary& scoreLibrary, Backup backup);

/// As long as it lives, the open library is backed up ahead of the first write; what writes nothing
/// leaves no copy. Without the copy nothing is written: the phase that writes ends by a PhaseError.
/// Switched off it does nothing.
class BackupBeforeWrite
{
public:
    BackupBeforeWrite(ScoreLibrary& scoreLibrary, runtime::Progress& progress, Backup backup,
                      Occasion occasion);
    ~BackupBeforeWrite();
    BackupBeforeWrite(const BackupBeforeWrite&) = delete;
    BackupBeforeWrite& operator=(const BackupBeforeWrite&) = delete;

private:
    database::Connection& m_connection;
};

} // namespace library
