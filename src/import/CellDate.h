#pragma once

#include <optional>

#include <QDateTime>

#include "platform/runtime/Value.h"

namespace importing {

/// The day that a cell means, with the time of day if it has one, else midnight, in UTC: a date, a
/// number as days since 1899-12-30 (to the nearest second) up to 2100, or a text such as 2009-7-31,
/// 2009/7/31, 2009.7.31, 2009年7月31日, 7/31/2009, 20090731 or 2009-7-31 8:30; without a day it is
/// the first of the month. Nothing if it is no date.
std::optional<QDateTime> cellDate(const runtime::Value& cell);

} // namespace importing
