#include "workbooks/writers/ScratchText.h"

#include <gtest/gtest.h>

#include <array>

namespace {

std::string readAll(excel::ScratchText& text)
{
    std::string all;
    std::array<char, 1000> piece{};
    while (const size_t size = text.read(piece.data(), piece.size()))
        all.append(piece.data(), size);
    return all;
}

} // namespace

TEST(ScratchText, GivesBackShortAndLongTextsAsOftenAsWanted)
{
    for (const int lines : {0, 3, 100000}) {
        excel::ScratchText text;
        std::string whole;
        for (int line = 0; line < lines; ++line) {
            text.append(std::to_string(line) + '\n');
            whole += std::to_string(line) + '\n';
        }
        EXPECT_EQ(text.size(), whole.size());
        for (int time = 0; time < 2; ++time) {
            EXPECT_TRUE(text.rewind());
            EXPECT_TRUE(readAll(text) == whole) << lines;
        }
    }
}
