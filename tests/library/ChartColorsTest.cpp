#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

TEST(ChartColors, AreFarEnoughApartToBeToldFromEachOther)
{
    TestLibrary test({u"语文"_s});
    std::vector<int> colors;
    for (const QString& color : test.rows(u"select 颜色 from 颜色表 order by ID"_s).split(u" / "_s))
        colors.push_back(color.toInt());
    ASSERT_EQ(colors.size(), 16u);
    const auto part = [](int color, int shift) { return (color >> shift) & 0xff; };
    for (size_t i = 0; i < colors.size(); ++i) {
        for (size_t j = 0; j < i; ++j) {
            int distance = 0;
            for (const int shift : {0, 8, 16})
                distance += std::abs(part(colors[i], shift) - part(colors[j], shift));
            EXPECT_GE(distance, 60) << "IDs " << j << " and " << i;
        }
    }
}

} // namespace
