#pragma once

#include <QByteArray>
#include <QSizeF>

namespace excel {

/// The resolution that a PNG, JPEG or BMP file names, in whole dots per inch across and down; that
/// of a screen where it names none, or none that a picture can have.
QSizeF pictureResolution(const QByteArray& bytes);

} // namespace excel
