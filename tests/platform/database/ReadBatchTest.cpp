#include "DatabaseFile.h"

#include "platform/database/ReadBatch.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Dialogs.h"
#include "support/FreeFile.h"
#include "support/ScriptedDialogs.h"

namespace database {
namespace {

using namespace Qt::StringLiterals;

class ReadBatches : public testing::Test
{
protected:
    ReadBatches() { connection.Open(file.path()); }

    void add(int number) { connection.Execute(u"insert into T(n) values(%1)"_s.arg(number)); }
    QString rows() { return rowsOf(connection, u"select * from T"_s); }
    /// Another program can write the file at this moment.
    bool isFree() const { return support::isFree(file.path()); }

    DatabaseFile file{"create table T(n Long INTEGER); insert into T values(1)"};
    Connection connection;
};

TEST_F(ReadBatches, KeepOneStateOfTheFileFromTheFirstRowOn)
{
    {
        const ReadBatch reading(connection);
        EXPECT_TRUE(isFree());
        EXPECT_EQ(rows(), u"1"_s);
        EXPECT_FALSE(isFree());
        EXPECT_EQ(rows(), u"1"_s);
    }
    EXPECT_TRUE(isFree());
}

TEST_F(ReadBatches, DoNotKeepAWriteFromTheFile)
{
    const ReadBatch reading(connection);
    EXPECT_EQ(rows(), u"1"_s);
    add(2);
    EXPECT_TRUE(isFree());
    Connection other;
    other.Open(file.path());
    EXPECT_EQ(rowsOf(other, u"select * from T"_s), u"1 / 2"_s);
    EXPECT_EQ(rows(), u"1 / 2"_s);
}

TEST_F(ReadBatches, MakeWayForAWriteBatchWhichStandsOrFallsByItself)
{
    const ReadBatch reading(connection);
    rows();
    {
        WriteBatch batch(connection);
        add(2);
        batch.commit();
    }
    {
        const WriteBatch dropped(connection);
        add(3);
    }
    EXPECT_TRUE(isFree());
    EXPECT_EQ(rows(), u"1 / 2"_s);
}

TEST_F(ReadBatches, InsideAWriteBatchLeaveItAlone)
{
    {
        const WriteBatch dropped(connection);
        add(2);
        {
            const ReadBatch reading(connection);
            EXPECT_EQ(rows(), u"1 / 2"_s);
        }
        add(3);
    }
    EXPECT_EQ(rows(), u"1"_s);
}

TEST_F(ReadBatches, OneInsideAnotherEndsWithTheOuterOne)
{
    {
        const ReadBatch outer(connection);
        {
            const ReadBatch inner(connection);
            rows();
        }
        EXPECT_FALSE(isFree());
    }
    EXPECT_TRUE(isFree());
}

TEST_F(ReadBatches, LetGoOfTheFileBeforeABoxWaitsForTheUser)
{
    support::ScriptedDialogs dialogs;
    const ReadBatch reading(connection);
    rows();
    bool wasFree = false;
    const runtime::BeforeDialogs whileWaiting([&] { wasFree = isFree(); });
    runtime::MsgBox(u"完成"_s);
    EXPECT_TRUE(wasFree);
    EXPECT_EQ(rows(), u"1"_s);
    EXPECT_TRUE(isFree());
}

TEST_F(ReadBatches, ARecordsetThatIsReadWhileTheStateEndsReadsOn)
{
    add(2);
    const ReadBatch reading(connection);
    Recordset set;
    set.Open(u"select * from T"_s, connection);
    for (; !set.Eof(); set.MoveNext()) {
        set.Fields(0).setValue(set.Fields(0).Value().toDouble() + 10);
        set.Update();
    }
    EXPECT_EQ(rows(), u"11 / 12"_s);
    EXPECT_TRUE(isFree());
}

TEST_F(ReadBatches, WithoutAnOpenFileDoNothing)
{
    connection.Close();
    const ReadBatch reading(connection);
    connection.Open(file.path());
    EXPECT_EQ(rows(), u"1"_s);
    EXPECT_TRUE(isFree());
}

TEST_F(ReadBatches, EndWithTheFile)
{
    const ReadBatch reading(connection);
    rows();
    connection.Close();
    EXPECT_TRUE(isFree());
    connection.Open(file.path());
    WriteBatch batch(connection);
    add(2);
    batch.commit();
    EXPECT_EQ(rows(), u"1 / 2"_s);
}

} // namespace
} // namespace database
