#include "DatabaseFile.h"

#include "platform/database/WriteBatch.h"
#include "support/ErrorOf.h"

namespace database {
namespace {

using namespace Qt::StringLiterals;

class Batches : public testing::Test
{
protected:
    Batches() { connection.Open(file.path(), {{u"T"_s}, {index}}); }

    void add(int number) { connection.Execute(u"insert into T(n) values(%1)"_s.arg(number)); }
    QString rows() { return rowsOf(connection, u"select n from T"_s); }
    /// What another program finds in the file.
    QString onDisk()
    {
        Connection other;
        other.Open(file.path());
        return rowsOf(other, u"select n from T"_s);
    }
    QString indexes()
    {
        return rowsOf(connection, u"select name from sqlite_master where type='index'"_s);
    }
    /// Lets the file grow by no more than `pages`.
    void limitGrowth(int pages)
    {
        const QString limit = u"PRAGMA max_page_count=%1"_s.arg(file.bytes().size() / 4096 + pages);
        sqlite3_exec(connection.handle(), limit.toUtf8().constData(), nullptr, nullptr, nullptr);
    }

    const QString index = u"create index if not exists Tn on T(n)"_s;
    DatabaseFile file{"create table T(n Long INTEGER, m Memo TEXT);"};
    Connection connection;
};

TEST_F(Batches, ReachTheDiskAtCommit)
{
    WriteBatch batch(connection);
    add(1);
    add(2);
    EXPECT_EQ(onDisk(), QString());
    batch.commit();
    EXPECT_EQ(onDisk(), u"1 / 2"_s);
}

TEST_F(Batches, LeaveTheFileAsItWasWithoutCommit)
{
    const QByteArray before = file.bytes();
    {
        WriteBatch batch(connection);
        add(1);
        connection.Execute(u"ALTER TABLE T add COLUMN 语文 Single"_s);
        EXPECT_EQ(connection.columns(u"T"_s).count(), 3);
    }
    EXPECT_EQ(connection.columns(u"T"_s).count(), 2);
    EXPECT_EQ(rows(), QString());
    EXPECT_EQ(file.bytes(), before);
    add(3);
    EXPECT_EQ(onDisk(), u"3"_s);
}

TEST_F(Batches, AnInnerOneReachesTheDiskWithTheOuter)
{
    WriteBatch outer(connection);
    add(1);
    {
        WriteBatch inner(connection);
        add(2);
        inner.commit();
    }
    EXPECT_EQ(onDisk(), QString());
    outer.commit();
    EXPECT_EQ(onDisk(), u"1 / 2"_s);
}

TEST_F(Batches, AnInnerOneGoesWithTheOuter)
{
    {
        WriteBatch outer(connection);
        WriteBatch inner(connection);
        add(2);
        inner.commit();
    }
    EXPECT_EQ(rows(), QString());
}

TEST_F(Batches, AnInnerOneWithoutCommitTakesBackItsOwnPart)
{
    WriteBatch outer(connection);
    add(1);
    {
        WriteBatch inner(connection);
        add(2);
    }
    add(3);
    outer.commit();
    EXPECT_EQ(onDisk(), u"1 / 3"_s);
}

TEST_F(Batches, AnErrorOnTheWayDoesNotCostTheRest)
{
    WriteBatch batch(connection);
    add(1);
    EXPECT_THROW(connection.Execute(u"insert into 无 values(1)"_s), Error);
    EXPECT_THROW(connection.Execute(u"insert into T(rowid) values(1)"_s), Error);
    EXPECT_FALSE(connection.batchBroken());
    add(2);
    batch.commit();
    EXPECT_EQ(onDisk(), u"1 / 2"_s);
}

TEST_F(Batches, AFullDiskTakesBackAllOfItAndNothingSneaksInBehind)
{
    add(1);
    {
        WriteBatch batch(connection);
        add(2);
        limitGrowth(3);
        EXPECT_FALSE(connection.batchBroken());
        EXPECT_EQ(support::errorOf([&] {
                      connection.Execute(u"insert into T(m) values(hex(zeroblob(50000)))"_s);
                  }),
                  u"磁盘已满，没有写入。（database or disk is full）"
                  "这一步已经停止，什么也没有写入。"_s);
        EXPECT_TRUE(connection.batchBroken());
        EXPECT_EQ(errorOf([&] { add(3); }).description(),
                  u"前面的写入已经失败，这一步没有写入。"_s);
        Recordset set;
        set.Open(u"select * from T"_s, connection);
        set.AddNew();
        EXPECT_THROW(set.Update(), Error);
        EXPECT_THROW(WriteBatch{connection}, Error);
        EXPECT_EQ(errorOf([&] { batch.commit(); }).description(),
                  u"写入没有完成，成绩库保持原样。"_s);
        EXPECT_EQ(onDisk(), u"1"_s);
    }
    EXPECT_FALSE(connection.batchBroken());
    EXPECT_EQ(onDisk(), u"1"_s);
    add(4);
    EXPECT_EQ(onDisk(), u"1 / 4"_s);
}

TEST_F(Batches, AFullDiskInAStatementOfManyRowsBreaksItToo)
{
    for (int i = 0; i < 20; ++i)
        add(i);
    const QString before = rows();
    {
        WriteBatch batch(connection);
        add(99);
        limitGrowth(3);
        EXPECT_THROW(connection.Execute(u"update T set m=hex(zeroblob(3000))"_s),
                     runtime::PhaseError);
        EXPECT_TRUE(connection.batchBroken());
        EXPECT_THROW(add(100), Error);
        EXPECT_THROW(batch.commit(), Error);
    }
    EXPECT_EQ(onDisk(), before);
}

TEST_F(Batches, AddTheMissingIndexesAtTheFirstWrite)
{
    EXPECT_EQ(indexes(), QString());
    {
        WriteBatch cancelled(connection);
        EXPECT_EQ(indexes(), u"Tn"_s);
    }
    EXPECT_EQ(indexes(), QString());
    WriteBatch batch(connection);
    batch.commit();
    EXPECT_EQ(indexes(), u"Tn"_s);
}

TEST_F(Batches, AreNotNeededForTheIndexes)
{
    Recordset rows;
    rows.Open(u"select * from T"_s, connection);
    rows.AddNew();
    rows.Fields(u"n"_s).setValue(1);
    EXPECT_EQ(indexes(), QString()) << "reading adds none";
    rows.Update();
    EXPECT_EQ(indexes(), u"Tn"_s);
    EXPECT_EQ(rowsOf(connection, u"select n from T"_s), u"1"_s);
    EXPECT_EQ(file.files(), QStringList{u"库.CJK"_s});
}

TEST_F(Batches, AStatementTypedByTheUserAddsThemToo)
{
    connection.Execute(u"insert into T(n) values(1)"_s, Trust::User);
    EXPECT_EQ(indexes(), u"Tn"_s);
    EXPECT_EQ(onDisk(), u"1"_s);
}

TEST_F(Batches, IndexesThatStandCostLaterWritesNothing)
{
    add(1);
    const Traced traced(connection);
    add(2);
    EXPECT_EQ(traced.statements, QStringList{u"insert into T(n) values(2)"_s});
}

TEST_F(Batches, AnotherProgramsLockKeepsTheIndexesForTheNextWrite)
{
    sqlite3_busy_timeout(connection.handle(), 0);
    OtherProgram other(file.path());
    for (const char* lock : {"begin immediate", "begin; select * from T"}) {
        other.run(lock);
        EXPECT_EQ(errorOf([&] { add(1); }).failure(), Failure::Locked);
        other.run("commit");
        EXPECT_EQ(indexes(), QString());
    }
    add(2);
    EXPECT_EQ(indexes(), u"Tn"_s);
    EXPECT_EQ(onDisk(), u"2"_s);
}

TEST_F(Batches, AnIndexThatCannotBeMadeCostsASingleWriteNothing)
{
    limitGrowth(0);
    add(1);
    EXPECT_EQ(indexes(), QString());
    EXPECT_EQ(onDisk(), u"1"_s);
}

TEST_F(Batches, AnIndexForWhichThereIsNoRoomCostsOnlyItself)
{
    limitGrowth(0);
    WriteBatch batch(connection);
    add(1);
    batch.commit();
    EXPECT_EQ(indexes(), QString());
    EXPECT_EQ(onDisk(), u"1"_s);
}

TEST_F(Batches, AnotherProgramThatWritesIsOneClearMessage)
{
    sqlite3_busy_timeout(connection.handle(), 0);
    OtherProgram other(file.path());
    other.run("begin immediate");
    const Error locked = errorOf([&] { WriteBatch batch(connection); });
    EXPECT_EQ(locked.failure(), Failure::Locked);
    EXPECT_EQ(locked.description(),
              u"成绩库正被别的程序使用，请关闭那个程序后再试。（database is locked）"_s);
    other.run("commit");
    add(1);
    EXPECT_EQ(onDisk(), u"1"_s);
}

TEST_F(Batches, AnotherProgramThatReadsKeepsACommitFromTheFile)
{
    sqlite3_busy_timeout(connection.handle(), 0);
    add(1);
    OtherProgram other(file.path());
    other.run("begin; select * from T");
    {
        WriteBatch batch(connection);
        add(2);
        EXPECT_EQ(errorOf([&] { batch.commit(); }).failure(), Failure::Locked);
    }
    other.run("commit");
    EXPECT_EQ(onDisk(), u"1"_s);
}

TEST_F(Batches, ClosingTheConnectionTakesAnOpenOneBack)
{
    Recordset set;
    set.Open(u"select * from T"_s, connection);
    {
        WriteBatch batch(connection);
        add(1);
        connection.Close();
        EXPECT_THROW(batch.commit(), Error);
    }
    EXPECT_EQ(onDisk(), QString());
    connection.Open(file.path());
    WriteBatch next(connection);
    add(2);
    next.commit();
    EXPECT_EQ(onDisk(), u"2"_s);
}

TEST_F(Batches, WhatComesBeforeTheFirstWriteRunsOnceOnTheFileAsItWas)
{
    const QByteArray before = file.bytes();
    int calls = 0;
    connection.setBeforeFirstWrite([&] {
        ++calls;
        EXPECT_EQ(file.bytes(), before);
        EXPECT_EQ(indexes(), QString()) << "a missing one waits, too";
    });
    WriteBatch batch(connection);
    rows();
    EXPECT_EQ(calls, 0) << "reading is no write";
    add(1);
    add(2);
    batch.commit();
    add(3);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(onDisk(), u"1 / 2 / 3"_s);
    EXPECT_EQ(indexes(), u"Tn"_s);
}

TEST_F(Batches, NothingIsWrittenWhereWhatComesBeforeFails)
{
    connection.setBeforeFirstWrite([] { throw runtime::PhaseError(u"no copy"_s); });
    {
        WriteBatch batch(connection);
        EXPECT_THROW(add(1), runtime::PhaseError);
        EXPECT_TRUE(connection.batchBroken());
        EXPECT_THROW(batch.commit(), Error);
    }
    EXPECT_THROW(add(2), runtime::PhaseError) << "it is tried again";
    EXPECT_EQ(onDisk(), QString());
    connection.setBeforeFirstWrite({});
    add(3);
    EXPECT_EQ(onDisk(), u"3"_s);
}

TEST_F(Batches, NoJournalStaysBesideTheFile)
{
    {
        WriteBatch batch(connection);
        add(1);
        batch.commit();
    }
    EXPECT_EQ(file.files(), QStringList({u"库.CJK"_s}));
}

} // namespace
} // namespace database
