#pragma once

#include <string_view>

#include <QString>

#include "platform/runtime/ByteCursor.h"

namespace oldlibraries {

/// A Decimal from its sign and 128 bits, written with all its `scale` decimals. Throws
/// runtime::BytesCutOff.
QString decimalText(runtime::ByteCursor bytes, int scale);

/// A Currency, which is counted in ten-thousandths, written with its four decimals.
QString currencyText(qint64 units);

/// A Guid from its 16 bytes, in braces. Throws runtime::BytesCutOff.
QString guidText(std::string_view bytes);

} // namespace oldlibraries
