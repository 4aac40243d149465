#include "platform/runtime/Value.h"

#include <type_traits>

#include <gtest/gtest.h>

#include "support/PrintQString.h"

namespace runtime {
namespace {

using namespace Qt::StringLiterals;

TEST(Value, JoinsToATextByItsKind)
{
    const std::pair<Value, QString> cases[] = {
        {Value(), QString()},
        {Value(-7), u"-7"_s},
        {Value(qint64(20240101002)), u"20240101002"_s},
        {Value(90.1f), u"90.1"_s},
        {Value(0.1 + 0.2), u"0.3"_s},
        {Value(true), u"True"_s},
        {Value(false), u"False"_s},
        {Value(u" 007 "_s), u" 007 "_s},
        {Value(QDateTime(QDate(2009, 7, 31), QTime(0, 0))), u"2009-07-31"_s},
        {Value(QDateTime(QDate(2009, 7, 31), QTime(8, 30))), u"2009-07-31 08:30:00"_s},
        {Value::error(u"#N/A"_s), u"#N/A"_s},
        {Value(QByteArray("bytes")), QString()},
    };
    for (const auto& [value, text] : cases)
        EXPECT_EQ(value.text(), text);
}

TEST(Value, KnowsItsKind)
{
    EXPECT_TRUE(Value().isNull());
    EXPECT_EQ(Value(1).kind(), Value::Kind::Integer);
    EXPECT_EQ(Value(1.f).kind(), Value::Kind::Single);
    EXPECT_EQ(Value(1.).kind(), Value::Kind::Double);
    EXPECT_EQ(Value(true).kind(), Value::Kind::Boolean);
    EXPECT_EQ(Value(QDateTime()).kind(), Value::Kind::Date);
    EXPECT_EQ(Value(u"1"_s).kind(), Value::Kind::Text);
    EXPECT_EQ(Value::error({}).kind(), Value::Kind::Error);
    EXPECT_EQ(Value(QByteArray()).kind(), Value::Kind::Binary);
    EXPECT_TRUE(Value(1).isNumber() && Value(1.f).isNumber() && Value(1.).isNumber());
    EXPECT_FALSE(Value(true).isNumber() || Value(u"1"_s).isNumber() || Value().isNumber());
}

TEST(Value, GivesNumberBytesAndMomentOnlyWhereItHoldsOne)
{
    EXPECT_EQ(Value(true).toDouble(), -1);
    EXPECT_EQ(Value(u"12"_s).toDouble(), 0);
    EXPECT_EQ(Value(QByteArray("x")).toBytes(), QByteArray("x"));
    EXPECT_EQ(Value(u"x"_s).toBytes(), QByteArray());
    EXPECT_FALSE(Value(1).toDateTime().isValid());
}

TEST(Value, TakesNoPointerForATruth)
{
    EXPECT_FALSE((std::is_constructible_v<Value, const char*>));
    EXPECT_FALSE((std::is_constructible_v<Value, const char16_t*>));
    EXPECT_FALSE((std::is_constructible_v<Value, int*>));
}

TEST(Value, EqualsOnlyTheSameKindAndContent)
{
    EXPECT_EQ(Value(u"a"_s), Value(u"a"_s));
    EXPECT_NE(Value(1), Value(1.));
    EXPECT_EQ(Value(), Value());
    EXPECT_NE(Value(u"#N/A"_s), Value::error(u"#N/A"_s));
}

} // namespace
} // namespace runtime
