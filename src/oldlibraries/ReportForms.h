#pragma once

#include <QString>

#include "oldlibraries/ConversionReport.h"
#include "platform/grid/FlexGrid.h"

namespace oldlibraries {

/// The report as a table of 表, 行, 列, 值 and 处理: both files, how to compute anew what is
/// derived, the tables with their rows, then the findings. Line breaks, tabs and control characters
/// are shown by signs, so that every value stays on its row.
grid::FlexGrid reportGrid(const ConversionReport& report);

/// The same with all findings, cells separated by tabs and each row ended by a line break, which a
/// value has as \t, \r and \n, and a backslash as \\.
QString reportText(const ConversionReport& report);

/// Writes the report in place of an older file: if the name ends in .xlsx as a workbook, with the
/// values as the findings have them, otherwise as reportText(), in UTF-8. Throws runtime::Error;
/// the older file stands as it was then.
void saveReport(const ConversionReport& report, const QString& path);

} // namespace oldlibraries
