#pragma once

#include <functional>

#include "platform/database/OpenFile.h"
#include "platform/runtime/UnfinishedFile.h"

namespace database {

/// The bytes of a library file under the engine's read lock: nobody changes them while it lives. A
/// batch of this program that has written nothing yet does not hinder it.
///
/// They are read through the engine, since closing the file by other means would give up the locks
/// that this program has on it.
class LockedBytes
{
public:
    /// What becomes of a write that was broken off in the file, and of a log beside it.
    enum class BrokenWrite {
        TakenBack,
        LeftAlone ///< nobody else may have the file in use then
    };

    /// Throws Error if the file cannot be opened and locked.
    explicit LockedBytes(const QString& path, BrokenWrite brokenWrite = BrokenWrite::TakenBack);

    qint64 size() const { return m_size; }

    /// `done` bytes of size() are copied; false ends the copying.
    using Tell = std::function<bool(qint64 done)>;
    /// Adds all bytes to the file. False if `tell` ended it. Throws Error.
    bool copyTo(runtime::UnfinishedFile& copy, const Tell& tell) const;

    /// True if another file, which nobody has open, holds the same bytes.
    bool isSameAs(const QString& otherFile) const;

private:
    QByteArray read(qint64 from) const;

    Handle m_handle;
    qint64 m_size = 0;
};

} // namespace database
