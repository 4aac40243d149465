#pragma once

#include <QDate>

namespace excel {

/// The day that spreadsheets count days from; a time without a day stands on it.
inline QDate dayZero()
{
    return {1899, 12, 30};
}

constexpr int secondsPerDay = 86'400;

} // namespace excel
