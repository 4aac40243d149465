#include "statistics/Condition.h"

#include <gtest/gtest.h>

#include "platform/runtime/Numbers.h"
#include "support/PrintQString.h"

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
}

TEST(Condition, AComparisonHoldsBetweenTwoNumbers)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const auto bounds = [](const QString& text) {
        const Condition condition(text);
        const statistics::Comparison& comparison = condition.comparisons().at(0);
        return std::pair(comparison.lowest(), comparison.highest());
    };
    EXPECT_DOUBLE_EQ(bounds(u"语文>=60"_s).first, 59.99995);
    EXPECT_EQ(bounds(u"语文>=60"_s).second, infinity);
    EXPECT_EQ(bounds(u"语文<60"_s).first, -infinity);
    EXPECT_DOUBLE_EQ(bounds(u"语文<60"_s).second, 59.99995);
    EXPECT_DOUBLE_EQ(bounds(u"语文<=60"_s).second, 60.00005);
    EXPECT_DOUBLE_EQ(bounds(u"语文>60"_s).first, 60.00005);
    EXPECT_EQ(bounds(u"语文=60"_s),
              std::pair(bounds(u"语文>=60"_s).first, bounds(u"语文<=60"_s).second));
}

TEST(Condition, LooksAtValuesRoundedToFourPlaces)
{
    const double numbers[] = {0,       0.1,     -1,        89.7,           532.6,         -20.25,
                              1.0 / 3, 49.07,   1e7 + 0.1, 123456789.1234, 99999999999.5, 1e11,
                              1e14,    1000.45, 0.00005,   0.00004};
    const double steps[] = {0, 1e-9, 4e-5, 5e-5, 6e-5, 1e-4, 0.1, 1};
    for (const double number : numbers) {
        for (const double step : steps) {
            for (const double value : {number - step, number + step, double(float(number)),
                                       std::nextafter(number, 0.0)}) {
                const double rounded = std::round(value * 1e4) / 1e4;
                const auto holds = [&](Operator op) {
                    const statistics::Comparison comparison{u"语文"_s, op, number};
                    return comparison.lowest() <= value && value <= comparison.highest();
                };
                EXPECT_EQ(holds(Operator::GreaterOrEqual), rounded >= number) << number << value;
                EXPECT_EQ(holds(Operator::Greater), rounded > number) << number << ' ' << value;
                EXPECT_EQ(holds(Operator::LessOrEqual), rounded <= number)
                    << number << ' ' << value;
                EXPECT_EQ(holds(Operator::Less), rounded < number) << number << ' ' << value;
            }
        }
    }
}

TEST(Condition, TellsTheEngineToRoundToo)
{
    EXPECT_EQ(Condition(u"语文>=102 and 语文<120.5"_s).sqlText(),
              u"round(语文,4)>=102 and round(语文,4)<120.5"_s);
    EXPECT_EQ(Condition(u"语文>=八十"_s).sqlText(), u"语文>=八十"_s);
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
