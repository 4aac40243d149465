#pragma once

#include <optional>

#include "platform/grid/FlexGrid.h"

namespace grid {

/// The next cell that contains the text in either case, from the cell `from` on and around the end;
/// without `from`, from the last cell on. Columns without width are passed over, and a merged block
/// is found at its first cell.
std::optional<CellPlace> findCell(const FlexGrid& grid, const std::optional<CellPlace>& from,
                                  const QString& text, Qt::SortOrder direction);

} // namespace grid
