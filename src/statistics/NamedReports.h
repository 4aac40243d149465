#pragma once

#include <functional>

#include "statistics/Reports.h"

namespace statistics {

/// How several exams are reported on: in one table, or each by itself.
enum class ExamGrouping { Together, OneByOne };

/// A report as it is called by name.
using Report = std::function<void(ReportContext&, QString& exams, grid::FlexGrid&, Transfer)>;

/// The report of a name of 设置表, each rate with its own title and setting; empty for a name that
/// is no report. 高分段, 低分段, "高、低分段" and "高分段、低分段" are one report, and so is
/// 历次考试进入年级前x名人数 with and without the blank behind it.
Report namedReport(const QString& name);

} // namespace statistics
