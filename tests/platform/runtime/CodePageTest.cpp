#include "platform/runtime/CodePage.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"

namespace runtime {
namespace {

using namespace Qt::StringLiterals;
using namespace std::string_view_literals;

TEST(CodePage, ReadsChineseAndWhatGoesBeyondTheOldStandard)
{
    const CodePage page(CodePage::chinese);
    EXPECT_EQ(page.decode("\xb0\xe0\xbc\xb6 A"sv), u"班级 A"_s);
    EXPECT_EQ(page.decode("\x82\x35\x8f\x33"sv), u"\u9fa6"_s);
}

TEST(CodePage, ReadsThePagesOfOtherCountries)
{
    EXPECT_EQ(CodePage(1252).decode("\xe9"sv), u"é"_s);
    EXPECT_EQ(CodePage(950).decode("\xa4\xa4"sv), u"中"_s);
    EXPECT_EQ(CodePage(65001).decode("\xe4\xb8\xad"sv), u"中"_s);
}

TEST(CodePage, ALastLetterThatAMarkCouldFollowIsNotLost)
{
    EXPECT_EQ(CodePage(1258).decode("A\xe2"sv), u"Aâ"_s);
    EXPECT_EQ(CodePage(1258).decode("\xe2\xec"sv), u"ấ"_s);
    EXPECT_EQ(CodePage(1255).decode("\xf9\xe0"sv), u"שא"_s);
    EXPECT_EQ(CodePage(1255).decode("\xff"sv), u"\ufffd"_s);
    EXPECT_EQ(CodePage(1255).decode("\xf9\xe0\xff"sv), u"שא\ufffd"_s);
    EXPECT_EQ(CodePage(1258).decode("A\xe2\x8a"
                                    "B"sv),
              u"Aâ\ufffdB"_s);
}

TEST(CodePage, AnUnknownPageIsTakenForChinese)
{
    EXPECT_EQ(CodePage(4711).decode("\xb0\xe0"sv), u"班"_s);
}

TEST(CodePage, ABadByteIsMarkedAndTheRestStillReads)
{
    const CodePage page(CodePage::chinese);
    EXPECT_EQ(page.decode("\xff\xb0\xe0"sv), u"\ufffd班"_s);
    EXPECT_EQ(page.decode("\xb0\xe0\xb0"sv), u"班\ufffd"_s);
    EXPECT_EQ(page.decode("\xb0\xe0"sv), u"班"_s);
}

} // namespace
} // namespace runtime
