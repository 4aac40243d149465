#pragma once

#include "platform/grid/FlexGrid.h"
#include "platform/runtime/Progress.h"
#include "statistics/ReportContext.h"

namespace workbench {

/// What the list of statistics shows while no item is chosen.
extern const QString StatisticsPrompt;

/// A report as the workbench runs it.
struct ReportRequest
{
    /// In list order; none is refused.
    QStringList exams;
    /// One of statisticsItems(); StatisticsPrompt is refused.
    QString item;
};

/// "执行统计": fills the grid with the report of the item. All four rates run as 各科优秀率, and an
/// item that is unknown here does nothing. False after a message if exams or the item are
/// missing.
bool runReport(const ReportRequest& request, statistics::ReportContext& context,
               grid::FlexGrid& grid);

/// The exams of a comprehensive analysis, as they stand in a list.
struct AnalysisRequest
{
    /// More than one is refused.
    QStringList selectedExams;
    /// The exam that is analysed, selected or not.
    QString currentExam;
};

/// "综合分析" of one exam. Takes the spreadsheet instance from `openExcel` once it is needed.
void runAnalysis(const AnalysisRequest& request, statistics::ReportContext& context,
                 const std::function<excel::Application&()>& openExcel,
                 runtime::Progress& progress);

} // namespace workbench
