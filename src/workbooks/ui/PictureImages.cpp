#include "workbooks/ui/PictureImages.h"

namespace excel {

namespace {

constexpr qsizetype mostBytes = 64LL * 1024 * 1024;

} // namespace

PictureImages::PictureImages() : m_decoded(mostBytes) {}

QImage PictureImages::imageOf(const Picture& picture)
{
    const char* key = picture.bytes().constData();
    if (const Decoded* known = m_decoded.object(key))
        return known->image;
    QImage image = QImage::fromData(picture.bytes());
    m_decoded.insert(key, new Decoded{picture.bytes(), image}, image.sizeInBytes());
    return image;
}

} // namespace excel
