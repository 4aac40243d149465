#pragma once

#include <functional>

#include "export/ScoreExportRequest.h"
#include "platform/runtime/Progress.h"
#include "workbooks/model/Application.h"

namespace exporting {

/// How an export ended. Refused says by its message what is not chosen; nothing was written.
enum class ExportEnd { Refused, Cancelled, Finished };

/// The text 正在导出成绩... on the screen.
enum class RunningText { Shown, Hidden };

struct ScoreExportResult
{
    ExportEnd end = ExportEnd::Refused;
    /// What was filled; nothing after a refusal.
    excel::Workbook* book = nullptr;
};

/// 导出成绩到Excel: a workbook with a block of rows for each student of the chosen classes, a row
/// for each chosen exam under a heading row, averages below them, and a chart of the ranks where
/// the layout has one. It stays open and unsaved in the application that answers, or in a new one;
/// so does what was filled until 取消. A statement that fails is shown, and the next one runs.
ScoreExportResult exportScores(
    library::ScoreLibrary& scoreLibrary, const ScoreExportRequest& request,
    excel::Applications& applications, runtime::Progress& progress,
    const std::function<void(RunningText)>& tellRunning = [](RunningText) {});

} // namespace exporting
