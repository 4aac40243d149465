#pragma once

#include <vector>

#include "library/CopyOccasion.h"
#include "library/ImportHistory.h"

namespace library {

/// A copy that stands beside a library.
struct LibraryCopy
{
    QString path;
    /// When it was made; the name may tell a later second, where that one was taken.
    QDateTime time;
    qint64 size = 0;
    /// The oldest first; empty for a copy of which nothing is noted.
    std::vector<NotedOccasion> occasions = {};

    /// What it was made ahead of, the newest first, on one line.
    QString occasionText() const;
};

/// A size in bytes for a user: "12.3 MB".
QString sizeText(qint64 bytes);

/// A time for a user: "2026-11-21 11:18:05".
QString timeText(const QDateTime& time);

/// The dated copies of a library by their paths, the oldest first: LIB_YYYY-MM-DD_HHMMSS.bak, older
/// ones LIB_YYYY-MM-DD_HHMM.bak. The library itself need not be there.
std::vector<LibraryCopy> datedCopies(const QString& libraryPath);

/// All copies beside a library, the newest first: the dated ones and those of 压缩数据库,
/// LIB_YYYY-MM-DD_.bak.
std::vector<LibraryCopy> copiesOf(const QString& libraryPath);

/// Of which time the library is that a copy holds; not valid for a file that is none of copiesOf().
QDateTime timeOfState(const QString& libraryPath, const QString& copy);

/// Removes a copy of the library and what is noted of it; the restores that it holds go on to
/// another one. False if it stays: what is none of copiesOf() is never removed.
bool removeCopy(const QString& libraryPath, const QString& copy);

/// Adds the new name of an exam to what is noted of the library's copies.
void renameInNotes(const QString& libraryPath, const QString& exam, const QString& name);

/// Has another dated copy of the library hold the restores, too, that one holds which goes.
void passRestoresOn(const QString& libraryPath, const QString& copy);

/// Notes that a copy takes the place of the library, in `further`, the copy of what stood there, or
/// in the newest one. Nothing is noted where no import is. Failing is no error.
void noteRestore(const QString& libraryPath, const QString& further, const NotedRestore& restore);

/// How the library stands to its newest dated copy.
enum class NewestCopy { NotCompared, EqualsLibrary };

/// An import, and the copy that was made ahead of it.
struct CopiedImport
{
    LibraryCopy copy;
    NotedOccasion import;
    Presence presence = Presence::InLibrary;
    /// What other copies were made ahead of since then, the newest first.
    QStringList later = {};
};

/// The imports that a copy is there of, the latest first; behind all others those that are noted
/// for a time still to come, by a clock that was ahead.
std::vector<CopiedImport> copiedImports(const QString& libraryPath, const QDateTime& now,
                                        NewestCopy newest = NewestCopy::NotCompared);

} // namespace library
