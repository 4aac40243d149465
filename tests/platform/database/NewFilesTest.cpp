#include <unistd.h>

#include "DatabaseFile.h"
#include "platform/database/EmptyLibrary.h"
#include "platform/database/FileIdentity.h"
#include "platform/database/OpenFile.h"
#include "platform/database/WriteBatch.h"

namespace database {
namespace {

/// What the user would read about the refusal.
template <class Call> QString refusal(const Call& call)
{
    try {
        call();
    } catch (const runtime::Error& error) {
        return error.description();
    }
    ADD_FAILURE() << "no error";
    return {};
}

} // namespace

TEST(Unfinished, AFileIsFilledWithoutAJournalBesideIt)
{
    const DatabaseFile file("create table 表 (甲); insert into 表 values (1)");
    Connection connection;
    connection.OpenUnfinished(file.path());
    WriteBatch batch(connection);
    connection.Execute(u"update 表 set 甲=2"_s);
    EXPECT_EQ(file.files(), QStringList{u"库.CJK"_s});
    batch.commit();
    EXPECT_EQ(rowsOf(connection, u"select * from 表"_s), u"2"_s);
}

TEST(Unfinished, WhatIsGivenUpInAFileIsTakenBack)
{
    const DatabaseFile file("create table 表 (甲); insert into 表 values (1)");
    Connection connection;
    connection.OpenUnfinished(file.path());
    {
        const WriteBatch batch(connection);
        connection.Execute(u"update 表 set 甲=2"_s);
    }
    EXPECT_EQ(rowsOf(connection, u"select * from 表"_s), u"1"_s);
}

TEST(ReplacedFile, IsHeldAgainstOthersUnlessItIsInUse)
{
    const DatabaseFile file("create table 表 (甲)");
    Connection user;
    user.Open(file.path());
    {
        const auto held = heldForReplacing(file.path());
        EXPECT_TRUE(held);
        EXPECT_TRUE(isInUse(file.path()));
    }
    const WriteBatch batch(user);
    const QString inUse = u"文件 %1 正在使用，不能覆盖。"_s.arg(file.path());
    EXPECT_EQ(refusal([&] { heldForReplacing(file.path()); }), inUse);
    EXPECT_EQ(inUseError(file.path()).description(), inUse);
}

TEST(ReplacedFile, MayBeMissingOrNoLibraryAndThenHasNothingToHold)
{
    const DatabaseFile file("create table 表 (甲)");
    EXPECT_FALSE(heldForReplacing(file.folder.filePath(u"没有.CJK"_s)));
    file.replaceBytes("something else");
    EXPECT_FALSE(heldForReplacing(file.path()));
}

TEST(ReplacedFile, IsNoFolder)
{
    const DatabaseFile file("create table 表 (甲)");
    EXPECT_EQ(refusal([&] { heldForReplacing(file.folder.path()); }),
              u"无法写入文件 %1（它是文件夹）。"_s.arg(file.folder.path()));
}

TEST(SameFile, IsFoundBehindLinksAndNowhereElse)
{
    const DatabaseFile file("create table 表 (甲)");
    const auto in = [&](const QString& name) { return file.folder.filePath(name); };
    ASSERT_TRUE(QFile::link(file.path(), in(u"链接.CJK"_s)));
    ASSERT_EQ(link(QFile::encodeName(file.path()).constData(),
                   QFile::encodeName(in(u"同一个.CJK"_s)).constData()),
              0);
    ASSERT_TRUE(QFile::copy(file.path(), in(u"副本.CJK"_s)));
    for (const QString& name : {u"./库.CJK"_s, u"链接.CJK"_s, u"同一个.CJK"_s})
        EXPECT_TRUE(isSameFile(in(name), file.path())) << name.toStdString();
    EXPECT_FALSE(isSameFile(in(u"副本.CJK"_s), file.path()));
    EXPECT_FALSE(isSameFile(in(u"没有.CJK"_s), in(u"没有.CJK"_s)));
    EXPECT_FALSE(isSameFile({}, {}));
}

TEST(EmptyLibrary, IsReadWholeOrMissed)
{
    const DatabaseFile file("create table 表 (甲)");
    EXPECT_EQ(emptyLibraryBytes(file.path()), file.bytes());
    const QString missing = file.folder.filePath(u"没有.dll"_s);
    EXPECT_EQ(refusal([&] { emptyLibraryBytes(missing); }),
              u"找不到空白成绩库 %1（不能打开：没有权限，或文件、文件夹不存在）。"_s.arg(missing));
}

} // namespace database
