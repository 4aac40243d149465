#pragma once

struct sqlite3;

namespace database {

/// Adds `stdev`, the sample standard deviation.
void addAggregates(sqlite3* handle);

} // namespace database
