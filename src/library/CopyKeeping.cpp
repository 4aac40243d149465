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

} // namespace

qint64 roomForCopies(qint64 freeBytes)
{
    return std::min(mostBytes, freeBytes / shareOfFree);
}

std::vector<size_t> copiesToRemove(const std::vector<DatedSize>& copies, const QDateTime& now,
                                   qint64 room)
{
    const size_t older = copies.size() - std::min(copies.size(), newestKept);
    std::vector<bool> isKept(older);
    KeptDays days(now.date());
    for (size_t i = 0; i < older; ++i)
        isKept[i] = days.takes(copies[i].time.date());
    qint64 taken = 0;
    for (size_t i = older; i < copies.size(); ++i)
        taken += copies[i].size;
    bool isRoomLeft = true;
    for (size_t i = older; i-- > 0;) {
        if (!isKept[i])
            continue;
        isRoomLeft = isRoomLeft && taken + copies[i].size < room;
        isKept[i] = isRoomLeft;
        taken += copies[i].size;
    }
    std::vector<size_t> gone;
    for (size_t i = 0; i < older; ++i) {
        if (!isKept[i])
            gone.push_back(i);
    }
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
