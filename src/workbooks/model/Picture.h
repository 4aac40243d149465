#pragma once

#include <QByteArray>
#include <QSize>
#include <QString>

namespace excel {

/// A picture that lies over the cells. Places and sizes are in points from the sheet's corner.
struct Picture
{
    /// The file's bytes: PNG, JPEG or BMP.
    QByteArray bytes;
    double Left = 0;
    double Top = 0;
    double Width = 0;
    double Height = 0;
};

/// Reads a picture file in its natural size, a pixel being 3/4 point. Throws runtime::Error if it
/// cannot be read or is no PNG, JPEG or BMP picture.
Picture readPicture(const QString& path);

/// Width and height in pixels, empty if the bytes are no such picture.
QSize pictureSize(const QByteArray& bytes);

} // namespace excel
