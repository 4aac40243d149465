#pragma once

#include <QImage>
#include <QString>

namespace library {

/// The picture of a photo file, upright, whatever the file's extension; one that is larger than
/// `most` comes within it. Throws runtime::Error for a file that is missing, unreadable or no
/// picture.
QImage readPhoto(const QString& path, const QSize& most);

} // namespace library
