#include "platform/runtime/Numbers.h"

#include <cstdlib>
#include <limits>

#include <gtest/gtest.h>

#include "support/PrintQString.h"

namespace runtime {
namespace {

using namespace Qt::StringLiterals;

struct Reading
{
    QString text;
    double number;
};

TEST(Val, ReadsTheNumberAtTheHeadOfATextAndZeroIfThereIsNone)
{
    const Reading readings[] = {
        {u"90"_s, 90},
        {u" 90.5 "_s, 90.5},
        {u"-1"_s, -1},
        {u"+7"_s, 7},
        {u".5"_s, 0.5},
        {u"-.5"_s, -0.5},
        {u"5."_s, 5},
        {u"1 234"_s, 1234},
        {u"- 12"_s, -12},
        {u"1\t2\n3\r4"_s, 1234},
        {u"12班"_s, 12},
        {u"缺考"_s, 0},
        {u"作弊"_s, 0},
        {QString(), 0},
        {u"-"_s, 0},
        {u"+-5"_s, 0},
        {u"--5"_s, 0},
        {u"."_s, 0},
        {u"1.5.2"_s, 1.5},
        {u"1e3"_s, 1000},
        {u"1E-2"_s, 0.01},
        {u"2d2"_s, 200},
        {u"2D+1"_s, 20},
        {u"1e"_s, 1},
        {u"1d"_s, 1},
        {u"1e+"_s, 1},
        {u"1e2.5"_s, 100},
        {u"e5"_s, 0},
        {u"3-4"_s, 3},
        {u"1,5"_s, 1},
        {u"1e400"_s, 0},
        {u"inf"_s, 0},
        {u"nan"_s, 0},
        {u"９０"_s, 0},
        {u"A90"_s, 0},
        {u"1e 3"_s, 1000},
        {u"20240101002"_s, 20240101002.0},
    };
    for (const Reading& reading : readings)
        EXPECT_EQ(Val(reading.text), reading.number) << reading.text.toStdString();
}

TEST(Val, GivesTheNearestNumber)
{
    for (const char* text : {"0.1", "114.5", "0.3", "5.", ".5", "007", "9.95", "123456789.012345",
                             "999999999999999", "0.00000000000001", ".000000000000003",
                             "1234567890123456", "0.1234567890123456789", "1.2.3", "."})
        EXPECT_EQ(Val(QString::fromLatin1(text)), std::strtod(text, nullptr)) << text;
}

TEST(Val, ReadsADoubleByItsFifteenDigits)
{
    for (const double number : {0.0, -3.5, 89.7, 118.25, 0.1 + 0.2, 1e14 + 0.5, 2.000000000000004,
                                1234567890123456.0, 100.0 / 3, 1e300, 4.9e-324})
        EXPECT_EQ(Val(Value(number)), Val(runtime::doubleText(number))) << number;
    EXPECT_EQ(Val(Value(0.1 + 0.2)), 0.3);
    EXPECT_EQ(Val(Value(2.000000000000004)), 2);
    EXPECT_EQ(Val(Value(1234567890123456.0)), 1234567890123460.0);
}

TEST(Val, TakesANumericValueAsItIsAndReadsAnyOtherThroughItsText)
{
    EXPECT_EQ(Val(Value(3)), 3);
    EXPECT_EQ(Val(Value(90.1f)), double(90.1f));
    EXPECT_EQ(Val(Value(90.1)), 90.1);
    EXPECT_EQ(Val(Value(u"88分"_s)), 88);
    EXPECT_EQ(Val(Value()), 0);
    EXPECT_EQ(Val(Value(true)), 0);
    EXPECT_EQ(Val(Value::error(u"#N/A"_s)), 0);
    EXPECT_EQ(Val(Value(QByteArray("12"))), 0);
}

TEST(Round, TakesAHalfToTheEvenNeighbour)
{
    struct
    {
        double number;
        int digits;
        double rounded;
    } const cases[] = {
        {0.5, 0, 0},         {1.5, 0, 2},      {2.5, 0, 2},      {3.5, 0, 4},
        {-0.5, 0, 0},        {-1.5, 0, -2},    {-2.5, 0, -2},    {2.4999, 0, 2},
        {0.125, 2, 0.12},    {0.375, 2, 0.38}, {0.625, 2, 0.62}, {-0.125, 2, -0.12},
        {12.3456, 2, 12.35}, {99.99, 1, 100},  {7, 3, 7},
    };
    for (const auto& one : cases)
        EXPECT_EQ(Round(one.number, one.digits), one.rounded) << one.number;
}

TEST(Round, LeavesWhatHasNoSuchDecimals)
{
    for (const double number : {123456789012345.67, 9007199254740993.0, 1e300, -1e308,
                                std::numeric_limits<double>::infinity()})
        EXPECT_EQ(Round(number, 2), number);
}

TEST(Int, RoundsDown)
{
    EXPECT_EQ(Int(2.9), 2);
    EXPECT_EQ(Int(-2.1), -3);
    EXPECT_EQ(Int(-3), -3);
    EXPECT_EQ(Int(0.999999), 0);
}

TEST(SingleText, ShowsAtMostSevenSignificantDigits)
{
    const std::pair<float, QString> cases[] = {
        {90.1f, u"90.1"_s},
        {110.9f, u"110.9"_s},
        {0.1f, u"0.1"_s},
        {90.f, u"90"_s},
        {-1.f, u"-1"_s},
        {0.f, u"0"_s},
        {-0.f, u"0"_s},
        {1e7f, u"1E+07"_s},
        {16777216.f, u"1.677722E+07"_s},
        {20230001.f, u"2.023E+07"_s},
        {-0.5f, u"-0.5"_s},
        {86.07f, u"86.07"_s},
        {12345.25f, u"12345.25"_s},
        {9999999.f, u"9999999"_s},
        {1.f / 3, u"0.3333333"_s},
        {0.0001f, u"0.0001"_s},
    };
    for (const auto& [number, text] : cases)
        EXPECT_EQ(singleText(number), text);
}

TEST(DoubleText, ShowsAtMostFifteenSignificantDigits)
{
    const std::pair<double, QString> cases[] = {
        {0.7 * 90, u"63"_s},
        {0.1 + 0.2, u"0.3"_s},
        {20240101002.0, u"20240101002"_s},
        {1.0 / 3, u"0.333333333333333"_s},
        {-2.5, u"-2.5"_s},
        {-0.4, u"-0.4"_s},
        {99999.5, u"99999.5"_s},
        {99999.99, u"99999.99"_s},
        {-0.05, u"-0.05"_s},
        {86.07, u"86.07"_s},
        {1.005, u"1.005"_s},
        {std::nextafter(86.07, 87), u"86.07"_s},
        {100000.25, u"100000.25"_s},
        {100000.5, u"100000.5"_s},
        {0, u"0"_s},
        {-99999999999999.0, u"-99999999999999"_s},
        {100000000000000.0, u"100000000000000"_s},
        {-0.0, u"0"_s},
        {123456789012345.0, u"123456789012345"_s},
        {1e15, u"1E+15"_s},
        {1e300, u"1E+300"_s},
    };
    for (const auto& [number, text] : cases)
        EXPECT_EQ(doubleText(number), text);
}

} // namespace
} // namespace runtime
