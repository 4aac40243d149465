#include "oldlibraries/OldText.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"

using namespace Qt::StringLiterals;
using namespace std::string_view_literals;

namespace {

struct Stored
{
    std::string_view bytes;
    QString text;
};

class OldText : public testing::TestWithParam<Stored>
{
};

} // namespace

TEST_P(OldText, IsReadAsItIsStored)
{
    EXPECT_EQ(oldlibraries::storedText(GetParam().bytes), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    , OldText,
    testing::Values(Stored{""sv, u""_s}, Stored{"A\0"sv, u"A"_s}, Stored{"\xED\x73"sv, u"班"_s},
                    Stored{"\x33\xD8\xCE\xDF"sv, u"\U0001CFCE"_s}, Stored{"\xFF\xFE"sv, u""_s},
                    Stored{"\xFF\xFE\x33(1)"sv, u"3(1)"_s}, Stored{"\xFF\xFE\xE9"sv, u"é"_s},
                    Stored{"\xFF\xFE\0\xED\x73"sv, u"班"_s},
                    Stored{"\xFF\xFE"
                           "3\0\xED\x73\0b"sv,
                           u"3班b"_s},
                    // The second byte of a character may be zero within a stretch of two bytes.
                    Stored{"\xFF\xFE\0A\0\xED\x73"sv, u"A班"_s}, Stored{"A\0B"sv, u"A"_s}));
