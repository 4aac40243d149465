#include <limits>

#include "DatabaseFile.h"

namespace database {
namespace {

using namespace Qt::StringLiterals;
using runtime::Value;
using Kind = ColumnType::Kind;

Value stored(const char* declaration, const Value& value)
{
    return ColumnType::fromDeclaration(QString::fromUtf8(declaration)).converted(value, u"列"_s);
}

QString refusal(const char* declaration, const Value& value)
{
    return errorOf([&] { stored(declaration, value); }).description();
}

TEST(ColumnType, IsReadFromItsDeclaration)
{
    const std::pair<const char*, Kind> cases[] = {
        {"Single REAL", Kind::Single}, {"single", Kind::Single},
        {"Double REAL", Kind::Double}, {"number", Kind::Double},
        {"REAL", Kind::Double},        {"Long INTEGER", Kind::Long},
        {"long", Kind::Long},          {"Integer INTEGER", Kind::Integer},
        {"short", Kind::Integer},      {"Boolean INTEGER", Kind::Boolean},
        {"YesNo", Kind::Boolean},      {"text(50)", Kind::Text},
        {"VARCHAR(20)", Kind::Text},   {"Memo TEXT", Kind::Memo},
        {"longtext", Kind::Memo},      {"LongBinary BLOB", Kind::Binary},
        {"blob", Kind::Binary},        {"", Kind::Memo},
        {"什么", Kind::Memo},
    };
    for (const auto& [declaration, kind] : cases)
        EXPECT_EQ(ColumnType::fromDeclaration(QString::fromUtf8(declaration)).kind, kind)
            << declaration;
    EXPECT_EQ(ColumnType::fromDeclaration(u"text(50)"_s).length, 50);
    EXPECT_EQ(ColumnType::fromDeclaration(u"text"_s).length, 255);
}

TEST(ColumnType, SingleKeepsTheNearestFloat)
{
    EXPECT_EQ(stored("Single", 90.1), Value(90.1f));
    EXPECT_EQ(stored("Single", u" 90.1 "_s), Value(90.1f));
    EXPECT_EQ(stored("Single", u"+5"_s), Value(5.f));
    EXPECT_EQ(stored("Single", -1), Value(-1.f));
    EXPECT_EQ(stored("Single", true), Value(-1.f));
    EXPECT_EQ(stored("Single", 1e-60), Value(0.f));
    EXPECT_EQ(refusal("Single", 1e39), u"“1E+39”不能存入列“列”：数字太大。"_s);
}

TEST(ColumnType, WholeNumbersRoundHalfToEven)
{
    EXPECT_EQ(stored("Integer", 2.5), Value(qint64(2)));
    EXPECT_EQ(stored("Integer", 3.5), Value(qint64(4)));
    EXPECT_EQ(stored("Long", -0.5), Value(qint64(0)));
    EXPECT_EQ(stored("Long", u"12"_s), Value(qint64(12)));
}

TEST(ColumnType, WholeNumbersOutsideTheRangeAreRefused)
{
    EXPECT_EQ(stored("Integer", 32767.4), Value(qint64(32767)));
    EXPECT_EQ(refusal("Integer", 32768), u"“32768”不能存入列“列”：数字太大。"_s);
    EXPECT_EQ(stored("Long", -2147483648.0), Value(qint64(-2147483648LL)));
    EXPECT_EQ(refusal("Long", qint64(2147483648LL)), u"“2147483648”不能存入列“列”：数字太大。"_s);
    EXPECT_THROW(stored("Long", std::numeric_limits<double>::quiet_NaN()), Error);
}

TEST(ColumnType, OnlyATextThatIsANumberFromEndToEndIsOne)
{
    for (const QString& text : {u"缺考"_s, QString(), u"12班"_s, u"1,5"_s, u"inf"_s, u"nan"_s,
                                u"+-5"_s, u"++5"_s, u"-"_s, u"0x10"_s})
        EXPECT_EQ(refusal("Double", text), u"“%1”不能存入列“列”：不是数字。"_s.arg(text));
    EXPECT_EQ(refusal("Double", u"1e400"_s), u"“1e400”不能存入列“列”：数字太大。"_s);
    EXPECT_THROW(stored("Double", std::numeric_limits<double>::infinity()), Error);
    EXPECT_THROW(stored("Double", QByteArray("1")), Error);
}

TEST(ColumnType, TextStaysTextAndIsRefusedWhenTooLong)
{
    EXPECT_EQ(stored("text(3)", u"007"_s), Value(u"007"_s));
    EXPECT_EQ(stored("text(3)", 12), Value(u"12"_s));
    EXPECT_EQ(stored("text(4)", 90.1f), Value(u"90.1"_s));
    EXPECT_EQ(stored("text(2)", u"语文"_s), Value(u"语文"_s));
    EXPECT_EQ(refusal("text(2)", u"语文课"_s), u"“语文课”不能存入列“列”：文字超过 2 个字符。"_s);
    EXPECT_EQ(stored("memo", QString(1000, u'长')), Value(QString(1000, u'长')));
    EXPECT_THROW(stored("memo", QByteArray("x")), Error);
}

TEST(ColumnType, BinaryTakesBytesAlone)
{
    EXPECT_EQ(stored("LongBinary", QByteArray("x")), Value(QByteArray("x")));
    EXPECT_THROW(stored("LongBinary", u"x"_s), Error);
}

TEST(ColumnType, NullFitsEveryColumn)
{
    for (const char* type :
         {"Single", "Double", "Long", "Integer", "YesNo", "text(1)", "memo", "blob"})
        EXPECT_TRUE(stored(type, Value()).isNull());
}

class TypedFields : public testing::Test
{
protected:
    TypedFields()
    {
        connection.Open(file.path());
        set.Open(u"select * from T"_s, connection);
    }

