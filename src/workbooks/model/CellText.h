#pragma once

#include <QString>

#include "platform/runtime/Value.h"

namespace excel {

/// What a cell holds after this text was put into it: a number if the number reads back as the
/// same text ("-1", "85.5"), otherwise the text itself ("0805", "5/1/6", "1e5", "1.50"). An empty
/// text leaves the cell empty.
runtime::Value cellFromText(const QString& text);

} // namespace excel
