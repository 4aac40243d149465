#pragma once

#include <QByteArray>
#include <QSize>
#include <QString>

#include "workbooks/model/Shape.h"

namespace excel {

/// A picture that lies over the cells.
class Picture : public Shape
{
public:
    /// At the sheet's corner in its natural size.
    Picture(QByteArray bytes, Changes& changes);

    /// The file's bytes: PNG, JPEG or BMP.
    const QByteArray& bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
};

/// The bytes of a picture file. Throws runtime::Error if it cannot be read or is no PNG, JPEG or
/// BMP picture.
QByteArray readPicture(const QString& path);

/// Width and height in pixels, empty if the bytes are no such picture.
QSize pictureSize(const QByteArray& bytes);

/// Width and height in points, by the pixels and the resolution.
QSizeF naturalSize(const QByteArray& bytes);

} // namespace excel
