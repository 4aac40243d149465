#include <gtest/gtest.h>

#include "workbooks/BookFiles.h"
#include "workbooks/model/Picture.h"
#include "workbooks/model/PictureResolution.h"
#include "workbooks/writers/SampleBook.h"

namespace {

QByteArray big32(quint32 number)
{
    QByteArray bytes = u32(number);
    std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

QByteArray chunk(const QByteArray& name, const QByteArray& content)
{
    return big32(quint32(content.size())) + name + content + u32(0);
}

/// 300 x 200 pixels with these chunks in front of the picture.
QByteArray png(const QByteArray& chunks)
{
    return "\x89PNG\r\n\x1A\n" + chunk("IHDR", big32(300) + big32(200) + QByteArray(5, 0)) + chunks
           + chunk("IDAT", QByteArray(20, 0));
}

QByteArray pngOf(quint32 across, quint32 down, int unit)
{
    return png(chunk("pHYs", big32(across) + big32(down) + u8(unit)));
}

QByteArray bmpOf(quint32 across, quint32 down)
{
    return "BM" + QByteArray(16, 0) + u32(300) + u32(quint32(-200)) + QByteArray(12, 0)
           + u32(across) + u32(down) + QByteArray(8, 0);
}

QByteArray jpegOf(int unit, const QByteArray& across, const QByteArray& down)
{
    return QByteArray::fromHex("ffd8ffe00010") + QByteArray("JFIF\0\1\1", 7) + u8(unit)
           + QByteArray::fromHex(across) + QByteArray::fromHex(down) + QByteArray(2, 0)
           + QByteArray::fromHex("ffc000110800c8012c030000");
}

} // namespace

TEST(Picture, SizesAreReadFromTheirHeads)
{
    const QByteArray bmp = "BM" + QByteArray(16, '\0') + u32(300) + u32(quint32(-200));
    const QByteArray jpeg = QByteArray::fromHex("ffd8ffe0000400ffffc000110800c8012c030000");
    EXPECT_EQ(excel::pictureSize(bmp), QSize(300, 200));
    EXPECT_EQ(excel::pictureSize(jpeg), QSize(300, 200));
    EXPECT_EQ(excel::pictureSize(samplePng()), QSize(2, 1));
    for (const QByteArray& whole : {bmp, jpeg, samplePng()}) {
        for (qsizetype length = 0; length < 13; ++length)
            EXPECT_TRUE(excel::pictureSize(whole.left(length)).isEmpty());
    }
}

TEST(Picture, TheResolutionOfItsFileGivesItsSizeInPoints)
{
    const QSizeF screen(96, 96);
    const struct
    {
        const char* what;
        QByteArray bytes;
        QSizeF resolution;
    } cases[] = {
        {"PNG of a screen", pngOf(3780, 3780, 1), screen},
        {"PNG for print", pngOf(11811, 11811, 1), {300, 300}},
        {"PNG of tall pixels", pngOf(5669, 2835, 1), {144, 72}},
        {"PNG behind another chunk",
         png(chunk("tEXt", "a") + pngOf(2835, 2835, 1).mid(33, 21)),
         {72, 72}},
        {"PNG that names a ratio alone", pngOf(11811, 11811, 0), screen},
        {"PNG without", png({}), screen},
        {"PNG of nothing", pngOf(0, 0, 1), screen},
        {"PNG of one dot", pngOf(11811, 1, 1), screen},
        {"PNG of too many", pngOf(0xFFFFFFFF, 0xFFFFFFFF, 1), screen},
        {"PNG with a chunk beyond its end", png(big32(0xFFFFFFF0) + "tEXt"), screen},
        {"PNG cut off", pngOf(11811, 11811, 1).left(48), screen},
        {"BMP for print", bmpOf(11811, 11811), {300, 300}},
        {"BMP without", bmpOf(0, 0), screen},
        {"BMP below nothing", bmpOf(quint32(-11811), 11811), screen},
        {"BMP cut off", bmpOf(11811, 11811).left(45), screen},
        {"JPEG of inches", jpegOf(1, "012c", "0096"), {300, 150}},
        {"JPEG of centimetres", jpegOf(2, "0076", "0076"), {300, 300}},
        {"JPEG that names a ratio alone", jpegOf(0, "0001", "0001"), screen},
        {"JPEG without", QByteArray::fromHex("ffd8ffe1000400ffffc000110800c8012c030000"), screen},
    };
    for (const auto& [what, bytes, resolution] : cases) {
        EXPECT_EQ(excel::pictureResolution(bytes), resolution) << what;
        EXPECT_EQ(excel::naturalSize(bytes),
                  QSizeF(300 * 72 / resolution.width(), 200 * 72 / resolution.height()))
            << what;
    }
}
