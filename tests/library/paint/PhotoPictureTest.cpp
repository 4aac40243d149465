#include "library/paint/PhotoPicture.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QTemporaryDir>

#include "support/ErrorOf.h"
#include "support/FileBytes.h"
#include "support/PrintQString.h"

namespace library {

namespace {

using namespace Qt::StringLiterals;

/// How a camera was held, as its file says.
constexpr char Upright = 1;
constexpr char UpsideDown = 3;
constexpr char OnItsSide = 6;

class PhotoPicture : public testing::Test
{
protected:
    /// The file of a camera: a picture whose left half is red and whose right half is blue.
    QString photo(const QSize& size, char orientation) const
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::blue);
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width() / 2; ++x)
                image.setPixelColor(x, y, Qt::red);
        }
        QBuffer jpeg;
        jpeg.open(QIODevice::WriteOnly);
        EXPECT_TRUE(image.save(&jpeg, "JPEG"));
        const QByteArray note = QByteArray::fromHex("FFE1001E") + QByteArray("Exif\0\0", 6)
                                + QByteArray::fromHex("49492A0008000000"
                                                      "0100"
                                                      "1201030001000000")
                                + orientation + QByteArray(3, '\0');
        return file(jpeg.data().left(2) + note + jpeg.data().mid(2));
    }

    QString file(const QByteArray& bytes) const
    {
        const QString path = folder.filePath(u"照片.dat"_s);
        support::write(path, bytes);
        return path;
    }

    QTemporaryDir folder;
};

bool isRed(const QColor& color)
{
    return color.red() > 150 && color.blue() < 100;
}

TEST_F(PhotoPicture, ComesWithinTheBoundsHoweverTheCameraWasHeld)
{
    struct Row
    {
        char orientation;
        QSize most;
        QSize expected;
    };
    for (const Row& row :
         {Row{Upright, {100, 60}, {80, 60}}, Row{UpsideDown, {40, 90}, {40, 30}},
          Row{OnItsSide, {100, 60}, {45, 60}}, Row{OnItsSide, {60, 100}, {60, 80}},
          Row{OnItsSide, {40, 1000}, {40, 53}}, Row{Upright, {400, 300}, {400, 300}},
          Row{OnItsSide, {300, 400}, {300, 400}}})
        EXPECT_EQ(readPhoto(photo({400, 300}, row.orientation), row.most).size(), row.expected)
            << int(row.orientation) << " within " << row.most.width() << "x" << row.most.height();
}

TEST_F(PhotoPicture, StandsUpright)
{
    const QImage turned = readPhoto(photo({400, 300}, OnItsSide), {60, 60});
    EXPECT_TRUE(isRed(turned.pixelColor(22, 5))) << "its left was up";
    EXPECT_FALSE(isRed(turned.pixelColor(22, 55)));
}

TEST_F(PhotoPicture, OfAFileThatHoldsNoneIsAFailure)
{
    EXPECT_EQ(support::errorOf([&] {
                  readPhoto(file("no picture"), {60, 60});
              }),
              u"照片不是图片，或已损坏，或太大。"_s);
    EXPECT_EQ(support::errorOf([&] {
                  readPhoto(folder.filePath(u"无.jpg"_s), {60, 60});
              }),
              u"照片文件不存在。"_s);
}

} // namespace

} // namespace library
