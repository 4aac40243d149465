#include <gtest/gtest.h>

#include "platform/runtime/Numbers.h"
#include "support/PrintQString.h"
#include "workbooks/model/CellText.h"

using namespace Qt::StringLiterals;

TEST(CellText, BecomesANumberOnlyIfItReadsBackAsTheSameText)
{
    const struct
    {
        QString text;
        std::optional<double> number;
    } rows[] = {
        {u"0"_s, 0},
        {u"-1"_s, -1},
        {u"85.5"_s, 85.5},
        {u"100"_s, 100},
        {u"-0.25"_s, -0.25},
        {u"0.0001"_s, 0.0001},
        {u"0.000123"_s, 0.000123},
        {u"999999999999999"_s, 999999999999999},
        {u"1234567.12345678"_s, 1234567.12345678},
        {u"0805"_s, std::nullopt},
        {u"5/1/6"_s, std::nullopt},
        {u"1e5"_s, std::nullopt},
        {u"1E+20"_s, std::nullopt},
        {u"1.50"_s, std::nullopt},
        {u"1."_s, std::nullopt},
        {u".5"_s, std::nullopt},
        {u"-"_s, std::nullopt},
        {u"-0"_s, std::nullopt},
        {u"-00.5"_s, std::nullopt},
        {u"+1"_s, std::nullopt},
        {u" 1"_s, std::nullopt},
        {u"1 "_s, std::nullopt},
        {u"1,000"_s, std::nullopt},
        {u"12%"_s, std::nullopt},
        {u"0.00001"_s, std::nullopt},
        {u"1234567890123456"_s, std::nullopt},
        {u"110101200801011234"_s, std::nullopt},
        {u"12345678.12345678"_s, std::nullopt},
        {u"0.1234567890123456"_s, std::nullopt},
        {u"８５"_s, std::nullopt},
        {u"3班"_s, std::nullopt},
        {u"缺考"_s, std::nullopt},
        {u"=1+1"_s, std::nullopt},
        {u"inf"_s, std::nullopt},
        {u"--1"_s, std::nullopt},
        {u"1.2.3"_s, std::nullopt},
    };
    for (const auto& row : rows) {
        const runtime::Value cell = excel::cellFromText(row.text);
        EXPECT_EQ(cell.isNumber(), row.number.has_value()) << row.text.toStdString();
        EXPECT_EQ(cell.text(), row.text);
        EXPECT_EQ(cell.toDouble(), row.number.value_or(0)) << row.text.toStdString();
    }
}

TEST(CellText, EveryHundredthOfAScoreIsANumber)
{
    for (int hundredths = -100; hundredths <= 15000; ++hundredths) {
        const QString text = runtime::doubleText(hundredths / 100.0);
        EXPECT_TRUE(excel::cellFromText(text).isNumber()) << text.toStdString();
    }
}

TEST(CellText, AnEmptyTextLeavesTheCellEmpty)
{
    EXPECT_TRUE(excel::cellFromText({}).isNull());
}
