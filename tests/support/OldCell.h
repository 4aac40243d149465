#pragma once

#include "oldlibraries/OldRows.h"
#include "platform/runtime/Value.h"

namespace support {

/// A cell as the reader gives it, a Currency as a number.
inline runtime::Value oldCell(oldlibraries::OldRows& rows, int column, oldlibraries::OldType type)
{
    using oldlibraries::OldType;
    if (rows.isNull(column))
        return {};
    switch (type) {
    case OldType::Boolean:
        return rows.boolean(column);
    case OldType::Byte:
    case OldType::Integer:
    case OldType::Long:
        return rows.integer(column);
    case OldType::Single:
    case OldType::Double:
    case OldType::DateTime:
        return rows.real(column);
    case OldType::Currency:
        return rows.text(column).toDouble();
    case OldType::Binary:
    case OldType::LongBinary:
        return rows.bytes(column);
    default:
        return rows.text(column);
    }
}

} // namespace support
