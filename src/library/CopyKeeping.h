#pragma once

#include <vector>

#include <QDateTime>

namespace library {

/// A bar of progress counts copied bytes in these, so that its numbers stay small.
inline constexpr qint64 kibibyte = 1024;

/// A copy as the rule of keeping sees it.
struct DatedSize
{
    QDateTime time;
    qint64 size = 0;
    bool isOfLastImport = false;
};

/// So many bytes all copies of a library may take together where so many are free on the disk: 2 GB
/// or a tenth of what is free, whichever is less.
qint64 roomForCopies(qint64 freeBytes);

/// Which copies go, by their places in `copies`, which stand the oldest first; the one just made is
/// the last, whatever its time. The newest five stay, and beside them the newest five of those that
/// bear a time still to come. Of the older ones that of the last import stays, and the first of
/// each of the latest 14 days and of each of the latest 8 weeks, the newest of them as long as all
/// copies together take less than `room`.
std::vector<size_t> copiesToRemove(const std::vector<DatedSize>& copies, const QDateTime& now,
                                   qint64 room);

/// Throws runtime::Error, which says both sizes, where a copy does not fit into what is free.
void checkRoomForCopy(qint64 size, qint64 freeBytes);

/// Bytes that are free beside a file; the largest number where the system does not say.
qint64 freeBytesBeside(const QString& path);

} // namespace library
