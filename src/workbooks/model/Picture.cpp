#include "workbooks/model/Picture.h"

#include <cstdlib>

#include <QFile>
#include <QtEndian>

#include "platform/runtime/Error.h"
#include "workbooks/model/PictureResolution.h"
#include "workbooks/model/Points.h"

namespace excel {

namespace {

using namespace Qt::StringLiterals;

template <typename Number> int bigAt(const QByteArray& bytes, qsizetype place)
{
    return int(qFromBigEndian<Number>(bytes.constData() + place));
}

QSize pngSize(const QByteArray& bytes)
{
    if (!bytes.startsWith("\x89PNG\r\n\x1A\n") || bytes.size() < 24)
        return {};
    return {bigAt<qint32>(bytes, 16), bigAt<qint32>(bytes, 20)};
}

QSize bmpSize(const QByteArray& bytes)
{
    if (!bytes.startsWith("BM") || bytes.size() < 26)
        return {};
    const int height = qFromLittleEndian<qint32>(bytes.constData() + 22);
    return {qFromLittleEndian<qint32>(bytes.constData() + 18), std::abs(height)};
}

/// True for the marker of a frame header, which holds the size.
bool isFrame(int marker)
{
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

QSize jpegSize(const QByteArray& bytes)
{
    if (!bytes.startsWith("\xFF\xD8\xFF"))
        return {};
    qsizetype place = 2;
    while (place + 9 <= bytes.size()) {
        const int marker = quint8(bytes[place + 1]);
        if (isFrame(marker))
            return {bigAt<quint16>(bytes, place + 7), bigAt<quint16>(bytes, place + 5)};
        place += 2 + bigAt<quint16>(bytes, place + 2);
    }
    return {};
}

} // namespace

QSize pictureSize(const QByteArray& bytes)
{
    for (const auto measure : {pngSize, bmpSize, jpegSize}) {
        const QSize size = measure(bytes);
        if (!size.isEmpty())
            return size;
    }
    return {};
}

QByteArray readPicture(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw runtime::Error(u"无法读取图片文件 "_s + path + u"。"_s);
    QByteArray bytes = file.readAll();
    if (pictureSize(bytes).isEmpty())
        throw runtime::Error(path + u" 不是可以插入的图片（PNG、JPEG 或 BMP）。"_s);
    return bytes;
}

QSizeF naturalSize(const QByteArray& bytes)
{
    const QSize pixels = pictureSize(bytes);
    const QSizeF resolution = pictureResolution(bytes);
    return {pixels.width() * pointsPerInch / resolution.width(),
            pixels.height() * pointsPerInch / resolution.height()};
}

Picture::Picture(QByteArray bytes, Changes& changes)
    : Shape({QPointF(), naturalSize(bytes)}, changes), m_bytes(std::move(bytes))
{
}

} // namespace excel
