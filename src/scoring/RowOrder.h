#pragma once

#include "scoring/ExamTable.h"

namespace scoring {

/// The rows of a column in the order of a descending sort: NULL last, equal values in row order.
std::vector<size_t> descendingRows(const TableColumn& column, size_t rows);

} // namespace scoring
