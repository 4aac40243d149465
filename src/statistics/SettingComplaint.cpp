#include "statistics/SettingComplaint.h"

#include "platform/runtime/Text.h"
#include "scoring/StandardScores.h"
#include "statistics/BandConditions.h"
#include "statistics/BandWidths.h"
#include "statistics/LineTable.h"

namespace statistics {

using namespace Qt::StringLiterals;

namespace {

QString lineComplaint(const QStringList& streams, const QString& value)
{
    const LineReading reading = readLines(streams, value);
    if (!reading.refusal.isEmpty())
        return u"条件设置不正确！"_s + reading.refusal;
    if (!reading.badParts.isEmpty())
        return reading.badParts.first();
    if (!reading.noNumbers.isEmpty())
        return u"“"_s + reading.noNumbers.first() + u"”不是数字。"_s;
    return {};
}

QString widthComplaint(const QString& value)
{
    const auto widths = BandWidths::parse(value);
    return widths.areUsable() ? QString() : widths.refusal();
}

QString conversionComplaint(const QString& value)
{
    const auto conversion = scoring::TConversion::parse(value);
    if (!conversion)
        return u"T分转换公式设置不正确！应当是 10z+50 这样的形式。"_s;
    return conversion->factor > 0 ? QString() : u"z 前面要有大于 0 的数字，如 10z+50。"_s;
}

} // namespace

QString settingComplaint(const QStringList& streams, const QString& name, const QString& value)
{
    static const QStringList intervals{u"高分段"_s,     u"低分段"_s,     u"各科优秀率"_s,
                                       u"各科良好率"_s, u"各科及格率"_s, u"各科差生率"_s};
    static const QStringList lists{u"总分上线人数"_s, u"各名次段人数"_s, u"各名次段均分"_s,
                                   u"历次考试进入年级前x名人数"_s};
    // The workbench's name of one setting has a blank behind it.
    const QString key = runtime::Trim(name);
    if (intervals.contains(key))
        return value == CustomData ? QString() : Interval::complaint(value);
    if (lists.contains(key))
        return lineComplaint(streams, value);
    if (key == u"各分数段人数"_s)
        return widthComplaint(value);
    return key == u"T分"_s ? conversionComplaint(value) : QString();
}

} // namespace statistics
