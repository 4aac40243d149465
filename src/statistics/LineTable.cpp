#include "statistics/LineTable.h"

#include <algorithm>

#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/Trap.h"
#include "statistics/NumberText.h"

namespace statistics {

using namespace Qt::StringLiterals;
using runtime::doubleText;
using runtime::Trap;
using runtime::Val;

namespace {

/// The entries of a part such as "文=500,450" go to the stream that it names, if there is one.
/// A part that names no numbers is noted.
void takeStreamPart(LineReading& reading, const QStringList& streams, const QString& part)
{
    const QStringList sides = part.split(u'=');
    const qsizetype stream = streams.indexOf(sides[0]);
    const bool isKnown = stream >= 0 && stream < MaxStreams;
    if (part.isEmpty() || (isKnown && sides.size() < 2))
        reading.badParts.append(u"“"_s + part + u"”缺少等号。"_s);
    else if (isKnown)
        reading.lines[size_t(stream)] = runtime::splitList(sides[1], u","_s);
}

QStringList noNumbersAmong(const QStringList& entries)
{
    QStringList others = entries;
    others.removeIf([](const QString& entry) { return isNumberText(entry); });
    return others;
}

void takeByStream(LineReading& reading, const QStringList& streams, const QString& text)
{
    for (const QString& part : text.split(u"||"_s))
        takeStreamPart(reading, streams, part);
    for (const QStringList& entries : reading.lines)
        reading.noNumbers += noNumbersAmong(entries);
}

void takePlain(LineReading& reading, const QString& text)
{
    const QStringList entries = runtime::splitList(text, u","_s);
    reading.noNumbers = noNumbersAmong(entries);
    QStringList numbers;
    for (const QString& entry : entries)
        numbers.append(doubleText(Val(entry)));
    reading.lines.fill(numbers);
}

} // namespace

LineReading readLines(const QStringList& streams, const QString& value)
{
    const QString text = QString(value).remove(u' ');
    LineReading reading;
    const int marks =
        int(text.contains(u"文="_s)) + int(text.contains(u"理="_s)) + int(text.contains(u"||"_s));
    if (marks == 3)
        takeByStream(reading, streams, text);
    else if (marks == 0)
        takePlain(reading, text);
    else
        reading.refusal = u"缺少分隔符  ||  \n"_s + text;
    const auto isTooLong = [](const QStringList& numbers) { return numbers.size() > MostLines; };
    if (std::any_of(reading.lines.begin(), reading.lines.end(), isTooLong)) {
        reading.lines = {};
        reading.refusal = u"数字太多，最多 %1 个。"_s.arg(MostLines);
    }
    return reading;
}

LineTable FenLiNumTJ(const QStringList& streams, const QString& title, const QString& value)
{
    const Trap trap{" - Function FenLiNumTJ/Mdl_MDB"};
    const LineReading reading = readLines(streams, value);
    for (const QString& badPart : reading.badParts)
        trap.fail(badPart);
    if (!reading.refusal.isEmpty())
        runtime::warn(title + u"   条件设置不正确！"_s + reading.refusal);
    return reading.lines;
}

} // namespace statistics
