#pragma once

#include <QJsonObject>

#include "workbooks/model/Workbook.h"

namespace excel {

/// A workbook as JSON, for programs that look at what was filled in: "sheets", the names in order,
/// and "content" by name: "cells" ("row,column" to text), "merges" and "borders" (blocks
/// [row, column, last row, last column]). Rows and columns count from 1.
QJsonObject bookJson(Workbook& book);

} // namespace excel
