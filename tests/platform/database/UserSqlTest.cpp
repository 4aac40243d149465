#include "DatabaseFile.h"

#include "platform/database/WriteBatch.h"

namespace database {
namespace {

using namespace Qt::StringLiterals;

class UserSql : public testing::Test
{
protected:
    UserSql() { connection.Open(file.path()); }

    Error refused(const QString& sql)
    {
        return errorOf([&] { rowsOf(connection, sql, Trust::User); });
    }
    QString inFolder(const QString& name) const { return file.folder.filePath(name); }

    DatabaseFile file{"create table T(n Long INTEGER); insert into T values(1),(2);"};
    Connection connection;
};

TEST_F(UserSql, ReadsAndChangesTheTables)
{
    EXPECT_EQ(rowsOf(connection, u"select * from T where n>1"_s, Trust::User), u"2"_s);
    EXPECT_EQ(rowsOf(connection, u"select stdev(n) from T;"_s, Trust::User),
              u"0.707106781186548"_s);
    EXPECT_EQ(
        rowsOf(connection, u"with a(x) as (select max(n) from T) select x from a"_s, Trust::User),
        u"2"_s);
    connection.Execute(u"update T set n=n+1"_s, Trust::User);
    connection.Execute(u"delete * from T where n=2"_s, Trust::User);
    connection.Execute(u"alter table T add column 语文 Single"_s, Trust::User);
    connection.Execute(u"create table U(a)"_s, Trust::User);
    connection.Execute(u"alter table T drop column 语文"_s, Trust::User);
    connection.Execute(u"drop table U"_s, Trust::User);
    EXPECT_EQ(rowsOf(connection, u"select * from T"_s), u"3"_s);
}

TEST_F(UserSql, NothingThatLeavesTheLibraryIsRun)
{
    const QByteArray before = file.bytes();
    const QString statements[] = {
        u"ATTACH '%1' AS other"_s.arg(inFolder(u"new.db"_s)),
        u"DETACH main"_s,
        u"PRAGMA journal_mode=WAL"_s,
        u"PRAGMA user_version=7"_s,
        u"VACUUM"_s,
        u"VACUUM INTO '%1'"_s.arg(inFolder(u"copy.db"_s)),
        u"; vacuum into '%1'"_s.arg(inFolder(u"copy.db"_s)),
        u"vacuum into '%1'"_s.arg(inFolder(u"copy.db"_s)) + QChar(0) + u"'"_s,
        u"select load_extension('%1')"_s.arg(inFolder(u"evil.so"_s)),
        u"select * from T where n=load_extension('evil')"_s,
        u"BEGIN"_s,
        u"COMMIT"_s,
        u"END"_s,
        u"ROLLBACK"_s,
        u"SAVEPOINT a"_s,
        u"RELEASE a"_s,
        u"create trigger g after insert on T begin delete from T; end"_s,
        u"create temp trigger g after insert on T begin delete from T; end"_s,
        u"create view V as select * from T"_s,
        u"create temp view V as select * from T"_s,
        u"create temp table U(a)"_s,
        u"create virtual table V using fts5(a)"_s,
        u"create virtual table V using csv(filename='/etc/passwd')"_s,
        u"REINDEX"_s,
        u"ANALYZE"_s,
        u"explain delete from T"_s,
    };
    for (const QString& sql : statements) {
        EXPECT_EQ(refused(sql).failure(), Failure::Refused) << sql.toStdString();
        EXPECT_THROW(connection.Execute(sql, Trust::User), Error) << sql.toStdString();
    }
    connection.Close();
    EXPECT_EQ(file.bytes(), before);
    EXPECT_EQ(file.files(), QStringList({u"库.CJK"_s}));
}

TEST_F(UserSql, ASecondStatementIsNotRun)
{
    for (const QString& sql :
         {u"select * from T; delete from T"_s, u"select n from T;delete from T"_s,
          u"update T set n=5; delete from T"_s, u"delete from T;;commit"_s}) {
        EXPECT_EQ(refused(sql).description(), u"一次只能执行一条语句。"_s) << sql.toStdString();
    }
    EXPECT_EQ(rowsOf(connection, u"select n from T"_s), u"1 / 2"_s);
}

TEST_F(UserSql, AStatementWithACommentIsNotRun)
{
    for (const QString& sql :
         {u"select * from T -- where n=1"_s, u"update T set n=5 where n=2024--2025期中'"_s,
          u"/* select */ delete from T"_s, u"delete from T /*"_s}) {
        EXPECT_EQ(refused(sql).description(), u"语句有语法错误：语句里不能有注释（-- 或 /*）。"_s)
            << sql.toStdString();
        EXPECT_THROW(connection.Execute(sql), Error) << "nor one of the program";
    }
    EXPECT_EQ(rowsOf(connection, u"select n from T"_s), u"1 / 2"_s);
}

TEST_F(UserSql, TheTablesOfTheEngineCannotBeWritten)
{
    EXPECT_THROW(connection.Execute(u"delete from sqlite_master"_s, Trust::User), Error);
    EXPECT_THROW(connection.Execute(u"update sqlite_master set sql=''"_s, Trust::User), Error);
    EXPECT_THROW(connection.Execute(u"drop table sqlite_master"_s, Trust::User), Error);
}

TEST_F(UserSql, CannotEndTheBatchThatRuns)
{
    WriteBatch batch(connection);
    connection.Execute(u"delete from T"_s);
    EXPECT_THROW(connection.Execute(u"COMMIT"_s, Trust::User), Error);
    EXPECT_FALSE(connection.batchBroken());
}

const QString endless = u"with recursive c(i) as (select 1 union all select i+1 from c) "_s;

TEST_F(UserSql, AStatementThatRunsTooLongIsStopped)
{
    connection.setUserLimits({.milliseconds = 20, .cells = 1'000'000'000});
    const QString stopped = u"语句运行时间太长，已经停止。"_s;
    EXPECT_EQ(refused(endless + u"select count(*) from c"_s).description(), stopped);
    EXPECT_EQ(refused(endless + u"select i from c"_s).description(), stopped) << "row by row";
    Recordset set;
    set.Open(u"select * from T where n in (%1 select i from c where i<0)"_s.arg(endless),
             connection, Trust::User);
    EXPECT_EQ(errorOf([&] { set.RecordCount(); }).description(), stopped);
    connection.Open(file.path());
    EXPECT_EQ(refused(endless + u"select count(*) from c"_s).description(), stopped)
        << "the limits stay";
}

TEST_F(UserSql, IsStoppedByTheUserBetweenRowsAndWithinOne)
{
    int asked = 0;
    connection.setUserLimits({.isStopped = [&asked] { return ++asked > 2; }});
    const QString stopped = u"语句已经按要求停止。"_s;
    EXPECT_EQ(refused(u"select a.n from T a, T b, T c"_s).description(), stopped);
    EXPECT_EQ(asked, 3) << "once a row";
    asked = 0;
    EXPECT_EQ(refused(endless + u"select count(*) from c"_s).description(), stopped);
    asked = -1000;
    EXPECT_EQ(rowsOf(connection, u"select n from T"_s, Trust::User), u"1 / 2"_s);
}

TEST_F(UserSql, AResultOfTooManyBytesIsRefused)
{
    connection.setUserLimits({.bytes = 25});
    EXPECT_EQ(rowsOf(connection, u"select '12345678' || n as a from T"_s, Trust::User),
              u"123456781 / 123456782"_s);
    const QString tooMuch = u"查询结果太多，已经停止。"_s;
    EXPECT_EQ(refused(u"select '1234567890123' || n as a from T"_s).description(), tooMuch);
    EXPECT_EQ(refused(u"select zeroblob(20), zeroblob(20) from T"_s).description(), tooMuch);
    EXPECT_EQ(rowsOf(connection, u"select '1234567890123' || n as a from T"_s),
              u"12345678901231 / 12345678901232"_s)
        << "the program's own statements know no such limit";
}

TEST_F(UserSql, AChangeWhoseRowsAreTooManyIsTakenBack)
{
    connection.setUserLimits({.rows = 1});
    EXPECT_EQ(refused(u"update T set n=n+5 returning n"_s).description(),
              u"查询结果太多，已经停止。"_s);
    EXPECT_EQ(rowsOf(connection, u"select n from T"_s), u"1 / 2"_s);
    connection.setUserLimits({});
    EXPECT_EQ(rowsOf(connection, u"update T set n=n+5 returning n"_s, Trust::User), u"6 / 7"_s);
    connection.Close();
    connection.Open(file.path());
    EXPECT_EQ(rowsOf(connection, u"select n from T"_s), u"6 / 7"_s);
}

TEST_F(UserSql, RowsOfATableAreLimitedToo)
{
    connection.setUserLimits({.cells = 1});
    Recordset set;
    set.Open(u"select * from T"_s, connection, Trust::User);
    EXPECT_EQ(errorOf([&] { set.RecordCount(); }).description(), u"查询结果太多，已经停止。"_s);
}

TEST_F(UserSql, AWritingStatementThatRunsTooLongLeavesNoTrace)
{
    connection.setUserLimits({.milliseconds = 20});
    const QString sql = u"insert into T "_s + endless + u"select i from c"_s;
    EXPECT_EQ(refused(sql).failure(), Failure::Refused);
    EXPECT_EQ(rowsOf(connection, u"select n from T"_s), u"1 / 2"_s);
    {
        WriteBatch batch(connection);
        connection.Execute(u"delete from T"_s);
        EXPECT_EQ(refused(sql).failure(), Failure::Refused);
        EXPECT_TRUE(connection.batchBroken());
        EXPECT_THROW(batch.commit(), Error);
    }
    EXPECT_EQ(rowsOf(connection, u"select n from T"_s), u"1 / 2"_s);
}

TEST_F(UserSql, AResultThatIsTooLargeIsStopped)
{
    connection.setUserLimits({.cells = 100});
    EXPECT_EQ(refused(endless + u"select i,i from c"_s).description(),
              u"查询结果太多，已经停止。"_s);
    EXPECT_EQ(rowsOf(connection, u"select n from T"_s, Trust::User), u"1 / 2"_s);
    EXPECT_EQ(refused(u"select zeroblob(900000000)"_s).description(),
              u"内容太长，无法保存。（string or blob too big）"_s);
}

TEST_F(UserSql, TheLimitHoldsForTypedStatementsAlone)
{
    connection.setUserLimits({.milliseconds = -1, .cells = 0});
    EXPECT_EQ(rowsOf(connection, endless + u"select i from c limit 50000"_s).size() > 50000, true);
}

TEST_F(UserSql, TheLimitsHoldForTheNextLibraryToo)
{
    connection.setUserLimits({.cells = 3});
    connection.Close();
    connection.Open(file.path());
    EXPECT_EQ(refused(u"select n from T union all select n from T"_s).failure(), Failure::Refused);
}

} // namespace
} // namespace database
