#pragma once

#include <QCache>
#include <QImage>

#include "workbooks/model/Picture.h"

namespace excel {

/// The pictures of sheets, decoded. One is decoded once, as long as those that were shown last do
/// not take too much room together.
class PictureImages
{
public:
    PictureImages();

    /// Null if the bytes are no picture.
    QImage imageOf(const Picture& picture);

private:
    struct Decoded
    {
        QByteArray bytes; // shared with the picture, so that no other one stands at their place
        QImage image;
    };

    QCache<const char*, Decoded> m_decoded; // by the place of the bytes; the cost is in bytes
};

} // namespace excel
