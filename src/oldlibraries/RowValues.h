#pragma once

#include <vector>

#include "oldlibraries/ConversionReport.h"
#include "oldlibraries/OldRows.h"
#include "platform/database/Statement.h"

namespace oldlibraries {

/// The value of a column in the row on which `rows` stands, as a library of ours holds it: dates
/// and the numbers of objects as texts, amounts as numbers.
runtime::Value libraryValue(OldRows& rows, const OldColumn& column, int place);

/// True if the column of a row of the new library holds this value.
bool isStored(const runtime::Value& value, const database::Statement& row, int column);

/// What a user has to know of a value, as the end of a sentence; "" for an ordinary one.
QString oddity(const runtime::Value& value);

} // namespace oldlibraries
