#include "DatabaseFile.h"

#include "platform/database/Statement.h"
#include "platform/database/WriteBatch.h"

namespace database {
namespace {

using namespace Qt::StringLiterals;
using runtime::Value;

class Statements : public testing::Test
{
protected:
    Statements() { connection.Open(file.path()); }

    QString rows(const QString& sql) { return rowsOf(connection, sql); }
    Error failed(const QString& sql)
    {
        return errorOf([&] { connection.Execute(sql); });
    }

    DatabaseFile file{"create table T(n text(50) collate nocase, g Long INTEGER, v Single REAL);"
                      "insert into T values('甲', 1, 90),('乙', 1, 90),('Bob', 2, 2),('丙', 2, 4),"
                      "  ('丁', 3, 7),('戊', 4, NULL);"};
    Connection connection;
};

TEST_F(Statements, StdevIsTheDeviationOfTheSample)
{
    EXPECT_EQ(rows(u"select stdev(v) from T where g=2"_s), u"1.4142135623731"_s);
    EXPECT_EQ(rows(u"select STDEV(v) from T where g=1"_s), u"0"_s);
    EXPECT_EQ(rows(u"select stdev(v) from T where g=3"_s), u"NULL"_s);
    EXPECT_EQ(rows(u"select stdev(v) from T where g=4"_s), u"NULL"_s);
    EXPECT_EQ(rows(u"select stdev(v) from T where g=99"_s), u"NULL"_s);
}

TEST_F(Statements, StdevOfEqualValuesIsExactlyZero)
{
    connection.Execute(u"insert into T with recursive c(i) as "
                       "(select 1 union all select i+1 from c where i<999) "
                       "select 'x', 9, 90.1 from c"_s);
    Recordset set;
    set.Open(u"select stdev(v) from T where g=9"_s, connection);
    EXPECT_EQ(set.Fields(0).Value(), Value(0.0));
}

TEST_F(Statements, AllRowsAreDeletedInTheOldWords)
{
    connection.Execute(u"delete * from T where g=1"_s);
    EXPECT_EQ(rows(u"select count(*) from T"_s), u"4"_s);
    connection.Execute(u"delete * from T"_s);
    EXPECT_EQ(rows(u"select count(*) from T"_s), u"0"_s);
}

TEST_F(Statements, TextsAndNamesIgnoreCase)
{
    EXPECT_EQ(rows(u"select g from t where N='BOB'"_s), u"2"_s);
    connection.Execute(u"ALTER TABLE T add COLUMN k text(50)"_s);
    connection.Execute(u"update T set k='Abc'"_s);
    EXPECT_EQ(rows(u"select count(*) from T where K='aBC'"_s), u"6"_s);
}

TEST_F(Statements, DoubleQuotesHoldAText)
{
    EXPECT_EQ(rows(u"select g from T where n=\"甲\""_s), u"1"_s);
    EXPECT_EQ(rows(u"select count(*) from T where n=\"g\""_s), u"0"_s);
}

TEST_F(Statements, ColumnsAreAddedWithTheirTypes)
{
    const std::pair<QString, ColumnType::Kind> types[] = {
        {u"Single"_s, ColumnType::Kind::Single}, {u"long"_s, ColumnType::Kind::Long},
        {u"Double"_s, ColumnType::Kind::Double}, {u"text(50)"_s, ColumnType::Kind::Text},
        {u"memo"_s, ColumnType::Kind::Memo},
    };
    const qsizetype fixed = connection.columns(u"T"_s).count();
    for (const auto& [type, kind] : types)
        connection.Execute(u"ALTER TABLE T add COLUMN 列"_s + type.left(4) + u' ' + type);
    const TableColumns& columns = connection.columns(u"T"_s);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(columns.at(int(fixed) + i).type.kind, types[i].second);
    EXPECT_EQ(columns.at(int(fixed) + 3).type.length, 50);
}

TEST_F(Statements, AColumnIsDropped)
{
    connection.Execute(u"ALTER TABLE T DROP COLUMN V"_s);
    EXPECT_EQ(connection.columns(u"T"_s).find(u"v"_s), -1);
    EXPECT_EQ(rows(u"select * from T where g=3"_s), u"丁|3"_s);
    EXPECT_EQ(failed(u"ALTER TABLE T DROP COLUMN 无"_s).failure(), Failure::Sql);
}

TEST_F(Statements, TheColumnsOfATableCanBeWalkedWhileTheyAreChanged)
{
    QStringList seen;
    for (const Column& column : connection.columns(u"T"_s)) {
        seen.append(column.name);
        connection.Execute(u"ALTER TABLE T add COLUMN %1旧 Single"_s.arg(column.name));
        connection.columns(u"T"_s);
    }
    EXPECT_EQ(seen, QStringList({u"n"_s, u"g"_s, u"v"_s}));
    EXPECT_EQ(connection.columns(u"T"_s).count(), 6);
    EXPECT_EQ(connection.columns(u"无"_s).count(), 0);
}

TEST_F(Statements, ErrorsAreChineseWithTheEnginesWordsBehind)
{
    const std::pair<QString, QString> cases[] = {
        {u"select * from T where n=N'"_s,
         u"语句有语法错误，在“'”处引号不配对或字符无效。（unrecognized token: \"'\"）"_s},
        {u"select 无 from T"_s, u"没有名为“无”的列。（no such column: 无）"_s},
        {u"select * from 无"_s, u"没有名为“无”的表。（no such table: 无）"_s},
        {u"select 无(1)"_s, u"没有名为“无”的函数。（no such function: 无）"_s},
        {u"selekt"_s, u"语句有语法错误，在“selekt”附近。（near \"selekt\": syntax error）"_s},
        {u"select * from T where"_s, u"语句不完整。（incomplete input）"_s},
        {u"ALTER TABLE T add COLUMN G long"_s, u"列“G”已经存在。（duplicate column name: G）"_s},
        {u"create table T(a)"_s, u"表“T”已经存在。（table T already exists）"_s},
        {u"insert into T values(1)"_s,
         u"语句无法执行。（table T has 3 columns but 1 values were supplied）"_s},
        {QString(), u"没有可以执行的语句。"_s},
        {u" ; "_s, u"没有可以执行的语句。"_s},
        {u"delete from T; delete from T"_s, u"一次只能执行一条语句。"_s},
    };
    for (const auto& [sql, description] : cases) {
        EXPECT_EQ(failed(sql).description(), description);
        EXPECT_EQ(errorOf([&, text = sql] { rowsOf(connection, text); }).description(),
                  description);
    }
    EXPECT_EQ(rows(u"select count(*) from T"_s), u"6"_s);
}

TEST_F(Statements, ABrokenConditionIsNotMendedByAccident)
{
    Recordset set;
    EXPECT_THROW(set.Open(u"select * from T where g=1) or (g=2"_s, connection), Error);
}

TEST_F(Statements, AKeyGivenTwiceIsAnErrorOfTheValue)
{
    connection.Execute(u"create table K(k text(9) collate nocase primary key)"_s);
    connection.Execute(u"insert into K values('a')"_s);
    EXPECT_EQ(failed(u"insert into K values('A')"_s).failure(), Failure::Value);
}

TEST_F(Statements, APreparedStatementIsKeptAndTakesTypedValues)
{
    Statement& insert = connection.prepared(u"insert into T(n,g,v) values(?,?,?)"_s);
    for (int i = 0; i < 3; ++i) {
        insert.reset();
        insert.bindValue(1, u"新"_s);
        insert.bindInteger(2, 50 + i);
        if (i == 1)
            insert.bindNull(3);
        else
            insert.bindDouble(3, i + 0.5);
        EXPECT_EQ(insert.run(), 1);
    }
    EXPECT_EQ(&insert, &connection.prepared(u"insert into T(n,g,v) values(?,?,?)"_s));
    EXPECT_EQ(rows(u"select * from T where g>=50"_s), u"新|50|0.5 / 新|51|NULL / 新|52|2.5"_s);
    EXPECT_EQ(connection.prepared(u"update T set v=1 where g=1"_s).run(), 2);
}

TEST_F(Statements, EveryKindOfValueIsBoundAndReadBack)
{
    Statement& echo = connection.prepared(u"select ?"_s);
    const std::pair<Value, Value> cases[] = {
        {Value(), Value()},
        {Value(3), Value(qint64(3))},
        {Value(0.5f), Value(0.5)},
        {Value(true), Value(qint64(1))},
        {Value(u"文"_s), Value(u"文"_s)},
        {Value(QByteArray("\0x", 2)), Value(QByteArray("\0x", 2))},
        {Value(QByteArray()), Value(QByteArray())},
        {Value(qint64(1) << 60), Value(qint64(1) << 60)},
        {Value::error(u"#N/A"_s), Value(u"#N/A"_s)},
    };
    for (const auto& [bound, read] : cases) {
        echo.bind({bound});
        ASSERT_TRUE(echo.step());
        EXPECT_EQ(echo.value(0), read);
        EXPECT_FALSE(echo.step());
    }
}

TEST_F(Statements, NumbersAreBoundAndReadTogetherWithNaNForNull)
{
    const double none = std::numeric_limits<double>::quiet_NaN();
    Statement& numbers = connection.prepared(u"select ?1, ?2, ?3, ?4, ?5, typeof(?3)"_s);
    numbers.reset();
    numbers.bindNumbers(1, std::vector{0.0, none, 7.0, -2.5, 1e300});
    ASSERT_TRUE(numbers.step());
    std::vector<double> read(4);
    numbers.readNumbers(1, read);
    EXPECT_TRUE(std::isnan(read[0]));
    read[0] = 0;
    EXPECT_EQ(read, (std::vector{0.0, 7.0, -2.5, 1e300}));
    EXPECT_FALSE(numbers.isNull(0));
    EXPECT_EQ(numbers.text(5), u"integer"_s);
}

TEST_F(Statements, BytesAreThoseOfTextsAndPictures)
{
    Statement row(connection, u"select '语', x'00ff', 12, NULL"_s);
    ASSERT_TRUE(row.step());
    EXPECT_EQ(row.bytes(0), QByteArrayView("\xE8\xAF\xAD"));
    EXPECT_EQ(row.bytes(1), QByteArrayView("\0\xFF", 2));
    EXPECT_TRUE(row.bytes(2).isEmpty());
    EXPECT_TRUE(row.bytes(3).isEmpty());
}

TEST_F(Statements, ATextStaysInItsPlaceUntilAnotherValueComes)
{
    Statement& echo = connection.prepared(u"select ?"_s);
    const Value values[] = {u"甲"_s, u"甲"_s, 1.5,     u"甲"_s,
                            Value(), u"甲"_s, u"乙"_s, QByteArray("\x01\x02", 2),
                            u"乙"_s};
    for (const Value& value : values) {
        echo.bind({value});
        ASSERT_TRUE(echo.step());
        EXPECT_EQ(echo.value(0), value);
    }
}

TEST_F(Statements, AFailedPrepareIsNotKept)
{
    EXPECT_THROW(connection.prepared(u"select 新列 from T"_s), Error);
    connection.Execute(u"ALTER TABLE T add COLUMN 新列 Single"_s);
    EXPECT_TRUE(connection.prepared(u"select 新列 from T"_s).step());
}

TEST_F(Statements, AStatementLeftOnARowDoesNotKeepATableFromBeingChanged)
{
    Statement& select = connection.prepared(u"select n from T"_s);
    ASSERT_TRUE(select.step());
    connection.Execute(u"ALTER TABLE T DROP COLUMN v"_s);
    EXPECT_FALSE(select.step()) << "it must not begin again by itself";
    ASSERT_TRUE((select.reset(), select.step()));
    Recordset set;
    set.Open(u"drop table T"_s, connection);
    EXPECT_EQ(connection.columns(u"T"_s).count(), 0);
}

TEST_F(Statements, RowsMayBeChangedWhileAStatementWalksOverThem)
{
    Statement& select = connection.prepared(u"select rowid from T order by rowid"_s);
    int walked = 0;
    while (select.step() && walked < 100) {
        ++walked;
        connection.Execute(u"update T set v=%1 where rowid=%1"_s.arg(select.integer(0)));
    }
    EXPECT_EQ(walked, 6);
    EXPECT_EQ(rows(u"select v from T"_s), u"1 / 2 / 3 / 4 / 5 / 6"_s);
}

TEST_F(Statements, FinishingLetsGoOfTheFile)
{
    Statement& select = connection.prepared(u"select n from T"_s);
    ASSERT_TRUE(select.step());
    select.finish();
    EXPECT_FALSE(select.step());
    OtherProgram(file.path()).run("update T set g=0");
    EXPECT_EQ(rows(u"select distinct g from T"_s), u"0"_s);
}

TEST_F(Statements, AClosedConnectionRefuses)
{
    connection.Close();
    connection.Close();
    EXPECT_FALSE(connection.isOpen());
    EXPECT_EQ(connection.path(), QString());
    EXPECT_EQ(failed(u"delete from T"_s).description(), u"没有打开成绩库。"_s);
    EXPECT_THROW(connection.columns(u"T"_s), Error);
    EXPECT_THROW(connection.prepared(u"select 1"_s), Error);
    EXPECT_THROW(WriteBatch{connection}, Error);
}

TEST_F(Statements, WithoutAnOpenLibraryAFaultyStatementSaysThatNoneIsOpen)
{
    connection.Close();
    EXPECT_EQ(failed(u"ALTER TABLE T add COLUMN"_s).failure(), Failure::Missing);
}

} // namespace
} // namespace database
