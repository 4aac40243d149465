#include "statistics/NamedReports.h"

#include <QHash>

#include "platform/database/ReadBatch.h"

namespace statistics {

using namespace Qt::StringLiterals;

namespace {

/// A report whose title is also the name of its setting.
Report titled(void (*report)(ReportContext&, QString&, const QString&, grid::FlexGrid&, Transfer),
              const QString& title)
{
    return [=](ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer) {
        report(context, exams, title, grid, transfer);
    };
}

} // namespace

Report namedReport(const QString& name)
{
    static const QHash<QString, Report> reports{
        {u"考试人数"_s, TJKSRS},
        {u"高分段"_s, TJGDFD},
        {u"低分段"_s, TJGDFD},
        {u"高、低分段"_s, TJGDFD},
        {u"高分段、低分段"_s, TJGDFD},
        {u"各科优秀率"_s, titled(TJGK4l, u"各科优秀率"_s)},
        {u"各科良好率"_s, titled(TJGK4l, u"各科良好率"_s)},
        {u"各科及格率"_s, titled(TJGK4l, u"各科及格率"_s)},
        {u"各科差生率"_s, titled(TJGK4l, u"各科差生率"_s)},
        {u"各科平均分"_s, TJGKPJF},
        {u"各科最高分"_s, TJGKZGF},
        {u"各科最低分"_s, TJGKZDF},
        {u"各科标准差"_s, TJGKBZC},
        {u"各分数段人数"_s, titled(TJGFSDRS, u"各分数段人数"_s)},
        {u"总分上线人数"_s, TJZFSXRS},
        {u"历次总分上线人数"_s, TJZFSXRS},
        {u"各名次段人数"_s, TJGMCDRS},
        {u"历次各名次段人数对比"_s, TJGMCDRS},
        {u"各名次段均分"_s, TJGKGMCDJF},
        {u"历次考试进入年级前x名人数"_s, TJLCKSQxM},
        {u"历次考试进入年级前x名人数 "_s, TJLCKSQxM},
    };
    const Report report = reports.value(name);
    if (!report)
        return {};
    return
        [report](ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer) {
            const database::ReadBatch reading(context.library.Conn);
            report(context, exams, grid, transfer);
        };
}

} // namespace statistics
