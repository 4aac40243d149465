#pragma once

#include "platform/database/TableColumns.h"
#include "platform/runtime/Value.h"

namespace importing {

/// What a column would hold of a value.
struct ColumnFit
{
    runtime::Value stored;
    /// Why it takes none of it; empty if it takes it.
    QString refusal;
};

ColumnFit fitInto(const database::Column& column, const runtime::Value& value);

} // namespace importing
