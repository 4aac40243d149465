#include "maintenance/JpegMarkers.h"

#include <gtest/gtest.h>

#include <QBuffer>

namespace {

using maintenance::JpegMarkers;

QByteArray segment(const char* marker, const QByteArray& content)
{
    const int length = int(content.size()) + 2;
    return QByteArray::fromHex(marker) + char(length >> 8) + char(length & 0xFF) + content;
}

QByteArray frame(const char* marker, int components)
{
    return segment(marker, QByteArray::fromHex("0800100010") + char(components)
                               + QByteArray(3 * components, '\1'));
}

QByteArray scan(int components)
{
    return segment("FFDA", char(components) + QByteArray(2 * components + 3, '\0'));
}

const QByteArray begin = QByteArray::fromHex("FFD8");
const QByteArray end = QByteArray::fromHex("FFD9");
const QByteArray data("pixels");

std::optional<JpegMarkers> markersOf(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return maintenance::readJpegMarkers(buffer);
}

TEST(JpegMarkers, AFileThatGoesOnToItsEndIsWhole)
{
    EXPECT_TRUE(markersOf(begin + frame("FFC0", 3) + scan(3) + data + end)->isWhole);
}

TEST(JpegMarkers, WhateverIsCutOffIsNotWhole)
{
    const QByteArray whole =
        begin + segment("FFE1", "Exif") + frame("FFC0", 3) + scan(3) + data + end;
    for (qsizetype size = 2; size < whole.size(); ++size)
        EXPECT_FALSE(markersOf(whole.left(size))->isWhole) << size;
}

TEST(JpegMarkers, TheEndOfASmallPictureWithinTheFileIsNotItsEnd)
{
    const QByteArray preview = begin + frame("FFC0", 1) + scan(1) + end;
    EXPECT_FALSE(
        markersOf(begin + segment("FFE1", preview) + frame("FFC0", 3) + scan(3) + data)->isWhole);
}

TEST(JpegMarkers, WhatACameraAddsBehindTheEndDoesNoHarm)
{
    EXPECT_TRUE(markersOf(begin + frame("FFC0", 3) + scan(3) + data + end + "film")->isWhole);
}

TEST(JpegMarkers, AFileWithoutPixelsIsNotWhole)
{
    EXPECT_FALSE(markersOf(begin + end)->isWhole);
}

TEST(JpegMarkers, RestartsAndEscapedBytesBelongToTheData)
{
    const QByteArray bytes = "a" + QByteArray::fromHex("FF00D9FFD3FFFFD0") + "b";
    const QByteArray open = begin + frame("FFC0", 3) + scan(3) + bytes;
    EXPECT_FALSE(markersOf(open)->isWhole);
    EXPECT_TRUE(markersOf(open + end)->isWhole);
}

TEST(JpegMarkers, AreReadAcrossThePieces)
{
    for (const int size : {65'520, 65'530, 65'533, 131'050}) {
        const QByteArray open =
            begin + segment("FFE2", QByteArray(60'000, 'x')) + frame("FFC0", 3) + scan(3);
        const QByteArray padded = open + QByteArray(size - open.size(), 'x');
        for (int more = 0; more < 20; ++more) {
            EXPECT_TRUE(markersOf(padded + QByteArray(more, 'y') + end)->isWhole) << size << more;
            EXPECT_FALSE(markersOf(padded + QByteArray(more, 'y'))->isWhole) << size << more;
        }
    }
}

TEST(JpegMarkers, OnlyAFrameOfOneScanIsGivenLineByLine)
{
    struct Case
    {
        QByteArray bytes;
        bool isSequential;
    };
    for (const Case& c : {Case{frame("FFC0", 3) + scan(3), true},
                          {frame("FFC1", 1) + scan(1), true},
                          {frame("FFC2", 3) + scan(3), false},
                          {frame("FFC0", 3) + scan(1) + data + scan(1) + data + scan(1), false}})
        EXPECT_EQ(markersOf(begin + c.bytes + data + end)->isSequential, c.isSequential);
}

TEST(JpegMarkers, AnotherFileHasNone)
{
    for (const char* bytes : {"", "\xFF", "GIF89a", "\xFF\xFE"})
        EXPECT_FALSE(markersOf(bytes)) << bytes;
}

} // namespace
