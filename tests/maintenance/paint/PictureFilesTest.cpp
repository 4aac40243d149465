#include "maintenance/paint/PictureFiles.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QTemporaryDir>

#include "support/ErrorOf.h"
#include "support/FileBytes.h"
#include "support/PrintQString.h"

namespace maintenance {

namespace {

using namespace Qt::StringLiterals;

class PhotosInFiles : public testing::Test
{
protected:
    QString file(const QString& name, const QByteArray& bytes) const
    {
        support::write(folder.filePath(name), bytes);
        return folder.filePath(name);
    }

    /// A picture whose upper left quarter is red and whose rest is blue.
    static QByteArray picture(int width, int height, const char* format = "JPEG")
    {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(Qt::blue);
        for (int y = 0; y < height / 2; ++y) {
            for (int x = 0; x < width / 2; ++x)
                image.setPixelColor(x, y, Qt::red);
        }
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        EXPECT_TRUE(image.save(&buffer, format));
        return buffer.data();
    }

    /// The JPEG file with the note of a camera about how it was held.
    static QByteArray held(const QByteArray& jpeg, char orientation)
    {
        const QByteArray note = QByteArray::fromHex("FFE1001E") + QByteArray("Exif\0\0", 6)
                                + QByteArray::fromHex("49492A0008000000"
                                                      "0100"
                                                      "1201030001000000")
                                + orientation + QByteArray(3, '\0');
        return jpeg.left(2) + note + jpeg.mid(2);
    }

    /// A JPEG or PNG file that claims a size that its few pixels do not have.
    static QByteArray claiming(QByteArray jpeg, int width, int height)
    {
        const qsizetype frame = jpeg.indexOf("\xFF\xC0");
        EXPECT_GT(frame, 0);
        const char size[] = {char(height >> 8), char(height), char(width >> 8), char(width)};
        return jpeg.replace(frame + 5, 4, QByteArray(size, 4));
    }

    QImage smaller(const QString& path) const
    {
        return QImage::fromData(files.smaller(path), "JPEG");
    }

    QTemporaryDir folder;
    PictureFiles files;
};

TEST_F(PhotosInFiles, ArePicturesByTheirContentWhateverTheirNames)
{
    for (const char* format : {"JPEG", "PNG", "BMP"})
        EXPECT_EQ(files.check(file(u"照片.txt"_s, picture(60, 80, format))), PhotoSize::Ordinary)
            << format;
}

TEST_F(PhotosInFiles, AFileThatIsNoPictureIsRefusedWithItsName)
{
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("text"), QByteArray("\xFF\xD8\xFF\xE0"), QByteArray("%PDF-1.4"),
          QByteArray(100'000, 'x'), QByteArray(100'000, '\0')}) {
        const QString path = file(u"王芳.jpg"_s, bytes);
        EXPECT_EQ(support::errorOf([&] { files.check(path); }),
                  u"照片文件“%1”不是图片，或已损坏。"_s.arg(path));
        EXPECT_EQ(support::errorOf([&] { files.smaller(path); }),
                  u"照片文件“%1”不是图片，或已损坏。"_s.arg(path));
    }
}

TEST_F(PhotosInFiles, AJpegThatWasCopiedInPartIsRefused)
{
    const QByteArray whole = picture(300, 400);
    for (const qsizetype size : {whole.size() / 2, whole.size() - 1}) {
        const QString path = file(u"1.jpg"_s, whole.left(size));
        EXPECT_EQ(support::errorOf([&] { files.check(path); }),
                  u"照片文件“%1”不完整，可能没有复制完。"_s.arg(path));
    }
}

TEST_F(PhotosInFiles, AnotherPictureThatWasCopiedInPartIsRefused)
{
    const QByteArray whole = picture(300, 400, "PNG");
    const QString path = file(u"1.png"_s, whole.left(whole.size() / 2));
    EXPECT_EQ(support::errorOf([&] { files.check(path); }),
              u"照片文件“%1”不是图片，或已损坏。"_s.arg(path));
}

TEST_F(PhotosInFiles, WhatIsNoFileIsRefusedAtOnce)
{
    for (const QString& path :
         {folder.filePath(u"没有.jpg"_s), folder.path(), u"/dev/zero"_s, QString()}) {
        EXPECT_TRUE(support::errorOf([&] {
                        files.check(path);
                    }).startsWith(u"无法读取照片文件“%1”"_s.arg(path)))
            << path.toStdString();
    }
}

TEST_F(PhotosInFiles, AreLargeAboveTwoThousandPixelsOrFiveMegabytes)
{
    constexpr int limit = 5 * 1024 * 1024;
    const QByteArray few = picture(10, 10);
    struct Case
    {
        QByteArray bytes;
        PhotoSize size;
    };
    for (const Case& c : {Case{picture(2000, 10), PhotoSize::Ordinary},
                          {picture(2001, 10), PhotoSize::Large},
                          {picture(10, 2001), PhotoSize::Large},
                          {picture(10, 2001, "PNG"), PhotoSize::Large},
                          {few + QByteArray(limit - few.size(), ' '), PhotoSize::Ordinary},
                          {few + QByteArray(limit - few.size() + 1, ' '), PhotoSize::Large}})
        EXPECT_EQ(files.check(file(u"1.jpg"_s, c.bytes)), c.size) << c.bytes.size();
}

TEST_F(PhotosInFiles, TheSmallerOneIsSixHundredPixelsHigh)
{
    const QImage image = smaller(file(u"1.jpg"_s, picture(2400, 3200)));
    EXPECT_EQ(image.size(), QSize(450, 600));
    EXPECT_GT(image.pixelColor(100, 100).red(), 200);
    EXPECT_GT(image.pixelColor(350, 500).blue(), 200);
}

TEST_F(PhotosInFiles, TheSmallerOneIsNeverLargerThanItWas)
{
    EXPECT_EQ(smaller(file(u"1.jpg"_s, picture(300, 400))).size(), QSize(300, 400));
    EXPECT_EQ(smaller(file(u"1.jpg"_s, picture(8000, 400))).size(), QSize(2000, 100));
    EXPECT_EQ(smaller(file(u"1.jpg"_s, picture(4000, 1))).size(), QSize(2000, 1));
}

TEST_F(PhotosInFiles, TheSmallerOneIsUprightHoweverTheCameraWasHeld)
{
    constexpr char turnedRight = 6;
    const QImage image = smaller(file(u"1.jpg"_s, held(picture(3200, 2400), turnedRight)));
    EXPECT_EQ(image.size(), QSize(450, 600));
    EXPECT_GT(image.pixelColor(350, 100).red(), 200);
    EXPECT_GT(image.pixelColor(100, 100).blue(), 200);
}

TEST_F(PhotosInFiles, WhatIsTransparentIsWhiteInTheSmallerOne)
{
    QImage glass(20, 20, QImage::Format_ARGB32);
    glass.fill(Qt::transparent);
    const QString path = folder.filePath(u"1.png"_s);
    ASSERT_TRUE(glass.save(path));
    EXPECT_EQ(smaller(path).pixelColor(10, 10), QColor(Qt::white));
}

TEST_F(PhotosInFiles, ThoseThatNeedTooMuchMemoryAreRefused)
{
    const QString path = file(u"1.jpg"_s, claiming(picture(16, 16), 65'500, 65'500));
    const QString refusal = u"照片文件“%1”有 65500×65500 像素，太大了。"_s.arg(path);
    EXPECT_EQ(support::errorOf([&] { files.check(path); }), refusal);
    EXPECT_EQ(support::errorOf([&] { files.smaller(path); }), refusal);
}

} // namespace

} // namespace maintenance
