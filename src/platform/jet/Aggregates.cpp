#include "platform/jet/ConnectionPrivate.h"

#include <cmath>

namespace jet {

namespace {

/// Running mean and sum of squared distances (Welford 1962): exactly 0 for equal values, which the
/// textbook difference of two large sums is not.
struct Deviation
{
    qint64 count;
    double mean;
    double squares;
};

void stdevStep(sqlite3_context* context, int, sqlite3_value** values)
{
    if (sqlite3_value_type(values[0]) == SQLITE_NULL)
        return;
    auto* state = static_cast<Deviation*>(sqlite3_aggregate_context(context, sizeof(Deviation)));
    if (!state)
        return sqlite3_result_error_nomem(context);
    const double value = sqlite3_value_double(values[0]);
    ++state->count;
    const double distance = value - state->mean;
    state->mean += distance / double(state->count);
    state->squares += distance * (value - state->mean);
}

void stdevFinal(sqlite3_context* context)
{
    const auto* state = static_cast<Deviation*>(sqlite3_aggregate_context(context, 0));
    if (!state || state->count < 2)
        return sqlite3_result_null(context);
    sqlite3_result_double(context, std::sqrt(state->squares / double(state->count - 1)));
}

} // namespace

void addAggregates(sqlite3* handle)
{
    sqlite3_create_function_v2(handle, "stdev", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                               nullptr, stdevStep, stdevFinal, nullptr);
}

} // namespace jet
