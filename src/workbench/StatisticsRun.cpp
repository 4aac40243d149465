#include "workbench/StatisticsRun.h"

#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Trap.h"
#include "statistics/ComprehensiveAnalysis.h"
#include "statistics/NamedReports.h"
#include "workbench/Browse.h"

namespace workbench {

using namespace Qt::StringLiterals;
using runtime::MsgBox;
using runtime::Trap;

namespace {

struct StatisticsItem
{
    /// As 设置表 names it.
    QString text;
    /// The report that it runs.
    QString report;
};

/// Each rate is the table of 优秀率 here, and only the analysis tells them apart. The pair of high
/// and low groups stands for two rows of 设置表, and the blank behind 历次考试进入年级前x名人数 is
/// the table's own.
const std::vector<StatisticsItem>& knownItems()
{
    static const std::vector<StatisticsItem> items{
        {u"高分段、低分段"_s, u"高分段、低分段"_s},
        {u"各科优秀率"_s, u"各科优秀率"_s},
        {u"各科良好率"_s, u"各科优秀率"_s},
        {u"各科及格率"_s, u"各科优秀率"_s},
        {u"各科差生率"_s, u"各科优秀率"_s},
        {u"各科平均分"_s, u"各科平均分"_s},
        {u"各科最高分"_s, u"各科最高分"_s},
        {u"各科最低分"_s, u"各科最低分"_s},
        {u"各科标准差"_s, u"各科标准差"_s},
        {u"各分数段人数"_s, u"各分数段人数"_s},
        {u"总分上线人数"_s, u"总分上线人数"_s},
        {u"各名次段均分"_s, u"各名次段均分"_s},
        {u"各名次段人数"_s, u"各名次段人数"_s},
        {u"历次各名次段人数对比"_s, u"历次各名次段人数对比"_s},
        {u"考试人数"_s, u"考试人数"_s},
        {u"历次考试进入年级前x名人数 "_s, u"历次考试进入年级前x名人数"_s},
        {u"历次总分上线人数"_s, u"历次总分上线人数"_s},
    };
    return items;
}

} // namespace

const QString StatisticsPrompt = u"请选择要统计的项目"_s;

std::optional<QString> chosenItem(const QString& shown)
{
    return shown == StatisticsPrompt ? std::nullopt : std::optional(shown);
}

bool runReport(const ReportRequest& request, statistics::ReportContext& context,
               grid::FlexGrid& grid)
{
    const Trap trap{" - Private Sub CommandZXTJ_Click/FormKaoShi"};
    if (!checkExamChosen(request.exams))
        return false;
    if (!request.item) {
        runtime::warn(u"没有选择统计项目，请选择统计项目 后继续。"_s);
        return false;
    }
    context.forgetRows();
    for (const StatisticsItem& item : knownItems()) {
        if (item.text != request.item)
            continue;
        QString exams = request.exams.join(u',');
        trap([&] {
            statistics::namedReport(item.report)(context, exams, grid,
                                                 statistics::Transfer::GridOnly);
        });
    }
    // Many exams fill the memory.
    context.forgetRows();
    grid.Visible = true;
    return true;
}

void runAnalysis(const AnalysisRequest& request, statistics::ReportContext& context,
                 const std::function<excel::Application&()>& openExcel, runtime::Progress& progress)
{
    const Trap trap{" - Private Sub Command2_Click/FormKaoShi"};
    if (request.exams.size() > 1)
        return runtime::warn(u"当前操作只针对一次考试，请选择  一次考试后  进行  综合分析。"_s);
    trap([&] { statistics::ZHFX(context, request.exam, openExcel(), progress); });
}

} // namespace workbench
