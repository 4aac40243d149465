#include "workbooks/readers/NumberFormats.h"

#include <cmath>

#include "workbooks/model/DayNumber.h"

namespace excel {

namespace {

constexpr int firstDayOf10000 = 2958466;
constexpr int daysTo1904 = 1462;
// The count has a 29 February 1900, which never was, as its day 60.
constexpr int dayThatNeverWas = 60;

bool isBuiltInDate(int format)
{
    return (format >= 14 && format <= 22) || (format >= 27 && format <= 36)
           || (format >= 45 && format <= 47) || (format >= 50 && format <= 58);
}

/// Elapsed time, as in "[h]"; colours, conditions and languages stand in brackets too.
bool isElapsed(QStringView inBrackets)
{
    return !inBrackets.isEmpty()
           && std::all_of(inBrackets.begin(), inBrackets.end(), [&](QChar letter) {
                  return letter.toLower() == inBrackets.front().toLower()
                         && QStringView(u"hms").contains(letter.toLower());
              });
}

} // namespace

bool NumberFormats::isDateCode(const QString& code)
{
    for (qsizetype at = 0; at < code.size(); ++at) {
        const QChar letter = code[at].toLower();
        if (letter == u'\\' || letter == u'_' || letter == u'*') {
            ++at;
        } else if (letter == u'"' || letter == u'[') {
            const qsizetype end = code.indexOf(letter == u'"' ? u'"' : u']', at + 1);
            if (end < 0)
                return false;
            if (letter == u'[' && isElapsed(QStringView(code).mid(at + 1, end - at - 1)))
                return true;
            at = end;
        } else if (QStringView(u"ymdhs").contains(letter)) {
            return true;
        }
    }
    return false;
}

bool NumberFormats::isDateStyle(size_t style) const
{
    if (style >= m_styles.size())
        return false;
    const auto own = m_own.find(m_styles[style]);
    return own != m_own.end() ? own->second : isBuiltInDate(m_styles[style]);
}

runtime::Value dateValue(double number, DateSystem system)
{
    const double serial = system == DateSystem::From1904 ? number + daysTo1904 : number;
    if (!(number >= 0) || serial >= firstDayOf10000)
        return number;
    constexpr qint64 millisecondsOfDay = qint64(secondsPerDay) * 1000;
    const qint64 all = std::llround(serial * double(millisecondsOfDay));
    qint64 day = all / millisecondsOfDay;
    if (day >= 1 && day < dayThatNeverWas)
        ++day;
    const QTime time = QTime::fromMSecsSinceStartOfDay(int(all % millisecondsOfDay));
    return QDateTime(dayZero().addDays(day), time, Qt::UTC);
}

} // namespace excel
