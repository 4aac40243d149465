#include "statistics/Condition.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using statistics::Condition;
using statistics::Operator;

TEST(Condition, ReadsAChainOfComparisons)
{
    const Condition condition(u"语文>=102 and 语文<=120.5"_s);
    ASSERT_TRUE(condition.isSimple());
    ASSERT_EQ(condition.comparisons().size(), 2u);
    EXPECT_EQ(condition.comparisons()[0].column, u"语文"_s);
    EXPECT_EQ(condition.comparisons()[0].op, Operator::GreaterOrEqual);
    EXPECT_EQ(condition.comparisons()[1].number, 120.5);
    EXPECT_EQ(condition.comparisons()[1].highest(), 120.5);
}

TEST(Condition, AComparisonHoldsBetweenTwoNumbers)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const auto bounds = [](const QString& text) {
        const Condition condition(text);
        const statistics::Comparison& comparison = condition.comparisons().at(0);
        return std::pair(comparison.lowest(), comparison.highest());
    };
    EXPECT_EQ(bounds(u"语文>=60"_s), std::pair(60.0, infinity));
    EXPECT_EQ(bounds(u"语文<=60"_s), std::pair(-infinity, 60.0));
    EXPECT_EQ(bounds(u"语文=60"_s), std::pair(60.0, 60.0));
    EXPECT_EQ(bounds(u"语文>60"_s), std::pair(std::nextafter(60.0, infinity), infinity));
    EXPECT_EQ(bounds(u" 语文 < -20.25 "_s),
              std::pair(-infinity, std::nextafter(-20.25, -infinity)));
}

TEST(Condition, LeavesEverythingElseToTheEngine)
{
    for (const QString& text :
         {u""_s, u"语文>="_s, u"语文>=八十"_s, u"语文>=80 or 语文<20"_s, u"语文>=80 and "_s,
          u">=80"_s, u"1语文>=80"_s, u"语文(A)>=80"_s, u"语文>=80;"_s, u"语文>=8."_s, u"语文>=.8"_s,
          u"语文>=1.2.3"_s, u"语文>=--8"_s, u"语文>=-"_s, u"语文>=1234567890.123456"_s,
          u"语文>=1e2"_s, u"语文<>8"_s, u"语文 科>=8"_s, u"语文>=数学"_s}) {
        EXPECT_FALSE(Condition(text).isSimple()) << text.toStdString();
        EXPECT_FALSE(Condition(text).isNone()) << text.toStdString();
    }
}

TEST(Condition, NoneLetsEveryRowPass)
{
    EXPECT_TRUE(Condition().isNone());
    EXPECT_TRUE(Condition().isSimple());
}

} // namespace
