#pragma once

#include "library/CopyDifferences.h"
#include "library/LibraryCopies.h"
#include "platform/grid/FlexGrid.h"

namespace library {

/// Copies as rows below a heading, numbered from 1: time, what they were made ahead of, size, file.
grid::FlexGrid copiesGrid(const std::vector<LibraryCopy>& copies);

enum class Details { Shown, Hidden };

/// The lines of differences, and with `details` the names behind each in the rows below it.
grid::FlexGrid differencesGrid(const std::vector<DifferenceLine>& lines, Details details);

} // namespace library
