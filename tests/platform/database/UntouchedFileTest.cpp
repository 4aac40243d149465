#include "platform/database/UntouchedFile.h"

#include "DatabaseFile.h"
#include "support/FileBytes.h"
#include "support/FullDisk.h"

namespace database {
namespace {

using namespace Qt::StringLiterals;

class FileLookedAt : public testing::Test
{
protected:
    /// A copy of the file as it stands, with what stands beside it.
    QString copyWith(const QString& ending)
    {
        const QString copy = file.folder.filePath(u"副本.CJK"_s);
        EXPECT_TRUE(QFile::copy(path, copy));
        EXPECT_TRUE(QFile::copy(path + ending, copy + ending));
        return copy;
    }

    /// The rows that are read, while nothing of these changes.
    QString rowsWithoutChanging(const QString& looked, const QString& ending)
    {
        const QStringList files = file.files();
        const QByteArray bytes = support::read(looked);
        const QByteArray log = support::read(looked + ending);
        QString rows;
        {
            const UntouchedFile untouched(looked);
            EXPECT_NE(untouched.path(), looked);
            Connection connection;
            untouched.open(connection, {{u"T"_s}, {}});
            rows = rowsOf(connection, u"select count(*) from T where m='y'"_s);
        }
        EXPECT_EQ(support::read(looked), bytes);
        EXPECT_EQ(support::read(looked + ending), log);
        EXPECT_EQ(file.files(), files);
        return rows;
    }

    Error refused(const QString& looked)
    {
        return errorOf([&] {
            Connection connection;
            UntouchedFile(looked).open(connection, {{u"T"_s}, {}});
        });
    }

    DatabaseFile file{"create table T(n Long INTEGER, m text(200));"
                      "with recursive c(i) as (select 1 union all select i+1 from c where i<3000)"
                      "  insert into T select i, hex(zeroblob(40)) from c;"};
    const QString path = file.path();
};

TEST_F(FileLookedAt, IsReadWhereItStands)
{
    const UntouchedFile untouched(path);
    EXPECT_EQ(untouched.path(), path);
    Connection connection;
    untouched.open(connection, {{u"T"_s}, {}});
    EXPECT_EQ(rowsOf(connection, u"select count(*) from T"_s), u"3000"_s);
}

TEST_F(FileLookedAt, KeepsAWriteThatWasBrokenOffAndItsJournal)
{
    QString broken;
    {
        OtherProgram other(path);
        other.run("pragma cache_size=5; begin; update T set m='y'");
        broken = copyWith(u"-journal"_s);
        other.run("rollback");
    }
    EXPECT_EQ(rowsWithoutChanging(broken, u"-journal"_s), u"0"_s);
}

TEST_F(FileLookedAt, KeepsTheLogThatAnotherProgramLeftBesideIt)
{
    QString logged;
    {
        OtherProgram other(path);
        other.run("pragma journal_mode=wal; update T set m='y' where n<=7");
        logged = copyWith(u"-wal"_s);
    }
    EXPECT_EQ(rowsWithoutChanging(logged, u"-wal"_s), u"7"_s);
    ASSERT_TRUE(QFile::remove(logged + u"-wal"_s));
    EXPECT_EQ(rowsWithoutChanging(logged, u"-wal"_s), u"0"_s) << "its header alone tells of logs";
}

TEST_F(FileLookedAt, IsRefusedWhileAnotherProgramWritesIt)
{
    OtherProgram other(path);
    other.run("begin; update T set m='y'");
    ASSERT_TRUE(QFile::exists(path + u"-journal"_s));
    EXPECT_EQ(refused(path).description(),
              u"文件 %1 正被别的程序使用，请关闭那个程序后再试。"_s.arg(path));
    other.run("rollback");
    EXPECT_EQ(refused(file.folder.filePath(u"没有.CJK"_s)).failure(), Failure::Missing);
}

TEST_F(FileLookedAt, IsCalledByItsOwnNameWhereItIsNoLibrary)
{
    const QString foreign = file.folder.filePath(u"别的.CJK"_s);
    OtherProgram(foreign).run("pragma journal_mode=wal; create table U(a)");
    EXPECT_EQ(refused(foreign).description(), u"%1 不是成绩库：没有“T”。"_s.arg(foreign));
    EXPECT_EQ(refused(foreign).failure(), Failure::NoLibrary);
}

TEST_F(FileLookedAt, WithoutRoomForItsCopyIsRefusedByItsOwnName)
{
    OtherProgram(path).run("pragma journal_mode=wal");
    const support::FullDisk disk(50'000);
    EXPECT_EQ(errorOf([&] { const UntouchedFile untouched(path); }).description(),
              u"读 %1 要先在临时文件夹里复制一份，没有成功：无法写入文件 这份副本"
              "（磁盘已满，或文件的大小受到限制）。"_s.arg(path));
}

TEST_F(FileLookedAt, WithoutAFolderForItsCopyIsRefused)
{
    OtherProgram(path).run("pragma journal_mode=wal");
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", path.toUtf8());
    const Error error = errorOf([&] { const UntouchedFile untouched(path); });
    qputenv("TMPDIR", before);
    EXPECT_TRUE(error.description().startsWith(u"无法建立临时文件夹（"_s));
}

} // namespace
} // namespace database
