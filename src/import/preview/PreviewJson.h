#pragma once

#include <QByteArray>

#include "import/preview/Preview.h"

namespace importing {

/// The preview as a compact JSON object: the members Title, Warning, Notes, Counts and Entries,
/// with all texts as they are.
QByteArray previewJson(const Preview& preview);

} // namespace importing
