#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <QString>
#include <QStringList>

#include "platform/grid/FlexGrid.h"
#include "platform/runtime/Progress.h"
#include "statistics/NamedReports.h"
#include "workbooks/model/Application.h"

namespace workbench {

using statistics::ExamGrouping;

/// What the list of statistics shows while no item is chosen.
extern const QString StatisticsPrompt;

/// The item that the list shows, if it is one.
std::optional<QString> chosenItem(const QString& shown);

/// Which table a rate gives.
enum class RateTable { Excellent, Chosen };

/// A report as the workbench runs it.
struct ReportRequest
{
    /// In the order of the report; none is refused.
    QStringList exams;
    /// One of statisticsItems(); nothing is refused.
    std::optional<QString> item;
    RateTable rates = RateTable::Excellent;
    ExamGrouping tables = ExamGrouping::Together;
};

/// The report that the request runs; "" for an item that is unknown, and for none.
QString reportOf(const ReportRequest& request);

/// What the result of a request is other than a user may think, and the request that gives him
/// that.
struct ReportNote
{
    QString text;
    QString offer;
    ReportRequest instead;
};

/// The notes on a request: a rate that runs as 各科优秀率, several exams whose full marks add up to
/// the thresholds, and an item that is unknown for its blanks at the end alone.
std::vector<ReportNote> reportNotes(const ReportRequest& request);

/// "执行统计": fills the grid with the report of the item; what its cells stand for is in the
/// context's figures. All four rates run as 各科优秀率 unless
/// the request says otherwise, and an item that is unknown here does nothing. False after a message
/// if exams or the item are missing.
bool runReport(const ReportRequest& request, statistics::ReportContext& context,
               grid::FlexGrid& grid);

/// A comprehensive analysis as the workbench runs it.
struct AnalysisRequest
{
    /// The exams that are chosen; more than one is refused.
    QStringList exams;
    /// The exam that is analysed, chosen or not.
    QString exam;
};

/// "综合分析" of one exam. Takes the spreadsheet instance from `openExcel` once it is needed.
void runAnalysis(const AnalysisRequest& request, statistics::ReportContext& context,
                 const std::function<excel::Application&()>& openExcel,
                 runtime::Progress& progress);

} // namespace workbench
