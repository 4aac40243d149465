#pragma once

#include "platform/runtime/Value.h"

namespace importing {

/// Why a score is bad: nothing in its cell, a negative number, more than the full mark
/// (compared as floats). Empty for a good one. `score` is the cell's number, 0 for a text that is
/// none.
QString badScoreReason(const runtime::Value& cell, double score, float fullMark);

} // namespace importing
