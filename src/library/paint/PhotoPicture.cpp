#include "library/paint/PhotoPicture.h"

#include <QImageReader>

#include "platform/runtime/Error.h"

namespace library {

using namespace Qt::StringLiterals;

namespace {

QString whyUnread(QImageReader::ImageReaderError error)
{
    switch (error) {
    case QImageReader::FileNotFoundError:
        return u"照片文件不存在。"_s;
    case QImageReader::DeviceError:
        return u"照片文件无法读取。"_s;
    default:
        return u"照片不是图片，或已损坏，或太大。"_s;
    }
}

/// The bounds of the picture as the camera wrote it, before it is turned upright.
QSize unturned(const QSize& bounds, QImageIOHandler::Transformations turn)
{
    return turn & QImageIOHandler::TransformationRotate90 ? bounds.transposed() : bounds;
}

} // namespace

QImage readPhoto(const QString& path, const QSize& most)
{
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    // A camera's picture is not unpacked to its full size.
    const QSize size = reader.size();
    const QSize bounds = unturned(most, reader.transformation());
    if (size.width() > bounds.width() || size.height() > bounds.height())
        reader.setScaledSize(size.scaled(bounds, Qt::KeepAspectRatio).expandedTo({1, 1}));
    QImage picture = reader.read();
    if (picture.isNull())
        throw runtime::Error(whyUnread(reader.error()));
    return picture;
}

} // namespace library
