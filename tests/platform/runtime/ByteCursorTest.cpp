#include "platform/runtime/ByteCursor.h"

#include <gtest/gtest.h>

namespace runtime {
namespace {

using namespace std::string_view_literals;

TEST(ByteCursor, ReadsNumbersLowestByteFirst)
{
    ByteCursor bytes("\x01\xff\xfe\x78\x56\x34\x92\0\0\0\0\0\0\xf0\x3f"sv);
    EXPECT_EQ(bytes.u8(), 1);
    EXPECT_EQ(bytes.u16(), 0xfeff);
    EXPECT_EQ(bytes.u32(), 0x92345678u);
    EXPECT_EQ(bytes.left(), 8);
    EXPECT_EQ(bytes.real(), 1.0);
    EXPECT_EQ(bytes.left(), 0);
}

TEST(ByteCursor, GoesToAnyPlaceAndNoFurtherThanTheEnd)
{
    ByteCursor bytes("abcd"sv);
    bytes.seek(4);
    EXPECT_EQ(bytes.left(), 0);
    EXPECT_EQ(bytes.at(1).take(2), "bc"sv);
    bytes.seek(0);
    bytes.skip(3);
    EXPECT_EQ(bytes.take(1), "d"sv);
    EXPECT_THROW(bytes.seek(5), BytesCutOff);
    EXPECT_THROW(bytes.seek(-1), BytesCutOff);
    EXPECT_THROW(bytes.at(5), BytesCutOff);
}

TEST(ByteCursor, BehindTheEndThereIsNothing)
{
    EXPECT_THROW(ByteCursor(""sv).u8(), BytesCutOff);
    EXPECT_THROW(ByteCursor("a"sv).u16(), BytesCutOff);
    EXPECT_THROW(ByteCursor("abc"sv).u32(), BytesCutOff);
    EXPECT_THROW(ByteCursor("abcdefg"sv).real(), BytesCutOff);
    EXPECT_THROW(ByteCursor("abc"sv).take(4), BytesCutOff);
    EXPECT_THROW(ByteCursor("abc"sv).skip(-1), BytesCutOff);
    ByteCursor bytes("abc"sv);
    EXPECT_THROW(bytes.take(4), BytesCutOff);
    EXPECT_EQ(bytes.take(3), "abc"sv);
}

} // namespace
} // namespace runtime
