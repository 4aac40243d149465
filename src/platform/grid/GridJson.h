#pragma once

#include <QJsonObject>

#include "platform/grid/FlexGrid.h"

namespace grid {

/// The grid as an object with the members "Rows", "Cols", "FixedRows", "MergeRow" and "MergeCol"
/// (ascending numbers of the marked ones), "TextMatrix" (rows of texts) and "ColWidth" (twips by
/// column number, as they were set; "-1" is the width of all others).
QJsonObject gridJson(const FlexGrid& grid);

} // namespace grid
