#pragma once

#include <string>

#include <QString>

#include "workbooks/model/Chart.h"

namespace excel {

/// A chart as the part of a file. The library writes it; the place of the plot, which it does not
/// know, is put in. `sheetName` is the name that the sheet has in the file, `number` counts the
/// charts of the file from 1. The values that the cells hold now go with it, for programs that show
/// a file without computing it.
std::string chartPart(const Worksheet& sheet, const QString& sheetName, const Chart& chart,
                      int number);

} // namespace excel
