#pragma once

#include <optional>

#include <QDate>

#include "platform/runtime/Value.h"

namespace importing {

/// The day that a cell means: a date, a number as days since 1899-12-30, or a text such as
/// 2009-7-31, 2009/7/31, 2009.7.31, 2009年7月31日 or 20090731; without a day it is the first of the
/// month. A time of day is dropped. Nothing if it is no date.
std::optional<QDate> cellDate(const runtime::Value& cell);

} // namespace importing
