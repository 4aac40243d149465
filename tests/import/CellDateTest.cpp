#include "import/CellDate.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using importing::cellDate;
using runtime::Value;

TEST(CellDate, TakesDatesTextsAndDayNumbers)
{
    const QDate day(2009, 7, 31);
    const Value cells[] = {Value(QDateTime(day, QTime(8, 30))),
                           Value(u"2009-7-31"_s),
                           Value(u"2009/07/31"_s),
                           Value(u"2009.7.31"_s),
                           Value(u"2009年7月31日"_s),
                           Value(u" 2009年7月31 "_s),
                           Value(u"2009-07-31 08:30:00"_s),
                           Value(u"20090731"_s),
                           Value(20090731.0),
                           Value(40025.0),
                           Value(40025.35),
                           Value(u"40025"_s),
                           Value(u"09-7-31"_s)};
    for (const Value& cell : cells)
        EXPECT_EQ(cellDate(cell), day) << cell.text().toStdString();
}

TEST(CellDate, WithoutADayItIsTheFirstOfTheMonth)
{
    for (const QString& text : {u"1994-9"_s, u"1994年9月"_s, u"94.9"_s})
        EXPECT_EQ(cellDate(Value(text)), QDate(1994, 9, 1)) << text.toStdString();
}

TEST(CellDate, RefusesWhatIsNoDate)
{
    const Value cells[] = {
        Value(),           Value(u"不详"_s), Value(u"2009-13-1"_s), Value(u"2009-2-30"_s),
        Value(20091301.0), Value(-1.0),      Value(true),           Value::error(u"#N/A"_s)};
    for (const Value& cell : cells)
        EXPECT_FALSE(cellDate(cell).has_value()) << cell.text().toStdString();
}

} // namespace
