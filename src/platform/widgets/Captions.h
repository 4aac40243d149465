#pragma once

#include <QString>

namespace widgets {

/// A caption without its access key: "导入" for "导入(&I)".
QString withoutAccessKey(const QString& caption);

/// A text as a caption that shows it as it stands: no letter of it becomes an access key.
QString literalCaption(const QString& text);

} // namespace widgets
