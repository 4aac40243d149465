#pragma once

#include "platform/grid/FlexGrid.h"
#include "platform/runtime/Progress.h"
#include "statistics/ReportContext.h"
#include "workbench/Selection.h"
#include "workbooks/model/Application.h"

namespace workbench {

/// "执行统计": fills the grid with the report of the item that is chosen in Combo3, for the
/// selected exams. All four rates run as 各科优秀率, and an item that is none of the button's does
/// nothing. False after a message if exams or the item are missing.
bool CommandZXTJ_Click(const Selection& selection, statistics::ReportContext& context,
                       grid::FlexGrid& grid);

/// "综合分析" of the list's current exam, selected or not; several selected ones are refused with a
/// message. Takes the spreadsheet instance from `openExcel` once it is needed.
void Command2_Click(const Selection& selection, statistics::ReportContext& context,
                    const std::function<excel::Application&()>& openExcel,
                    runtime::Progress& progress);

} // namespace workbench
