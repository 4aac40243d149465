#pragma once

#include <functional>

#include "individual/StudentExams.h"
#include "workbooks/model/Application.h"

namespace individual {

/// What a student's workbook holds.
enum class ReportContent { Exams = 1, ExamsAndChart = 2 };

/// Writes the chart that is shown to a picture file; false, after a message, if there is none then.
using SavePic = std::function<bool(const QString& path)>;

/// Puts the name that stands over the chart, the student's grid and, with ExamsAndChart, the
/// picture that `savePic` makes of the chart into a workbook of a new spreadsheet instance, which
/// is shown and not saved. Failures are shown with the routine's tag.
excel::Application& wydc(excel::Applications& applications, const runtime::AppPaths& paths,
                         const grid::FlexGrid& exams, const QString& name, ReportContent content,
                         const SavePic& savePic);

} // namespace individual
