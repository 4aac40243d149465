#pragma once

#include <vector>

#include "oldlibraries/PageFile.h"

namespace oldlibraries {

/// The numbers of the pages that hold the rows of a table, ascending, which is the order in which
/// rows came. `map` is where the table's definition says that they are written. Throws
/// OldFileError.
std::vector<quint32> usedPages(PageFile& file, RowPlace map);

} // namespace oldlibraries
