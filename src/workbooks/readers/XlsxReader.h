#pragma once

#include <memory>

#include "workbooks/model/Workbook.h"
#include "workbooks/readers/Budget.h"

namespace excel {

/// Reads a zip file as an .xlsx workbook. Throws ReadFailure.
std::unique_ptr<Workbook> readXlsx(const QString& path, Budget& budget);

} // namespace excel
