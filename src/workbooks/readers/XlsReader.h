#pragma once

#include <memory>

#include <QByteArray>

#include "workbooks/model/Workbook.h"
#include "workbooks/readers/Budget.h"

namespace excel {

/// Reads the record stream of an .xls file (versions 5 to 8). Throws ReadFailure, or
/// runtime::BytesCutOff where it ends too early.
std::unique_ptr<Workbook> readXls(const QString& path, const QByteArray& bytes, Budget& budget);

} // namespace excel
