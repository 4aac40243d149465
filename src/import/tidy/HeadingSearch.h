#pragma once

#include "import/tidy/HeadingWords.h"

namespace tidy {

/// The rows in which the headings of a sheet stand: those, among its first ones, in which the most
/// are known, a name or a number of students among them. Count 0 if there are none.
HeadingRows findHeading(const SheetView& view, const HeadingWords& words);

} // namespace tidy
