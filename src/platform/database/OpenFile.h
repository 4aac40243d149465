#pragma once

#include <memory>
#include <optional>

#include "platform/database/FileCheck.h"
#include "platform/runtime/Error.h"

namespace database {

struct CloseHandle
{
    void operator()(sqlite3* handle) const;
};

using Handle = std::unique_ptr<sqlite3, CloseHandle>;

/// The file that a path leads to, behind links; the path itself where nothing stands. The engine
/// keeps its journal beside that file.
QString realPath(const QString& path);

/// Throws Error for a path that is too long for the engine.
void checkPathLength(const QString& path);

/// Opens an existing file without looking at it. Throws Error, also for a path that is too long
/// for the engine.
Handle rawFile(const QString& path);

/// Opens the file, sets the connection up and checks that it is one of ours. Throws Error.
Handle openedFile(const QString& path, const FileShape& shape);

/// Keeps others from a library file as long as it lives, after a write that was broken off in it
/// has been taken back.
class FileLock
{
public:
    enum class Against {
        Writers, ///< this program can still read the file by another connection
        Everybody
    };

    /// Throws Error: Failure::Locked if it is in use.
    FileLock(const QString& path, Against against);

private:
    Handle m_handle;
};

/// Keeps others from a file that is to be replaced; nothing where none stands, or one that is no
/// library. Throws runtime::Error if that must not be: it is in use, or its user may not write it.
std::optional<FileLock> heldForReplacing(const QString& target);

/// The refusal of a file that is in use, which a caller knows better where it has it open itself.
runtime::Error inUseError(const QString& target);

/// Removes what a crash left beside a file that is to be replaced: it would be played back into the
/// new one. Throws Error if it cannot be removed.
void removeLogs(const QString& path);

/// True if another connection reads or writes the library file at this moment, in this program or
/// in another one; one that merely has the file open is not noticed. A missing file, or one that is
/// no library, is not in use.
bool isInUse(const QString& path);

} // namespace database
