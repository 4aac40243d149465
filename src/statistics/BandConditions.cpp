#include "statistics/BandConditions.h"

#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"
#include "statistics/NumberText.h"

namespace statistics {

using namespace Qt::StringLiterals;
using runtime::doubleText;
using runtime::Trap;
using runtime::Val;

const QString CustomData = u"(使用自定义数据)"_s;

namespace {

/// The texts of the two edges.
struct Edges
{
    QString lower;
    QString upper;
};

/// Throws runtime::Error for a text without a comma.
Edges edgesOf(const QString& text)
{
    const QString inner = text.mid(1, text.size() - 2);
    const qsizetype comma = inner.indexOf(u',');
    if (comma < 0)
        throw runtime::Error(u"条件“"_s + text + u"”不是区间，缺少逗号。"_s);
    return {inner.left(comma), inner.mid(comma + 1)};
}

/// An edge that is left out is no mistake.
bool isNumberOrNothing(const QString& edge)
{
    return edge.trimmed().isEmpty() || isNumberText(edge);
}

} // namespace

Interval Interval::whole(const QString& text)
{
    Interval interval;
    interval.lowerOperator = text.startsWith(u'[') ? u">="_s : u">"_s;
    interval.upperOperator = text.endsWith(u']') ? u"<="_s : u"<"_s;
    return interval;
}

Interval Interval::parse(const QString& text)
{
    const Edges edges = edgesOf(text);
    Interval interval = whole(text);
    interval.lower = Val(edges.lower);
    interval.upper = Val(edges.upper);
    if (interval.upper == 0)
        interval.upper = 1;
    return interval;
}

QString Interval::complaint(const QString& text)
{
    QString complaint;
    try {
        const Edges edges = edgesOf(text);
        const Interval interval = parse(text);
        if (!u"[(（"_s.contains(text.front()) || !u"])）"_s.contains(text.back()))
            complaint = u"区间的两端要有括号，如 [0.85,1]。"_s;
        else if (!isNumberOrNothing(edges.lower) || !isNumberOrNothing(edges.upper))
            complaint = u"逗号两边要是数字，如 [0.85,1]。"_s;
        else if (interval.lower > 1 || interval.lower > interval.upper)
            complaint = u"两个数是满分的比例，从小到大，如 [0.85,1]；现在没有分数在区间里。"_s;
    } catch (const runtime::Error& error) {
        complaint = error.description();
    }
    return complaint;
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
