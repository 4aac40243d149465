#pragma once

#include <QString>

#include "oldlibraries/ConversionReport.h"
#include "platform/grid/FlexGrid.h"
#include "workbooks/model/Worksheet.h"

namespace oldlibraries {

/// So many characters of a value are shown in a grid and in a text.
inline constexpr qsizetype longestShownValue = 200;
/// So many findings are shown in a grid and in a sheet; a last line tells how many more there are.
inline constexpr qsizetype mostShownFindings = 20'000;
inline constexpr qsizetype mostFindingsOnSheet = 100'000;

/// The report as a table of 表, 行, 列, 值 and 处理: both files, how to compute anew what is
/// derived, the tables with their rows, then the findings. Line breaks, tabs and control characters
/// are shown by signs, so that every value stays on its row.
grid::FlexGrid reportGrid(const ConversionReport& report);

/// The same with all findings, cells separated by tabs and each row ended by a line break, which a
/// value has as \t, \r and \n, and a backslash as \\.
QString reportText(const ConversionReport& report);

/// The same on an empty sheet, with the values as the findings have them.
void fillReport(excel::Worksheet& sheet, const ConversionReport& report);

/// Writes the report in place of an older file, as a workbook if the name ends in .xlsx and as
/// UTF-8 text otherwise. Throws runtime::Error; the older file stands as it was then.
void saveReport(const ConversionReport& report, const QString& path);

} // namespace oldlibraries
