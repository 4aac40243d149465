#pragma once

#include "workbooks/model/Workbook.h"

namespace excel {

/// Writes a workbook as an .xlsx file, in place of an older file of that name: the new one stands
/// complete, or the older one stays. What a file cannot hold is made to fit: names of sheets that
/// no sheet can have, texts beyond 32,767 characters, control characters, merges in each other's
/// way. Throws runtime::Error with a sentence that says why the file cannot be written.
void writeXlsx(const Workbook& book, const QString& path);

} // namespace excel
