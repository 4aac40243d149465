#pragma once

#include "platform/runtime/Progress.h"
#include "statistics/ReportContext.h"

namespace statistics {

/// How a comprehensive analysis ended.
enum class AnalysisResult { Finished, Cancelled };

/// 综合分析: for one exam, a workbook for each stream with all scores and ranks, all T scores, the
/// reports on this exam, and the comparisons with other exams, as far as the settings add them. The
/// workbooks stay open and unsaved in `application`, which is shown at the end; what was filled
/// until 取消 stays open too.
///
/// Every report covers all streams, and is run in the pass of every stream: in the pass of the
/// second stream the first one's blocks land on its last sheet, below what stands there.
AnalysisResult ZHFX(ReportContext& context, const QString& exam, excel::Application& application,
                    runtime::Progress& progress);

} // namespace statistics
