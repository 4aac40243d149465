#pragma once

#include <QByteArray>
#include <QRectF>
#include <QSize>
#include <QString>

#include "workbooks/model/Changes.h"

namespace excel {

/// A picture that lies over the cells. Places and sizes are in points from the sheet's corner;
/// setting one is a change of the workbook.
class Picture
{
public:
    /// At the sheet's corner in its natural size.
    Picture(QByteArray bytes, Changes& changes);

    /// The file's bytes: PNG, JPEG or BMP.
    const QByteArray& bytes() const { return m_bytes; }

    double Left() const { return m_place.x(); }
    double Top() const { return m_place.y(); }
    double Width() const { return m_place.width(); }
    double Height() const { return m_place.height(); }
    QRectF place() const { return m_place; }

    void setLeft(double points);
    void setTop(double points);
    void setWidth(double points);
    void setHeight(double points);

private:
    QByteArray m_bytes;
    QRectF m_place;
    Changes& m_changes;
};

/// The bytes of a picture file. Throws runtime::Error if it cannot be read or is no PNG, JPEG or
/// BMP picture.
QByteArray readPicture(const QString& path);

/// Width and height in pixels, empty if the bytes are no such picture.
QSize pictureSize(const QByteArray& bytes);

} // namespace excel
