#include "platform/database/LockedBytes.h"

#include "DatabaseFile.h"
#include "platform/database/WriteBatch.h"
#include "support/FreeFile.h"

namespace database {
namespace {

using namespace Qt::StringLiterals;

class BytesUnderALock : public testing::Test
{
protected:
    static bool always(qint64) { return true; }

    QByteArray copied()
    {
        runtime::UnfinishedFile copy(file.path());
        EXPECT_TRUE(LockedBytes(file.path()).copyTo(copy, always));
        QFile written(copy.path());
        return written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray();
    }

    DatabaseFile file{"create table T(n Long INTEGER, m text(200));"
                      "with recursive c(i) as (select 1 union all select i+1 from c where i<40000)"
                      "  insert into T select i, hex(zeroblob(40)) from c;"};
};

TEST_F(BytesUnderALock, AreThoseOfTheFile)
{
    ASSERT_GT(file.bytes().size(), 3 << 20);
    EXPECT_EQ(copied(), file.bytes());
}

TEST_F(BytesUnderALock, KeepWritersAway)
{
    EXPECT_TRUE(support::isFree(file.path()));
    const LockedBytes bytes(file.path());
    EXPECT_FALSE(support::isFree(file.path()));
}

TEST_F(BytesUnderALock, AreReadWithinABatchThatHasWrittenNothingAndTheBatchKeepsItsLock)
{
    Connection connection;
    connection.Open(file.path());
    WriteBatch batch(connection);
    EXPECT_EQ(copied(), file.bytes());
    EXPECT_FALSE(support::isFree(file.path()));
    connection.Execute(u"delete from T"_s);
    batch.commit();
    EXPECT_EQ(rowsOf(connection, u"select count(*) from T"_s), u"0"_s);
}

TEST_F(BytesUnderALock, CopyingTellsHowFarItIsAndCanBeEnded)
{
    const LockedBytes bytes(file.path());
    runtime::UnfinishedFile copy(file.path());
    QList<qint64> told;
    EXPECT_FALSE(bytes.copyTo(copy, [&](qint64 done) {
        told.append(done);
        return done < 2 << 20;
    }));
    EXPECT_EQ(told, (QList<qint64>{0, 1 << 20, 2 << 20}));
}

TEST_F(BytesUnderALock, AreComparedWithThoseOfAnotherFile)
{
    const QString other = file.folder.filePath(u"副本"_s);
    ASSERT_TRUE(QFile::copy(file.path(), other));
    EXPECT_TRUE(LockedBytes(file.path()).isSameAs(other));
    OtherProgram(file.path()).run("update T set m='x' where n=40000");
    EXPECT_FALSE(LockedBytes(file.path()).isSameAs(other));
    EXPECT_FALSE(LockedBytes(file.path()).isSameAs(file.folder.filePath(u"没有"_s)));
}

TEST_F(BytesUnderALock, ThatAnotherProgramKeepsInALogAreNotTaken)
{
    OtherProgram other(file.path());
    other.run("pragma journal_mode=wal; delete from T");
    EXPECT_EQ(errorOf([&] { LockedBytes bytes(file.path()); }).failure(), Failure::Locked);
}

} // namespace
} // namespace database
