#include "import/CellDate.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;
using importing::cellDate;
using runtime::Value;

/// The text under which the date is stored; "" for none.
QString stored(const Value& cell)
{
    const std::optional<QDateTime> date = cellDate(cell);
    return date ? Value(*date).text() : QString();
}

TEST(CellDate, TakesDatesTextsAndDayNumbers)
{
    const Value cells[] = {Value(QDateTime(QDate(2009, 7, 31), QTime(0, 0), Qt::UTC)),
                           Value(u"2009-7-31"_s),
                           Value(u"2009/07/31"_s),
                           Value(u"2009.7.31"_s),
                           Value(u"2009年7月31日"_s),
                           Value(u" 2009年7月31 "_s),
                           Value(u"2009-07-31 00:00:00"_s),
                           Value(u"20090731"_s),
                           Value(20090731.0),
                           Value(40025.0),
                           Value(u"40025"_s),
                           Value(u"7/31/2009"_s),
                           Value(u"07/31/2009"_s),
                           Value(u"09-7-31"_s)};
    for (const Value& cell : cells)
        EXPECT_EQ(stored(cell), u"2009-07-31"_s) << cell.text().toStdString();
}

TEST(CellDate, TakesDayNumbersUpToTheYear2100)
{
    EXPECT_EQ(stored(Value(73415.0)), u"2100-12-31"_s);
    EXPECT_EQ(stored(Value(0.0)), u"1899-12-30"_s);
}

TEST(CellDate, KeepsTheTimeOfDayWhereTheCellHasOne)
{
    const std::pair<Value, QString> cells[] = {
        {QDateTime(QDate(2009, 7, 31), QTime(8, 30), Qt::UTC), u"2009-07-31 08:30:00"_s},
        {u"2009-07-31 08:30:15"_s, u"2009-07-31 08:30:15"_s},
        {u"2009年7月31日 8:30"_s, u"2009-07-31 08:30:00"_s},
        {u"5/1/2009 8:30"_s, u"2009-05-01 08:30:00"_s},
        {40025.35, u"2009-07-31 08:24:00"_s},
        {40025.999999, u"2009-08-01"_s}};
    for (const auto& [cell, text] : cells)
        EXPECT_EQ(stored(cell), text) << cell.text().toStdString();
}

TEST(CellDate, TheSameTypingIsAMonthAsATextAndADayNumberAsANumber)
{
    EXPECT_EQ(stored(u"2009.09"_s), u"2009-09-01"_s);
    EXPECT_EQ(stored(2009.09), u"1905-07-01 02:09:36"_s);
}

TEST(CellDate, AnHourThatSummerTimeLeftOutIsKept)
{
    const Value cell(u"1986-05-04 02:30"_s);
    EXPECT_EQ(stored(cell), u"1986-05-04 02:30:00"_s);
}

TEST(CellDate, WithoutADayItIsTheFirstOfTheMonth)
{
    for (const QString& text : {u"1994-9"_s, u"1994年9月"_s, u"94.9"_s})
        EXPECT_EQ(stored(Value(text)), u"1994-09-01"_s) << text.toStdString();
}

TEST(CellDate, RefusesWhatIsNoDate)
{
    const Value cells[] = {Value(),
                           Value(u"不详"_s),
                           Value(u"2009-13-1"_s),
                           Value(u"2009-2-30"_s),
                           Value(u"2009-7-31 25:00"_s),
                           Value(u"12:30"_s),
                           Value(u"31/7/2009"_s),
                           Value(u"7/31/09"_s),
                           Value(20091301.0),
                           Value(200909.0), // typed as a year and a month
                           Value(u"200909"_s),
                           Value(QDateTime(QDate(2450, 1, 25), QTime(0, 0), Qt::UTC)),
                           Value(73416.0), // 2101-01-01
                           Value(2958466.0),
                           Value(-1.0),
                           Value(true),
                           Value::error(u"#N/A"_s)};
    for (const Value& cell : cells)
        EXPECT_FALSE(cellDate(cell).has_value()) << cell.text().toStdString();
}

} // namespace
