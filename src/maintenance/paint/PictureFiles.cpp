#include "maintenance/paint/PictureFiles.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QPainter>

#include "maintenance/JpegMarkers.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/FileErrors.h"
#include "platform/runtime/QuietLibraries.h"

namespace maintenance {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largeFile = qint64(5) * 1024 * 1024;
constexpr int largeSide = 2000;
constexpr int smallerHeight = 600;
constexpr int smallerQuality = 85;
/// What a reader unpacks in one go takes 4 bytes a pixel, and Qt gives it 128 MB.
constexpr qint64 pixelsInMemory = 32'000'000;
/// What it gives line by line is scaled on the way.
constexpr qint64 pixelsByLine = 250'000'000;

/// A file that its reader has taken for a picture.
class PictureFile
{
public:
    /// Throws runtime::Error.
    explicit PictureFile(const QString& path) : m_path(path), m_file(path)
    {
        // Opening a pipe would wait for somebody to write.
        if (!QFileInfo(path).isFile() || !m_file.open(QIODevice::ReadOnly))
            throw runtime::Error(u"无法读取照片文件“%1”（%2）。"_s.arg(
                path, runtime::fileErrorText(m_file.error())));
        const std::optional<JpegMarkers> jpeg = readJpegMarkers(m_file);
        m_file.seek(0);
        m_isJpeg = jpeg.has_value();
        if (!m_isJpeg)
            m_quiet.emplace();
        m_reader.setDevice(&m_file);
        m_reader.setDecideFormatFromContent(true);
        m_reader.setAutoTransform(true);
        // The markers tell it sooner than the reader.
        m_size = jpeg && !jpeg->size.isEmpty() ? jpeg->size : m_reader.size();
        if (m_size.isEmpty())
            refuse(u"不是图片，或已损坏"_s);
        if (jpeg && !jpeg->isWhole)
            refuse(u"不完整，可能没有复制完"_s);
        if (pixels() > (jpeg && jpeg->isSequential ? pixelsByLine : pixelsInMemory))
            refuse(u"有 %1×%2 像素，太大了"_s.arg(m_size.width()).arg(m_size.height()));
    }

    /// The end of other files than JPEG shows when they are read. Throws runtime::Error.
    void checkToTheEnd()
    {
        if (!m_isJpeg)
            read();
    }

    PhotoSize photoSize() const
    {
        const bool isLarge =
            m_file.size() > largeFile || std::max(m_size.width(), m_size.height()) > largeSide;
        return isLarge ? PhotoSize::Large : PhotoSize::Ordinary;
    }

    /// Upright, with these bounds, never larger than it is. Throws runtime::Error.
    QImage readWithin(QSize bounds)
    {
        // The reader scales before it turns.
        if (m_reader.transformation() & QImageIOHandler::TransformationRotate90)
            bounds.transpose();
        if (m_size.width() > bounds.width() || m_size.height() > bounds.height())
            m_reader.setScaledSize(m_size.scaled(bounds, Qt::KeepAspectRatio).expandedTo({1, 1}));
        return read();
    }

private:
    qint64 pixels() const { return qint64(m_size.width()) * m_size.height(); }

    QImage read()
    {
        QImage image = m_reader.read();
        if (image.isNull())
            refuse(u"不是图片，或已损坏"_s);
        return image;
    }

    [[noreturn]] void refuse(const QString& reason) const
    {
        throw runtime::Error(u"照片文件“%1”%2。"_s.arg(m_path, reason));
    }

    QString m_path;
    QFile m_file;
    std::optional<runtime::QuietStderr> m_quiet;
    QImageReader m_reader;
    QSize m_size;
    bool m_isJpeg = false;
};

/// What is transparent would become black.
QImage onWhite(const QImage& picture)
{
    if (!picture.hasAlphaChannel())
        return picture;
    QImage white(picture.size(), QImage::Format_RGB32);
    white.fill(Qt::white);
    QPainter(&white).drawImage(0, 0, picture);
    return white;
}

} // namespace

PhotoSize PictureFiles::check(const QString& path) const
{
    PictureFile file(path);
    // A file that was read to its end no longer tells its size.
    const PhotoSize size = file.photoSize();
    file.checkToTheEnd();
    return size;
}

QByteArray PictureFiles::smaller(const QString& path) const
{
    const QImage picture = onWhite(PictureFile(path).readWithin({largeSide, smallerHeight}));
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!picture.save(&buffer, "JPEG", smallerQuality))
        throw runtime::Error(u"照片文件“%1”无法改成较小的图片。"_s.arg(path));
    return buffer.data();
}

} // namespace maintenance
