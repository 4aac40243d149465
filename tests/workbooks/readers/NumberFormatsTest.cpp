#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "workbooks/readers/NumberFormats.h"

using namespace Qt::StringLiterals;
using excel::DateSystem;
using excel::NumberFormats;

TEST(NumberFormats, CodesOfDatesAreTold)
{
    for (const QString& code :
         {u"yyyy-mm-dd"_s, u"h:mm"_s, u"[$-804]yyyy\"年\"m\"月\""_s, u"[h]:mm"_s, u"[h]"_s,
          u"[ss]"_s, u"mmm"_s, u"DD/MM"_s, u"[Red]s"_s})
        EXPECT_TRUE(NumberFormats::isDateCode(code)) << code.toStdString();
}

TEST(NumberFormats, LettersInQuotesBracketsAndBehindBackslashesMakeNoDate)
{
    for (const QString& code :
         {u"General"_s, u"0.00"_s, u"0.0\" days\""_s, u"[Red]0"_s, u"\\d0"_s, u"0_d"_s, u"*d0"_s,
          u"@"_s, u"#,##0\"元\""_s, u"[hsm_x]0"_s, u"[hx]0"_s, u"0\"unclosed d"_s, u"[unclosed d"_s,
          u"0.00E+00"_s, QString()})
        EXPECT_FALSE(NumberFormats::isDateCode(code)) << code.toStdString();
}

TEST(NumberFormats, BuiltInDatesAreKnownByTheirNumbers)
{
    NumberFormats formats;
    std::vector<int> dates;
    for (int number = 0; number < 70; ++number) {
        formats.addStyle(number);
        if (formats.isDateStyle(size_t(number)))
            dates.push_back(number);
    }
    EXPECT_EQ(dates,
              (std::vector<int>{14, 15, 16, 17, 18, 19, 20, 21, 22, 27, 28, 29, 30, 31, 32, 33,
                                34, 35, 36, 45, 46, 47, 50, 51, 52, 53, 54, 55, 56, 57, 58}));
    EXPECT_FALSE(formats.isDateStyle(70));
}

TEST(NumberFormats, TheWorkbooksOwnFormatWins)
{
    NumberFormats formats;
    formats.addFormat(30, u"0.00"_s);
    formats.addFormat(170, u"yyyy"_s);
    formats.addStyle(30);
    formats.addStyle(170);
    EXPECT_FALSE(formats.isDateStyle(0));
    EXPECT_TRUE(formats.isDateStyle(1));
}

TEST(NumberFormats, NumbersBecomeDates)
{
    const struct
    {
        double number;
        DateSystem system;
        QString text;
    } rows[] = {
        {40025, DateSystem::From1900, u"2009-07-31"_s},
        {40025 + 8.5 / 24, DateSystem::From1900, u"2009-07-31 08:30:00"_s},
        {38563, DateSystem::From1904, u"2009-07-31"_s},
        {0, DateSystem::From1904, u"1904-01-01"_s},
        {1, DateSystem::From1900, u"1900-01-01"_s},
        {59, DateSystem::From1900, u"1900-02-28"_s},
        {61, DateSystem::From1900, u"1900-03-01"_s},
        {8.5 / 24, DateSystem::From1900, u"1899-12-30 08:30:00"_s},
        {2958465, DateSystem::From1900, u"9999-12-31"_s},
    };
    for (const auto& row : rows) {
        const runtime::Value value = excel::dateValue(row.number, row.system);
        EXPECT_EQ(value.kind(), runtime::Value::Kind::Date);
        EXPECT_EQ(value.text(), row.text);
    }
}

TEST(NumberFormats, WhatIsNoDateStaysANumber)
{
    for (const double number : {-1.0, 2958466.0, 1e300})
        EXPECT_EQ(excel::dateValue(number, DateSystem::From1900), runtime::Value(number));
}
