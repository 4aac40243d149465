#include "library/ui/FormZP.h"

#include <QFile>
#include <QImage>
#include <QLabel>
#include <QRandomGenerator>
#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

class PhotoWindow : public testing::Test
{
protected:
    PhotoWindow()
    {
        owner.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&owner));
    }

    QString picture(const QString& name, int width, int height, Qt::GlobalColor color)
    {
        QImage drawn(width, height, QImage::Format_RGB32);
        drawn.fill(color);
        EXPECT_TRUE(drawn.save(test.file(name), "PNG"));
        return test.file(name);
    }

    QString garbage(const QString& name, int bytes)
    {
        QFile file(test.file(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(bytes, 'x'));
        return file.fileName();
    }

    QColor middle()
    {
        return image->pixmap().toImage().pixelColor(image->pixmap().width() / 2,
                                                    image->pixmap().height() / 2);
    }

    bool showsNoPicture() { return image->pixmap().size() == QImage(noPicture).size(); }

    QRect display() const { return photo.screen()->availableGeometry(); }

    TestLibrary test{{u"语文"_s}};
    QString noPicture = test.paths.dataFile(u"nopic.gif"_s);
    QWidget owner;
    library::FormZP photo{noPicture, &owner};
    QLabel* image = photo.findChild<QLabel*>(u"Image1"_s);
};

TEST_F(PhotoWindow, IsCalledPhotoAndComesUpWithoutTakingTheKeyboard)
{
    EXPECT_EQ(photo.windowTitle(), u"照片"_s);
    EXPECT_FALSE(photo.isVisible());
    photo.LoadPic(picture(u"1.tmp"_s, 30, 40, Qt::red));
    EXPECT_TRUE(photo.isVisible());
    EXPECT_FALSE(photo.isModal());
    EXPECT_TRUE(photo.testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_EQ(photo.parentWidget(), &owner);
    EXPECT_EQ(middle(), QColor(Qt::red));
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(PhotoWindow, TakesTheProportionsOfEachPicture)
{
    struct Size
    {
        int width;
        int height;
    };
    for (const auto& [width, height] :
         {Size{30, 40}, Size{400, 100}, Size{100, 400}, Size{50, 50}}) {
        photo.LoadPic(picture(u"1.png"_s, width, height, Qt::red));
        const double ratio = double(width) / height;
        EXPECT_NEAR(double(photo.width()), ratio * photo.height(), 2 + 2 * ratio);
        EXPECT_EQ(image->geometry(), photo.rect());
    }
}

TEST_F(PhotoWindow, PicturesOfManyShapesDoNotMakeItSmallerAndSmaller)
{
    const QString tall = picture(u"tall.png"_s, 30, 40, Qt::red);
    const QString wide = picture(u"wide.png"_s, 40, 30, Qt::red);
    photo.LoadPic(tall);
    const QSize first = photo.size();
    for (int i = 0; i < 10; ++i) {
        photo.LoadPic(wide);
        photo.LoadPic(tall);
    }
    EXPECT_EQ(photo.size(), first);
}

TEST_F(PhotoWindow, ASizeOfTheUserIsFittedToThePicture)
{
    photo.LoadPic(picture(u"1.png"_s, 100, 200, Qt::red));
    photo.resize(400, 400);
    EXPECT_EQ(photo.size(), QSize(200, 400));
    photo.resize(100, 400);
    EXPECT_EQ(photo.size(), QSize(100, 200));
    photo.resize(150, 600);
    photo.LoadPic(picture(u"2.png"_s, 200, 100, Qt::red));
    EXPECT_EQ(photo.size(), QSize(150, 75));
}

TEST_F(PhotoWindow, StandsInTheTopRightCornerUntilItIsMoved)
{
    photo.LoadPic(picture(u"1.png"_s, 30, 40, Qt::red));
    EXPECT_EQ(photo.frameGeometry().topRight(), display().topRight());
    photo.LoadPic(picture(u"2.png"_s, 80, 40, Qt::red));
    EXPECT_EQ(photo.frameGeometry().topRight(), display().topRight());

    photo.move(100, 150);
    photo.LoadPic(picture(u"3.png"_s, 30, 40, Qt::red));
    EXPECT_EQ(photo.pos(), QPoint(100, 150));
    photo.close();
    photo.LoadPic(picture(u"4.png"_s, 40, 30, Qt::red));
    EXPECT_TRUE(photo.isVisible());
    EXPECT_EQ(photo.pos(), QPoint(100, 150));
}

TEST_F(PhotoWindow, WhatIsNoPictureIsToldAndTheEmptyPictureShown)
{
    photo.LoadPic(picture(u"1.png"_s, 30, 40, Qt::red));
    photo.LoadPic(garbage(u"bad"_s, 100));
    EXPECT_EQ(test.dialogs.failures,
              QStringList{u"照片不是图片，或已损坏，或太大。 - Sub LoadPic/FormZP"_s});
    EXPECT_TRUE(showsNoPicture());
    EXPECT_TRUE(photo.isVisible());
}

TEST_F(PhotoWindow, AMissingFileIsToldAndTheEmptyPictureShown)
{
    photo.LoadPic(test.file(u"absent"_s));
    EXPECT_EQ(test.dialogs.failures, QStringList{u"照片文件不存在。 - Sub LoadPic/FormZP"_s});
    EXPECT_TRUE(showsNoPicture());
}

TEST_F(PhotoWindow, APictureThatIsCutOffIsTold)
{
    QImage noise(200, 200, QImage::Format_RGB32);
    for (int y = 0; y < 200; ++y)
        for (int x = 0; x < 200; ++x)
            noise.setPixel(x, y, QRandomGenerator::global()->generate());
    noise.save(test.file(u"whole.png"_s));
    QFile file(test.file(u"whole.png"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.resize(file.size() / 2));
    photo.LoadPic(file.fileName());
    EXPECT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(showsNoPicture());
}

TEST_F(PhotoWindow, AnAbsentEmptyPictureIsToldOnce)
{
    QFile::remove(noPicture);
    photo.LoadPic(noPicture);
    EXPECT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(image->pixmap().isNull());
}

TEST_F(PhotoWindow, FiftyMegabytesOfPictureOrGarbageAreTaken)
{
    QImage large(4200, 4200, QImage::Format_RGB888);
    large.fill(Qt::blue);
    ASSERT_TRUE(large.save(test.file(u"large.bmp"_s)));
    photo.LoadPic(test.file(u"large.bmp"_s));
    EXPECT_EQ(middle(), QColor(Qt::blue));
    EXPECT_LE(image->pixmap().width(), photo.screen()->size().width());
    photo.LoadPic(garbage(u"large.jpg"_s, 50 << 20));
    EXPECT_TRUE(showsNoPicture());
    EXPECT_EQ(test.dialogs.failures.size(), 1);
}

TEST_F(PhotoWindow, APictureOfOnePixelOrOneLineIsShown)
{
    photo.LoadPic(picture(u"1.png"_s, 1, 1, Qt::red));
    photo.LoadPic(picture(u"2.png"_s, 3000, 1, Qt::green));
    EXPECT_GE(photo.height(), 1);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

} // namespace
