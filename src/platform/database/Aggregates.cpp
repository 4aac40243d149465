#include "platform/database/Aggregates.h"

#include <sqlite3.h>

#include "platform/runtime/Deviation.h"

namespace database {

using runtime::Deviation;

namespace {

void stdevStep(sqlite3_context* context, int, sqlite3_value** values)
{
    if (sqlite3_value_type(values[0]) == SQLITE_NULL)
        return;
    // The engine hands out zeroed memory, which is a Deviation of no value.
    auto* state = static_cast<Deviation*>(sqlite3_aggregate_context(context, sizeof(Deviation)));
    if (!state)
        return sqlite3_result_error_nomem(context);
    state->add(sqlite3_value_double(values[0]));
}

void stdevFinal(sqlite3_context* context)
{
    const auto* state = static_cast<Deviation*>(sqlite3_aggregate_context(context, 0));
    if (!state || state->count < 2)
        return sqlite3_result_null(context);
    sqlite3_result_double(context, state->result());
}

} // namespace

void addAggregates(sqlite3* handle)
{
    sqlite3_create_function_v2(handle, "stdev", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                               nullptr, stdevStep, stdevFinal, nullptr);
}

} // namespace database
