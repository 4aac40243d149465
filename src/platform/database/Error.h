#pragma once

#include "platform/runtime/Error.h"

struct sqlite3;

namespace database {

/// What went wrong with the library file, for callers that have to tell cases apart.
enum class Failure {
    Sql,       ///< the statement is wrong: syntax, an unknown table or column
    Value,     ///< a value does not fit its column
    Missing,   ///< no such file, or it vanished while it was open
    NoLibrary, ///< the file is something else
    Damaged,
    Locked,
    ReadOnly,
    DiskFull,
    Refused, ///< a statement that has no business in a library
    Other
};

/// An error of the database: a Chinese description that a teacher can read, and behind it in
/// brackets the engine's own words where there are any.
class Error : public runtime::Error
{
public:
    Error(Failure failure, const QString& description, const QString& engineWords = {});

    Failure failure() const { return m_failure; }

private:
    Failure m_failure;
};

/// The description for a row that is asked for and not there.
QString noCurrentRow();
/// The description for a name that no column has.
QString noSuchColumn(const QString& name);

/// The engine's last error on this handle, in words that a teacher can read.
Error engineError(sqlite3* handle);

/// True if the engine's last error is one of the file or of memory, not of a statement: what was
/// read before cannot be trusted to be all there is, nor what was written to be whole.
bool isFileTrouble(sqlite3* handle);

/// Runs a statement of our own without rows, past all that Connection guards. Throws Error.
void runOnEngine(sqlite3* handle, const char* sql);

} // namespace database