    DatabaseFile file{
        "create table T(ID INTEGER PRIMARY KEY, S Single REAL, D Double REAL, L Long INTEGER,"
        " I Integer INTEGER, B Boolean INTEGER, X text(5) collate nocase,"
        " M Memo TEXT collate nocase, P number, Q Single);"};
    Connection connection;
    Recordset set;
};

TEST_F(TypedFields, ARefusedValueLeavesTheRestOfTheRowToBeWritten)
{
    set.AddNew();
    set.Fields(u"X"_s).setValue(u"007"_s);
    EXPECT_THROW(set.Fields(u"I"_s).setValue(70000), Error);
    EXPECT_THROW(set.Fields(u"M"_s).setValue(QByteArray("x")), Error);
    set.Fields(u"L"_s).setValue(70000);
    set.Update();
    EXPECT_EQ(rowsOf(connection, u"select X,I,L from T"_s), u"007|NULL|70000"_s);
}

TEST_F(TypedFields, ValuesComeBackWithTheTypeOfTheirColumn)
{
    set.AddNew();
    const std::pair<QString, Value> values[] = {
        {u"S"_s, Value(90.1f)},     {u"D"_s, Value(3.0)},  {u"L"_s, Value(qint64(7))},
        {u"I"_s, Value(qint64(7))}, {u"B"_s, Value(true)}, {u"X"_s, Value(u"007"_s)},
        {u"M"_s, Value(u"12"_s)},   {u"P"_s, Value(5.0)},  {u"Q"_s, Value(5.f)},
    };
    for (const auto& [name, value] : values)
        set.Fields(name).setValue(value);
    set.Update();
    Recordset again;
    again.Open(u"select * from T"_s, connection);
    Recordset snapshot;
    snapshot.Open(u"select *,S from T"_s, connection);
    for (const auto& [name, value] : values) {
        EXPECT_EQ(again.Fields(name).Value(), value) << name.toStdString();
        EXPECT_EQ(snapshot.Fields(name).Value(), value) << name.toStdString();
    }
}

TEST_F(TypedFields, TheNumberOfAnAutoNumberedTableIsALong)
{
    set.AddNew();
    set.Fields(u"ID"_s).setValue(100000);
    set.Update();
    EXPECT_EQ(set.Fields(u"ID"_s).Value(), Value(qint64(100000)));
}

TEST_F(TypedFields, ATextNeverTurnsIntoANumberInTheFile)
{
    connection.Execute(u"insert into T(X,M) values('007','1e3')"_s);
    EXPECT_EQ(rowsOf(connection, u"select typeof(X),X,typeof(M),M from T"_s),
              u"text|007|text|1e3"_s);
}

} // namespace
} // namespace database
