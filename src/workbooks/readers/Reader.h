#pragma once

#include <memory>

#include "workbooks/model/Workbook.h"
#include "workbooks/readers/ReadError.h"

namespace excel {

/// Reads a workbook file, .xlsx or .xls by its content, whatever its name ends with. Formulas give
/// the results that the file holds, or Null where it holds none; hidden and filtered rows are read
/// too. Any file costs at most about 2 s and 500 MB. Throws ReadError.
std::unique_ptr<Workbook> readWorkbook(const QString& path);

} // namespace excel
