#include "workbench/StatisticsRun.h"

#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Trap.h"
#include "statistics/ComprehensiveAnalysis.h"
#include "workbench/Browse.h"
#include "workbench/ExamByExam.h"

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

const QString excellentRate = u"各科优秀率"_s;
const QString groups = u"高分段、低分段"_s;

const StatisticsItem* itemOf(const ReportRequest& request)
{
    for (const StatisticsItem& item : knownItems()) {
        if (item.text == request.item)
            return &item;
    }
    return nullptr;
}

/// The item that the request would be, were it not for blanks at the end of the one name or the
/// other: a library may come without the blank that the table has.
const StatisticsItem* itemButForBlanks(const ReportRequest& request)
{
    if (!request.item)
        return nullptr;
    for (const StatisticsItem& item : knownItems()) {
        if (item.text.trimmed() == request.item->trimmed())
            return &item;
    }
    return nullptr;
}

std::vector<ReportNote> notesOnUnknown(const ReportRequest& request)
{
    const StatisticsItem* meant = itemButForBlanks(request);
    if (!meant)
        return {};
    ReportRequest known = request;
    known.item = meant->text;
    return {{u"“%1”的末尾少了或多了空格，“执行统计”认不出它，没有统计。"_s.arg(*request.item),
             u"统计“%1”"_s.arg(meant->report), known}};
}

void fillGrid(const ReportRequest& request, const statistics::Report& report,
              statistics::ReportContext& context, grid::FlexGrid& grid)
{
    const Trap trap{" - Private Sub CommandZXTJ_Click/FormKaoShi"};
    const auto fill = [&](QString exams, grid::FlexGrid& table) {
        trap([&] { report(context, exams, table, statistics::Transfer::GridOnly); });
    };
    if (request.tables == ExamGrouping::OneByOne)
        reportExamByExam(request.exams, fill, grid);
    else
        fill(request.exams.join(u','), grid);
}

} // namespace

const QString StatisticsPrompt = u"请选择要统计的项目"_s;

std::optional<QString> chosenItem(const QString& shown)
{
    return shown == StatisticsPrompt ? std::nullopt : std::optional(shown);
}

QString reportOf(const ReportRequest& request)
{
    const StatisticsItem* item = itemOf(request);
    if (!item)
        return {};
    return request.rates == RateTable::Chosen && item->report == excellentRate ? item->text
                                                                               : item->report;
}

std::vector<ReportNote> reportNotes(const ReportRequest& request)
{
    const StatisticsItem* item = itemOf(request);
    if (!item)
        return notesOnUnknown(request);
    std::vector<ReportNote> notes;
    if (reportOf(request) == excellentRate && item->text != excellentRate) {
        ReportRequest chosen = request;
        chosen.rates = RateTable::Chosen;
        notes.push_back({u"“执行统计”对“%1”给出的是“%2”的表。"_s.arg(item->text, item->report),
                         u"统计“%1”"_s.arg(item->text), chosen});
    }
    const bool addsUp = item->report == excellentRate || item->report == groups;
    if (addsUp && request.exams.size() > 1 && request.tables == ExamGrouping::Together) {
        ReportRequest each = request;
        each.tables = ExamGrouping::OneByOne;
        notes.push_back(
            {u"选了 %1 次考试，分数线按这几次满分相加的和计算。"_s.arg(request.exams.size()),
             u"逐次考试统计"_s, each});
    }
    return notes;
}

bool runReport(const ReportRequest& request, statistics::ReportContext& context,
               grid::FlexGrid& grid)
{
    if (!checkExamChosen(request.exams))
        return false;
    if (!request.item) {
        runtime::warn(u"没有选择统计项目，请选择统计项目 后继续。"_s);
        return false;
    }
    context.forgetRows();
    if (const statistics::Report report = statistics::namedReport(reportOf(request)))
        fillGrid(request, report, context, grid);
    context.figures.keepOnly(grid);
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
