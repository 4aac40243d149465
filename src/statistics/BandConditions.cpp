#include "statistics/BandConditions.h"

#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"

namespace statistics {

using namespace Qt::StringLiterals;
using runtime::doubleText;
using runtime::Trap;
using runtime::Val;

const QString CustomData = u"(使用自定义数据)"_s;

Interval Interval::parse(const QString& text)
{
    const QString inner = text.mid(1, text.size() - 2);
    const qsizetype comma = inner.indexOf(u',');
    if (comma < 0)
        throw runtime::Error(u"条件“"_s + text + u"”不是区间，缺少逗号。"_s);
    Interval interval;
    interval.lowerOperator = text.startsWith(u'[') ? u">="_s : u">"_s;
    interval.upperOperator = text.endsWith(u']') ? u"<="_s : u"<"_s;
    interval.lower = Val(inner.left(comma));
    interval.upper = Val(inner.mid(comma + 1));
    if (interval.upper == 0)
        interval.upper = 1;
    return interval;
}

std::optional<QStringList> MakeCXTJ(const library::ColumnMarks& subjects, const QString& band)
{
    const Trap trap{" - Function MakeCXTJ/Mdl_MDB"};
    std::optional<QStringList> conditions;
    trap([&] {
        const Interval interval = Interval::parse(band);
        conditions.emplace();
        for (int k = 0; k < subjects.count(); ++k) {
            const double marks = subjects.marks[size_t(k)];
            const QString& subject = subjects.names[k];
            conditions->append(subject + interval.lowerOperator + doubleText(interval.lower * marks)
                               + u" and "_s + subject + interval.upperOperator
                               + doubleText(interval.upper * marks));
        }
    });
    return conditions;
}

} // namespace statistics
