#include "statistics/LineTable.h"

#include <algorithm>

#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/Trap.h"

namespace statistics {

using namespace Qt::StringLiterals;
using runtime::doubleText;
using runtime::Trap;
using runtime::Val;

namespace {

/// The entries of a part such as "文=500,450" go to the stream that it names, if there is one.
/// Throws runtime::Error for an empty part and for a stream's name alone.
void takeStreamPart(LineTable& table, const QStringList& streams, const QString& part)
{
    const QStringList sides = part.split(u'=');
    const qsizetype stream = streams.indexOf(sides[0]);
    const bool isKnown = stream >= 0 && stream < MaxStreams;
    if (part.isEmpty() || (isKnown && sides.size() < 2))
        throw runtime::Error(u"“"_s + part + u"”缺少等号。"_s);
    if (isKnown)
        table[size_t(stream)] = runtime::splitList(sides[1], u","_s);
}

} // namespace

LineTable FenLiNumTJ(const QStringList& streams, const QString& title, const QString& value)
{
    const Trap trap{" - Function FenLiNumTJ/Mdl_MDB"};
    const QString text = QString(value).remove(u' ');
    LineTable table;
    const int marks =
        int(text.contains(u"文="_s)) + int(text.contains(u"理="_s)) + int(text.contains(u"||"_s));
    if (marks == 3) {
        for (const QString& part : text.split(u"||"_s))
            trap([&] { takeStreamPart(table, streams, part); });
    } else if (marks > 0) {
        runtime::warn(title + u"   条件设置不正确！缺少分隔符  ||  \n"_s + text);
    } else if (!text.isEmpty()) {
        QStringList numbers;
        for (const QString& entry : text.split(u','))
            numbers.append(doubleText(Val(entry)));
        table.fill(numbers);
    }
    const auto isTooLong = [](const QStringList& numbers) { return numbers.size() > MostLines; };
    if (std::any_of(table.begin(), table.end(), isTooLong)) {
        runtime::warn(u"%1   条件设置不正确！数字太多，最多 %2 个。"_s.arg(title).arg(MostLines));
        return {};
    }
    return table;
}

} // namespace statistics
