#include "DatabaseFile.h"

#include "platform/database/WriteBatch.h"

namespace database {
namespace {

using namespace Qt::StringLiterals;
using runtime::Value;

class PictureChunks : public testing::Test
{
protected:
    PictureChunks() { open(1); }

    void open(int id)
    {
        if (!connection.isOpen())
            connection.Open(file.path());
        set.Open(u"select * from 信息表 where ID=?"_s, {id}, connection);
    }

    Field picture() { return set.Fields(u"照片"_s); }

    /// Pages that the engine had to fetch since it was last asked.
    int pagesRead()
    {
        int now = 0;
        int highest = 0;
        sqlite3_db_status(connection.handle(), SQLITE_DBSTATUS_CACHE_MISS, &now, &highest, 1);
        return now;
    }

    DatabaseFile file{
        "create table 信息表(ID INTEGER PRIMARY KEY AUTOINCREMENT, 姓名 text(4), 照片 LongBinary "
        "BLOB);"
        "insert into 信息表 values(1, '甲', NULL),(2, '乙', x'0102030405'),(3, '丙', '字'),"
        "  (4, '丁', 12),(5, '戊', zeroblob(1000000));"};
    Connection connection;
    Recordset set;
};

TEST_F(PictureChunks, AreWrittenOneAfterTheOther)
{
    EXPECT_EQ(picture().ActualSize(), 0);
    picture().AppendChunk(QByteArray("GIF", 3));
    picture().AppendChunk(QByteArray("\0\x01", 2));
    set.Update();
    EXPECT_EQ(picture().ActualSize(), 5);
    EXPECT_EQ(picture().GetChunk(4), QByteArray("GIF\0", 4));
    EXPECT_EQ(picture().GetChunk(picture().ActualSize()), QByteArray("GIF\0\x01", 5));
    picture().AppendChunk(QByteArray("neu"));
    set.Update();
    EXPECT_EQ(picture().GetChunk(99), QByteArray("neu"));
}

TEST_F(PictureChunks, AreReadFromAnyPlaceOn)
{
    open(2);
    struct Case
    {
        qint64 length;
        qint64 from;
        const char* hex;
    };
    for (const Case& c :
         {Case{2, 0, "0102"}, {2, 3, "0405"}, {9, 4, "05"}, {9, 5, ""}, {1, 9, ""}, {0, 2, ""}})
        EXPECT_EQ(picture().GetChunk(c.length, c.from).toHex(), c.hex) << c.length << ' ' << c.from;
}

TEST_F(PictureChunks, AreReadOfARowThatIsNotWrittenYet)
{
    open(2);
    picture().AppendChunk("abc");
    picture().AppendChunk("def");
    EXPECT_EQ(picture().ActualSize(), 6);
    EXPECT_EQ(picture().GetChunk(3, 2), QByteArray("cde"));
    set.AddNew();
    EXPECT_EQ(picture().ActualSize(), 0);
    EXPECT_EQ(picture().GetChunk(3), QByteArray());
}

TEST_F(PictureChunks, AreReadInsideABatchAsItWroteThem)
{
    WriteBatch batch(connection);
    picture().AppendChunk("abc");
    set.Update();
    EXPECT_EQ(picture().GetChunk(2, 1), QByteArray("bc"));
    set.AddNew();
    picture().AppendChunk("new");
    set.Update();
    EXPECT_EQ(picture().GetChunk(3), QByteArray("new"));
}

TEST_F(PictureChunks, WhatIsTakenBackIsNotWrittenAndTheOthersAre)
{
    open(2);
    set.Fields(u"姓名"_s).setValue(u"新"_s);
    picture().AppendChunk("part");
    set.Fields(u"ID"_s).setValue(7);
    picture().takeBack();
    picture().takeBack();
    EXPECT_EQ(picture().ActualSize(), 5);
    set.Update();
    EXPECT_EQ(rowsOf(connection, u"select ID,姓名,hex(照片) from 信息表 where ID=7"_s),
              u"7|新|0102030405"_s);
}

TEST_F(PictureChunks, AFieldThatWasTakenBackCanBeAssignedAgain)
{
    picture().AppendChunk("part");
    set.Fields(u"姓名"_s).setValue(u"新"_s);
    picture().takeBack();
    picture().AppendChunk("whole");
    set.Update();
    EXPECT_EQ(rowsOf(connection, u"select 姓名,cast(照片 as text) from 信息表 where ID=1"_s),
              u"新|whole"_s);
}

TEST_F(PictureChunks, OfATextOrANumberHaveItsSizeAndNoBytes)
{
    open(3);
    EXPECT_EQ(picture().ActualSize(), 3);
    EXPECT_EQ(picture().GetChunk(9), QByteArray());
    open(4);
    EXPECT_EQ(picture().ActualSize(), 2);
}

TEST_F(PictureChunks, OnlyThePagesOfAChunkAreRead)
{
    open(5);
    set.RecordCount();
    pagesRead();
    EXPECT_EQ(picture().ActualSize(), 1'000'000);
    EXPECT_LT(pagesRead(), 10);
    EXPECT_EQ(picture().GetChunk(4096), QByteArray(4096, '\0'));
    EXPECT_LT(pagesRead(), 10);
    EXPECT_EQ(picture().GetChunk(2'000'000).size(), 1'000'000);
    EXPECT_GT(pagesRead(), 200);
}

TEST_F(PictureChunks, OfARowThatIsGoneAreEmpty)
{
    open(2);
    set.RecordCount();
    connection.Execute(u"delete from 信息表 where ID=2"_s);
    EXPECT_EQ(picture().ActualSize(), 0);
    EXPECT_EQ(picture().GetChunk(9), QByteArray());
}

TEST_F(PictureChunks, ReadingThemKeepsNoLock)
{
    open(2);
    picture().GetChunk(2);
    OtherProgram(file.path()).run("update 信息表 set 姓名='庚'");
    EXPECT_EQ(picture().GetChunk(1), QByteArray("\1"));
}

} // namespace
} // namespace database
