#pragma once

#include <memory>

#include "platform/excel/Workbook.h"
#include "platform/excel/readers/Budget.h"

namespace excel {

/// Reads a zip file as an .xlsx workbook. Throws ReadFailure.
std::unique_ptr<Workbook> readXlsx(const QString& path, Budget& budget);

} // namespace excel
