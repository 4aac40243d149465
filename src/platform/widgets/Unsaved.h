#pragma once

#include <functional>

#include <QString>

namespace widgets {

/// Asks before changes that nobody saved would be lost; 保存 runs `save`. True if they are settled:
/// saved, or not wanted.
bool settleUnsaved(const QString& text, const std::function<bool()>& save);

} // namespace widgets
