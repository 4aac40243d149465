#include "library/CopyKeeping.h"

#include <sys/statvfs.h>

#include <algorithm>
#include <limits>
#include <set>

#include <QFile>
#include <QFileInfo>

#include "library/LibraryCopies.h"
#include "platform/runtime/Error.h"

namespace library {

using namespace Qt::StringLiterals;

namespace {

constexpr size_t newestKept = 5;
constexpr qint64 daysKept = 14;
constexpr qint64 weeksKept = 8;
constexpr qint64 daysOfAWeek = 7;
constexpr qint64 mostBytes = qint64(2) << 30;
constexpr qint64 shareOfFree = 10;

/// Days and weeks of which a copy is kept already.
class KeptDays
{
public:
    explicit KeptDays(const QDate& today) : m_today(today) {}

    /// True if the copy is the first of its day or of its week; to be asked of the oldest first.
    bool takes(const QDate& day)
    {
        const qint64 age = day.daysTo(m_today);
        if (age >= weeksKept * daysOfAWeek)
            return false;
        const qint64 monday = day.toJulianDay() - (day.dayOfWeek() - 1);
        const bool isFirstOfWeek = m_weeks.insert(monday).second;
        const bool isFirstOfDay = age < daysKept && m_days.insert(day.toJulianDay()).second;
        return isFirstOfWeek || isFirstOfDay;
    }

private:
    QDate m_today;
    std::set<qint64> m_weeks;
    std::set<qint64> m_days;
};

/// Marks the newest five, and beside them the newest five of a clock that was ahead.
std::vector<bool> newest(const std::vector<DatedSize>& copies, const QDateTime& now)
{
    // Copies of one second are named on.
    const QDateTime latest = now.addSecs(60);
    size_t current = 0;
    size_t ahead = 0;
    std::vector<bool> isNewest(copies.size());
    for (size_t i = copies.size(); i-- > 0;) {
        const bool isAhead = i + 1 < copies.size() && copies[i].time > latest;
        isNewest[i] = (isAhead ? ahead : current)++ < newestKept;
    }
    return isNewest;
}

} // namespace

qint64 roomForCopies(qint64 freeBytes)
{
    return std::min(mostBytes, freeBytes / shareOfFree);
}

std::vector<size_t> copiesToRemove(const std::vector<DatedSize>& copies, const QDateTime& now,
                                   qint64 room)
{
    const std::vector<bool> isNewest = newest(copies, now);
    KeptDays days(now.date());
    qint64 taken = 0;
    std::vector<size_t> wanted;
    std::vector<size_t> gone;
    for (size_t i = 0; i < copies.size(); ++i) {
        if (isNewest[i])
            taken += copies[i].size;
        else if (days.takes(copies[i].time.date()) || copies[i].isOfLastImport)
            wanted.push_back(i);
        else
            gone.push_back(i);
    }
    std::stable_partition(wanted.begin(), wanted.end(),
                          [&](size_t i) { return !copies[i].isOfLastImport; });
    // The first that does not fit takes the room of the older ones, too.
    for (; !wanted.empty(); wanted.pop_back()) {
        taken += copies[wanted.back()].size;
        if (taken >= room)
            gone.push_back(wanted.back());
    }
    std::sort(gone.begin(), gone.end());
    return gone;
}

void checkRoomForCopy(qint64 size, qint64 freeBytes)
{
    if (size > freeBytes)
        throw runtime::Error(
            u"磁盘上放不下成绩库的备份：备份要 %1，磁盘只剩 %2。请先腾出空间。"_s.arg(
                sizeText(size), sizeText(freeBytes)));
}

qint64 freeBytesBeside(const QString& path)
{
    struct statvfs disk = {};
    if (statvfs(QFile::encodeName(QFileInfo(path).absolutePath()).constData(), &disk) != 0)
        return std::numeric_limits<qint64>::max();
    return qint64(disk.f_bavail) * qint64(disk.f_frsize);
}

} // namespace library
