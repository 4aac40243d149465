#pragma once

#include "platform/grid/FlexGrid.h"
#include "workbooks/model/Application.h"

namespace shell {

/// Copies the whole grid, merged as GridBlockToSheet does, to the first sheet of a new workbook,
/// which stays open and unsaved. Failures are shown.
void copyGridToWorkbook(const grid::FlexGrid& grid, excel::Application& application);

} // namespace shell
