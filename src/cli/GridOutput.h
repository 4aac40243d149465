#pragma once

#include "cli/Session.h"
#include "platform/grid/FlexGrid.h"

namespace cli {

/// Prints a grid as tab-separated text ("tsv") or as the JSON object that all grids are printed as,
/// with the SQL text that filled it and the messages shown.
void printGrid(const Session& session, const grid::FlexGrid& grid, const QString& sql,
               const QString& format);

} // namespace cli
