#pragma once

#include "workbooks/model/Worksheet.h"

namespace excel {

/// Gives each column of a sheet the width that its widest text needs, counted in character cells of
/// the default font. Cells that are merged over columns do not count; a column without contents or
/// hidden stays as it is. Throws runtime::Error once the sheet is gone.
void autoFitColumns(Worksheet& sheet);

} // namespace excel
