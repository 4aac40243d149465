#pragma once

#include "platform/runtime/Error.h"

namespace oldlibraries {

/// Why a file of the old engine cannot be read, for callers that have to tell cases apart.
enum class OldFileFailure {
    Missing,
    Unreadable,   ///< the system refused to read it
    Foreign,      ///< it is something else
    OtherVersion, ///< an older or newer version of the format
    Encrypted,
    Password, ///< it has a password, and the one given is not it
    CutOff,
    Damaged,
    RowsMissing, ///< a table counts more rows than are found
    Changed      ///< somebody wrote it while it was read
};

/// An error of an old library: a sentence that a teacher can read.
class OldFileError : public runtime::Error
{
public:
    OldFileError(OldFileFailure failure, const QString& description)
        : Error(description), m_failure(failure)
    {
    }

    OldFileFailure failure() const { return m_failure; }

private:
    OldFileFailure m_failure;
};

} // namespace oldlibraries
