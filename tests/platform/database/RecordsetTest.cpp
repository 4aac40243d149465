#include "DatabaseFile.h"

#include "platform/database/WriteBatch.h"

namespace database {
namespace {

using namespace Qt::StringLiterals;
using runtime::Value;

class Rows : public testing::Test
{
protected:
    Rows() { connection.Open(file.path()); }

    QString rows(const QString& sql) { return rowsOf(connection, sql); }

    /// Pages that the engine had to fetch since it was last asked.
    int pagesRead()
    {
        int now = 0;
        int highest = 0;
        sqlite3_db_status(connection.handle(), SQLITE_DBSTATUS_CACHE_MISS, &now, &highest, 1);
        return now;
    }

    DatabaseFile file{
        "create table 信息表(ID INTEGER PRIMARY KEY AUTOINCREMENT, 班级 Double REAL, 学号 "
        "Double REAL,"
        "  姓名 text(4) collate nocase, 科类 text(50) collate nocase, 类别代码 Double "
        "REAL default 1,"
        "  照片 LongBinary BLOB);"
        "create index 班级学号 on 信息表(班级, 学号);"
        "insert into 信息表(ID, 班级, 学号, 姓名, 科类) values(1, 2, 1, '丁', '理'),(2, "
        "1, 2, '丙', '文'),"
        "  (3, 1, 1, '乙', '文'),(4, NULL, 3, '甲', '理');"};
    Connection connection;
    Recordset set;
};

TEST_F(Rows, OpeningATableReadsNothingFromIt)
{
    connection.columns(u"信息表"_s);
    Traced traced(connection);
    set.Open(u"select * from 信息表"_s, connection);
    EXPECT_EQ(set.fieldCount(), 7);
    EXPECT_EQ(set.Fields(6).Name(), u"照片"_s);
    EXPECT_EQ(traced.statements, QStringList());
}

TEST_F(Rows, AUsualRowUpdateLeavesTheKnownColumnsKnown)
{
    connection.columns(u"信息表"_s);
    connection.Execute(u"update 信息表 set 科类='理' where ID=2"_s);
    Traced traced(connection);
    set.Open(u"select * from 信息表"_s, connection);
    EXPECT_EQ(traced.statements, QStringList());
}

TEST_F(Rows, APictureIsReadOnlyWhenItIsAskedFor)
{
    connection.Execute(u"update 信息表 set 照片=randomblob(1000000)"_s);
    connection.Open(file.path());
    set.Open(u"select * from 信息表"_s, connection);
    pagesRead();
    for (; !set.Eof(); set.MoveNext())
        set.Fields(u"姓名"_s).Value();
    EXPECT_LT(pagesRead(), 20);
    set.Open(u"select * from 信息表 where ID=1"_s, connection);
    EXPECT_EQ(set.Fields(u"照片"_s).Value().toBytes().size(), 1'000'000);
    EXPECT_GT(pagesRead(), 200);
}

TEST_F(Rows, TheCountIsExactRightAfterOpen)
{
    set.Open(u"select * from 信息表"_s, connection);
    EXPECT_EQ(set.RecordCount(), 4);
    set.Open(u"select *  from 信息表 where 科类='文';"_s, connection);
    EXPECT_EQ(set.RecordCount(), 2);
    set.Open(u"select * from 信息表 where ID=99"_s, connection);
    EXPECT_EQ(set.RecordCount(), 0);
    EXPECT_TRUE(set.Eof());
    set.Open(u"select 姓名 from 信息表"_s, connection);
    EXPECT_EQ(set.RecordCount(), 4);
    set.Open(u"select count(*) from 信息表"_s, connection);
    EXPECT_EQ(set.RecordCount(), 1);
}

TEST_F(Rows, WithoutAnOrderTheyComeByRowIdWhateverIndexServes)
{
    EXPECT_EQ(rows(u"select ID from 信息表 where 班级>0"_s), u"1 / 2 / 3"_s);
    EXPECT_EQ(rows(u"select ID,班级,学号 from 信息表 where 班级=1"_s), u"2|1|2 / 3|1|1"_s);
    EXPECT_EQ(rows(u"select 班级,学号 from 信息表"_s), u"2|1 / 1|2 / 1|1 / NULL|3"_s);
    set.Open(u"select * from 信息表 where 班级>0"_s, connection);
    EXPECT_EQ(set.Fields(u"ID"_s).Value(), Value(1));
}

TEST_F(Rows, WithAnOrderTheRowIdIsTheLastKey)
{
    const QString byStream = u" from 信息表 order by 科类"_s;
    EXPECT_EQ(rows(u"select 科类,ID"_s + byStream), u"文|2 / 文|3 / 理|1 / 理|4"_s);
    connection.Execute(u"create index 倒 on 信息表(科类, ID desc)"_s);
    EXPECT_EQ(rows(u"select 科类,ID"_s + byStream), u"文|2 / 文|3 / 理|1 / 理|4"_s);
    set.Open(u"select *"_s + byStream + u" desc"_s, connection);
    EXPECT_EQ(set.Fields(u"ID"_s).Value(), Value(1));
}

TEST_F(Rows, NullComesFirstAscendingAndLastDescending)
{
    EXPECT_EQ(rows(u"select ID from 信息表 order by 班级"_s), u"4 / 2 / 3 / 1"_s);
    EXPECT_EQ(rows(u"select ID from 信息表 order by 班级 desc"_s), u"1 / 2 / 3 / 4"_s);
}

TEST_F(Rows, DistinctComesAscendingByAllItsColumns)
{
    EXPECT_EQ(rows(u"select distinct 科类 from 信息表"_s), u"文 / 理"_s);
    EXPECT_EQ(rows(u"select distinct 科类,学号 from 信息表"_s), u"文|1 / 文|2 / 理|1 / 理|3"_s);
    EXPECT_EQ(rows(u"select distinct max(班级,学号),科类 from 信息表 where 班级>0"_s),
              u"1|文 / 2|文 / 2|理"_s);
    EXPECT_EQ(rows(u"select distinct 学号 from 信息表 order by 学号 desc"_s), u"3 / 2 / 1"_s);
}

TEST_F(Rows, StatementsThatTakeNoRowIdStillWork)
{
    EXPECT_EQ(rows(u"select max(班级),min(学号) from 信息表"_s), u"2|1"_s);
    EXPECT_EQ(rows(u"select 科类,count(*) from 信息表 group by 科类"_s), u"文|2 / 理|2"_s);
    EXPECT_EQ(rows(u"select ID from 信息表 order by ID limit 2"_s), u"1 / 2"_s);
    EXPECT_EQ(rows(u"select a.ID from 信息表 as a, 信息表 as b where a.ID=b.ID and b.ID<3"_s),
              u"1 / 2"_s);
    EXPECT_EQ(rows(u"select 1+1"_s), u"2"_s);
}

TEST_F(Rows, WhatIsNoTableOfItsOwnComesInTheOrderOfTheEngine)
{
    const QString arts = u"(select ID,班级 from 信息表 where 科类='文')"_s;
    EXPECT_EQ(rows(u"select * from "_s + arts), u"2|1 / 3|1"_s);
    EXPECT_EQ(rows(u"select ID from "_s + arts + u" order by 班级,ID desc"_s), u"3 / 2"_s);
    EXPECT_EQ(rows(u"select distinct 班级 from "_s + arts), u"1"_s);
    EXPECT_EQ(rows(u"select ID from (select ID from 信息表 where ID>2 order by ID desc)"_s),
              u"4 / 3"_s);
    EXPECT_EQ(rows(u"select a.ID from 信息表 a, (select 3 as n) b where a.ID=n"_s), u"3"_s);
    EXPECT_EQ(rows(u"select a.ID from 信息表 a cross join "_s + arts
                   + u" b on a.ID=b.ID order by a.ID"_s),
              u"2 / 3"_s);
    EXPECT_EQ(rows(u"select value from json_each('[7,5]')"_s), u"7 / 5"_s);
    EXPECT_EQ(rows(u"select group_concat(ID) from 信息表 where ID<3"_s), u"1,2"_s);
    EXPECT_EQ(rows(u"select count(*) from sqlite_master where name='信息表'"_s), u"1"_s);
    EXPECT_EQ(rows(u"select name from sqlite_master where name='信息表'"_s), u"信息表"_s);
}

TEST_F(Rows, ATableMayHaveAShortNameAndTheNameOfItsFile)
{
    connection.Execute(u"create index 班 on 信息表(班级)"_s);
    EXPECT_EQ(rows(u"select x.ID from 信息表 as x where x.班级>0"_s), u"1 / 2 / 3"_s);
    EXPECT_EQ(rows(u"select ID from main.信息表 where 班级>0"_s), u"1 / 2 / 3"_s);
    EXPECT_EQ(rows(u"select ID from 信息表 indexed by 班 where 班级>0"_s), u"1 / 2 / 3"_s);
}

TEST_F(Rows, ATableWithoutRowIdsComesByItsKey)
{
    connection.Execute(u"create table 甲(a text primary key, b) without rowid"_s);
    connection.Execute(u"insert into 甲 values('乙', 1), ('丙', 2)"_s);
    EXPECT_EQ(rows(u"select b from 甲"_s), u"2 / 1"_s);
    EXPECT_EQ(rows(u"select * from 甲"_s), u"丙|2 / 乙|1"_s);
}

TEST_F(Rows, AMistakeIsToldAboutTheTextAsItWasGiven)
{
    const std::pair<QString, QString> cases[] = {
        {u"select ID from 信息表 where"_s, u"语句不完整。（incomplete input）"_s},
        {u"select ID from 信息表 order by"_s, u"语句不完整。（incomplete input）"_s},
        {u"select distinct ID from 信息表 where ID in ("_s, u"语句不完整。（incomplete input）"_s},
    };
    for (const auto& [sql, message] : cases)
        EXPECT_EQ(errorOf([&] { set.Open(sql, connection); }).description(), message);
}

TEST_F(Rows, NamesIgnoreCaseAndPositionsCountFromZero)
{
    set.Open(u"select * from 信息表"_s, connection);
    EXPECT_EQ(set.position(u"id"_s), 0);
    EXPECT_EQ(set.position(u"无"_s), -1);
    EXPECT_EQ(set.Fields(u"Id"_s).Value(), Value(1));
    EXPECT_EQ(set.Fields(3).Value(), Value(u"丁"_s));
    EXPECT_EQ(errorOf([&] { set.Fields(u"无"_s); }).description(), u"没有名为“无”的列。"_s);
    EXPECT_EQ(errorOf([&] { set.Fields(7); }).description(), u"没有第 8 列。"_s);
    EXPECT_THROW(set.Fields(-1), Error);
}

TEST_F(Rows, BehindTheLastRowThereIsNothingToReadOrChange)
{
    set.Open(u"select * from 信息表 where ID=4"_s, connection);
    set.MoveNext();
    EXPECT_TRUE(set.Eof());
    EXPECT_THROW(set.MoveNext(), Error);
    EXPECT_THROW(set.Fields(0).Value(), Error);
    EXPECT_THROW(set.Fields(1).setValue(1), Error);
}

TEST_F(Rows, BehindTheLastOneOfAQueryThereIsNothingToReadEither)
{
    set.Open(u"select distinct 科类 from 信息表 where ID=4"_s, connection);
    EXPECT_EQ(set.Fields(0).Value().text(), u"理"_s);
    set.MoveNext();
    EXPECT_TRUE(set.Eof());
    EXPECT_THROW(set.MoveNext(), Error);
    EXPECT_THROW(set.Fields(0).Value(), Error);
}

TEST_F(Rows, AClosedRecordsetRefusesAndClosingTwiceIsHarmless)
{
    EXPECT_FALSE(set.isOpen());
    set.Close();
    set.Open(u"select * from 信息表"_s, connection);
    EXPECT_TRUE(set.isOpen());
    set.Close();
    set.Close();
    EXPECT_EQ(errorOf([&] { set.RecordCount(); }).description(), u"记录集没有打开。"_s);
    EXPECT_THROW(set.Eof(), Error);
    EXPECT_THROW(set.AddNew(), Error);
}

TEST_F(Rows, AFailedOpenLeavesItClosed)
{
    set.Open(u"select * from 信息表"_s, connection);
    EXPECT_EQ(
        errorOf([&] { set.Open(u"select * from 信息表 where 无=1"_s, connection); }).description(),
        u"没有名为“无”的列。（no such column: 无）"_s);
    EXPECT_FALSE(set.isOpen());
}

TEST_F(Rows, UpdateWritesOnlyTheChangedFields)
{
    set.Open(u"select * from 信息表 where ID=2"_s, connection);
    set.Fields(u"姓名"_s).setValue(u"新"_s);
    set.Fields(u"班级"_s).setValue(3);
    connection.Execute(u"update 信息表 set 科类='理' where ID=2"_s);
    Traced traced(connection);
    set.Update();
    ASSERT_EQ(traced.statements.size(), 1);
    EXPECT_FALSE(traced.statements[0].contains(u"科类"_s));
    EXPECT_EQ(rows(u"select 姓名,班级,科类 from 信息表 where ID=2"_s), u"新|3|理"_s);
}

TEST_F(Rows, UpdateWithoutAChangeWritesNothing)
{
    set.Open(u"select * from 信息表"_s, connection);
    Traced traced(connection);
    set.Update();
    EXPECT_EQ(traced.statements, QStringList());
}

TEST_F(Rows, AFieldReadsAsAssignedBeforeAndAfterUpdate)
{
    set.Open(u"select * from 信息表 where ID=2"_s, connection);
    EXPECT_EQ(set.Fields(u"姓名"_s).Value(), Value(u"丙"_s));
    set.Fields(u"姓名"_s).setValue(u"新"_s);
    EXPECT_EQ(set.Fields(u"姓名"_s).Value(), Value(u"新"_s));
    set.Update();
    EXPECT_EQ(set.Fields(u"姓名"_s).Value(), Value(u"新"_s));
}

TEST_F(Rows, MovingOnDropsWhatWasNotUpdated)
{
    set.Open(u"select * from 信息表"_s, connection);
    set.Fields(u"姓名"_s).setValue(u"新"_s);
    set.MoveNext();
    set.Update();
    EXPECT_EQ(rows(u"select count(*) from 信息表 where 姓名='新'"_s), u"0"_s);
}

TEST_F(Rows, ARowThatWasDeletedMeanwhileTellsSo)
{
    set.Open(u"select * from 信息表"_s, connection);
    EXPECT_EQ(set.RecordCount(), 4);
    connection.Execute(u"delete from 信息表 where ID=1"_s);
    EXPECT_EQ(errorOf([&] { set.Fields(u"姓名"_s).Value(); }).description(),
              u"这条记录已经被删除。"_s);
    set.Fields(u"姓名"_s).setValue(u"新"_s);
    EXPECT_THROW(set.Update(), Error);
    set.MoveNext();
    EXPECT_EQ(set.Fields(u"姓名"_s).Value(), Value(u"丙"_s));
}

TEST_F(Rows, AnAddedRowTakesTheDefaultsAndBecomesTheCurrentOne)
{
    set.Open(u"select * from 信息表"_s, connection);
    set.AddNew();
    EXPECT_TRUE(set.Fields(u"ID"_s).Value().isNull());
    set.Fields(u"姓名"_s).setValue(u"戊"_s);
    set.Update();
    EXPECT_EQ(set.lastInsertId(), 5);
    EXPECT_EQ(set.Fields(u"ID"_s).Value(), Value(5));
    EXPECT_EQ(set.Fields(u"类别代码"_s).Value(), Value(1.0));
    set.Fields(u"班级"_s).setValue(9);
    set.Update();
    EXPECT_EQ(rows(u"select 姓名,班级 from 信息表 where ID=5"_s), u"戊|9"_s);
    set.MoveNext();
    EXPECT_TRUE(set.Eof());
}

TEST_F(Rows, AnAddedRowIsCounted)
{
    set.Open(u"select * from 信息表 where 班级=1"_s, connection);
    EXPECT_EQ(set.RecordCount(), 2);
    set.AddNew();
    set.Fields(u"班级"_s).setValue(1);
    set.Update();
    EXPECT_EQ(set.RecordCount(), 3);
    Recordset fresh;
    fresh.Open(u"select * from 信息表"_s, connection);
    fresh.AddNew();
    fresh.Update();
    EXPECT_EQ(fresh.RecordCount(), 6);
}

TEST_F(Rows, TheNumberOfADeletedRowIsNotGivenAgain)
{
    connection.Execute(u"delete * from 信息表"_s);
    set.Open(u"select * from 信息表"_s, connection);
    set.AddNew();
    set.Update();
    EXPECT_EQ(set.lastInsertId(), 5);
}

TEST_F(Rows, ManyRowsAreAddedWithOneStatement)
{
    set.Open(u"select * from 信息表"_s, connection);
    WriteBatch batch(connection);
    for (int i = 0; i < 300; ++i) {
        set.AddNew();
        set.Fields(u"学号"_s).setValue(i);
        set.Fields(u"姓名"_s).setValue(QString::number(i));
        set.Update();
    }
    batch.commit();
    EXPECT_EQ(rows(u"select count(*),max(学号) from 信息表 where 班级 is null"_s), u"301|299"_s);
}

TEST_F(Rows, AFailedUpdateDropsThePendingRow)
{
    set.Open(u"select * from 信息表"_s, connection);
    set.AddNew();
    set.Fields(u"ID"_s).setValue(1);
    set.Fields(u"姓名"_s).setValue(u"戊"_s);
    EXPECT_EQ(errorOf([&] { set.Update(); }).failure(), Failure::Value);
    set.Update();
    EXPECT_EQ(set.Fields(u"姓名"_s).Value(), Value(u"丁"_s));
    EXPECT_EQ(rows(u"select count(*) from 信息表"_s), u"4"_s);
}

TEST_F(Rows, OtherQueriesAreReadOnly)
{
    set.Open(u"select 姓名 from 信息表"_s, connection);
    set.Fields(0).setValue(u"新"_s);
    const QString refused = u"这样的查询结果只能看，不能修改。"_s;
    EXPECT_EQ(errorOf([&] { set.Update(); }).description(), refused);
    set.AddNew();
    EXPECT_EQ(errorOf([&] { set.Update(); }).description(), refused);
}

TEST_F(Rows, AStatementWithoutRowsIsRunByOpen)
{
    set.Open(u"update 信息表 set 科类='文'"_s, connection);
    EXPECT_FALSE(set.isOpen());
    EXPECT_EQ(rows(u"select distinct 科类 from 信息表"_s), u"文"_s);
    set.Open(u"alter table 信息表 add column 语文 Single"_s, connection);
    EXPECT_EQ(connection.columns(u"信息表"_s).find(u"语文"_s), 7);
}

TEST_F(Rows, AColumnDroppedMeanwhileIsAnErrorAndNoCrash)
{
    set.Open(u"select * from 信息表"_s, connection);
    EXPECT_EQ(set.Fields(u"科类"_s).Value(), Value(u"理"_s));
    connection.Execute(u"alter table 信息表 drop column 科类"_s);
    set.MoveNext();
    EXPECT_EQ(errorOf([&] { set.Fields(u"姓名"_s).Value(); }).failure(), Failure::Sql);
}

TEST_F(Rows, ClosingTheConnectionEndsThem)
{
    set.Open(u"select * from 信息表"_s, connection);
    set.Fields(u"姓名"_s).Value();
    set.Fields(u"姓名"_s).setValue(u"新"_s);
    set.Update();
    connection.Close();
    set.Fields(u"姓名"_s).setValue(u"又"_s);
    EXPECT_EQ(errorOf([&] { set.Update(); }).description(), u"成绩库已经关闭。"_s);
    set.MoveNext();
    EXPECT_EQ(errorOf([&] { set.Fields(u"姓名"_s).Value(); }).description(), u"成绩库已经关闭。"_s);
    EXPECT_EQ(errorOf([&] { set.Open(u"select * from 信息表"_s, connection); }).description(),
              u"没有打开成绩库。"_s);
}

TEST_F(Rows, AnotherProgramCanWriteBetweenTheRows)
{
    set.Open(u"select * from 信息表"_s, connection);
    EXPECT_EQ(set.Fields(u"姓名"_s).Value().text(), u"丁"_s);
    OtherProgram(file.path()).run("update 信息表 set 姓名='戊' where ID=2");
    set.MoveNext();
    EXPECT_EQ(set.Fields(u"姓名"_s).Value().text(), u"戊"_s);
}

TEST_F(Rows, ARowIsFetchedOnceForAllItsFields)
{
    set.Open(u"select * from 信息表"_s, connection);
    EXPECT_EQ(set.Fields(u"姓名"_s).Value().text(), u"丁"_s);
    const Traced traced(connection);
    EXPECT_EQ(set.Fields(u"科类"_s).Value().text(), u"理"_s);
    EXPECT_EQ(traced.statements, QStringList());
}

TEST_F(Rows, TwoRecordsetsOverOneTextWalkEachForItself)
{
    const QString sql = u"select * from 信息表 where 班级=1"_s;
    Recordset other;
    set.Open(sql, connection);
    other.Open(sql, connection);
    set.MoveNext();
    EXPECT_EQ(other.Fields(u"姓名"_s).Value().text(), u"丙"_s);
    EXPECT_EQ(set.Fields(u"姓名"_s).Value().text(), u"乙"_s);
    connection.Execute(u"insert into 信息表(ID,班级) values(9,1)"_s);
    EXPECT_EQ(other.RecordCount(), 2);
    other.Open(sql, connection);
    EXPECT_EQ(other.RecordCount(), 3);
}

TEST_F(Rows, AColumnThatIsGoneIsToldAtOpeningThoughTheTextWasOpenedBefore)
{
    const QString sql = u"select * from 信息表 where 科类='文'"_s;
    set.Open(sql, connection);
    EXPECT_EQ(set.RecordCount(), 2);
    connection.Execute(u"alter table 信息表 drop column 科类"_s);
    EXPECT_THROW(set.Open(sql, connection), Error);
}

} // namespace
} // namespace database
