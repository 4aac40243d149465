#include <sys/stat.h>

#include <random>

#include "DatabaseFile.h"
#include "platform/database/OpenFile.h"
#include "platform/database/Sql.h"
#include "platform/database/WriteBatch.h"
#include "support/FileBytes.h"
#include "support/OrdinaryUser.h"

namespace database {
namespace {

using namespace Qt::StringLiterals;
using support::OrdinaryUser;

class Files : public testing::Test
{
protected:
    Error refused(const FileShape& shape = {})
    {
        Connection connection;
        return errorOf([&] { connection.Open(file.path(), shape); });
    }
    Error refused(const QByteArray& bytes)
    {
        file.replaceBytes(bytes);
        const Error error = refused();
        EXPECT_EQ(file.bytes(), bytes) << "the file was touched";
        EXPECT_EQ(file.files(), QStringList({u"库.CJK"_s}));
        return error;
    }
    void setMode(mode_t folderMode, mode_t fileMode)
    {
        chmod(file.path().toUtf8().constData(), fileMode);
        chmod(file.folder.path().toUtf8().constData(), folderMode);
    }

    /// A copy of the file and of its journal, as a crash leaves them in the middle of a write.
    QString leaveBrokenOff()
    {
        QString copy = file.folder.filePath(u"copy.CJK"_s);
        OtherProgram other(path);
        // The first page changes too, so the journal has it.
        other.run("pragma cache_size=5; begin; pragma user_version=1; update T set m='y'");
        EXPECT_TRUE(QFile::copy(path, copy));
        EXPECT_TRUE(QFile::copy(path + u"-journal"_s, copy + u"-journal"_s));
        other.run("rollback");
        return copy;
    }

    DatabaseFile file{"create table T(n Long INTEGER, m text(200));"
                      "with recursive c(i) as (select 1 union all select i+1 from c where i<2000)"
                      "  insert into T select i, hex(zeroblob(40)) from c;"};
    const QString path = file.path();
};

TEST_F(Files, AMissingOneIsToldByItsName)
{
    QFile::remove(path);
    const Error error = refused();
    EXPECT_EQ(error.failure(), Failure::Missing);
    EXPECT_EQ(error.description(), u"找不到文件 %1。"_s.arg(path));
    EXPECT_EQ(file.files(), QStringList()) << "none is made";
}

TEST_F(Files, AFolderIsNone)
{
    Connection connection;
    const Error error = errorOf([&] { connection.Open(file.folder.path()); });
    EXPECT_EQ(error.failure(), Failure::NoLibrary);
    EXPECT_EQ(error.description(), u"%1 不是文件，不能作为成绩库打开。"_s.arg(file.folder.path()));
}

TEST_F(Files, OtherContentIsRefusedAndNotTouched)
{
    EXPECT_EQ(refused(QByteArray()).description(), u"%1 是空文件，不是成绩库。"_s.arg(path));
    EXPECT_EQ(refused("姓名,语文\n").description(), u"%1 不是成绩库。"_s.arg(path));
    std::mt19937 random(7);
    QByteArray noise(5000, Qt::Uninitialized);
    std::generate(noise.begin(), noise.end(), [&] { return char(random()); });
    EXPECT_EQ(refused(noise).failure(), Failure::NoLibrary);
    const QByteArray old =
        QByteArray("\x00\x01\x00\x00Standard Jet DB", 19) + QByteArray(4000, '\0');
    EXPECT_EQ(refused(old).description(), u"%1 是旧格式的成绩库，不能直接打开。"_s.arg(path));
    EXPECT_EQ(refused(QByteArray("SQLite format 3\0 and no more", 28)).failure(), Failure::Damaged);
    EXPECT_EQ(refused(QByteArray("SQLite format 3\0", 16) + QByteArray(5000, '\x55')).failure(),
              Failure::Damaged);
    EXPECT_EQ(refused(QByteArray("SQLite format 3\0", 16) + QByteArray(5000, '\0')).failure(),
              Failure::NoLibrary);
}

TEST_F(Files, ACutOffOneIsRefused)
{
    const QByteArray whole = file.bytes();
    for (const double part : {0.999, 0.5, 0.1}) {
        const Error error = refused(whole.left(qsizetype(double(whole.size()) * part)));
        EXPECT_EQ(error.failure(), Failure::Damaged);
        EXPECT_EQ(error.description(), u"%1 不完整（后面一部分丢失了），无法打开。"_s.arg(path));
    }
}

TEST_F(Files, DamagedPagesGiveAnErrorAndNoCrash)
{
    const QByteArray whole = file.bytes();
    std::mt19937 random(11);
    int failures = 0;
    for (int round = 0; round < 60; ++round) {
        QByteArray bytes = whole;
        for (int i = 0; i < 40; ++i)
            bytes[qsizetype(100 + random() % (unsigned(bytes.size()) - 100))] = char(random());
        file.replaceBytes(bytes);
        try {
            Connection connection;
            connection.Open(path);
            rowsOf(connection, u"select * from T"_s);
            rowsOf(connection, u"select distinct m from T order by m"_s);
            connection.Execute(u"update T set m='x' where n>1000"_s);
        } catch (const Error& error) {
            ++failures;
            EXPECT_FALSE(error.description().isEmpty());
        }
    }
    EXPECT_GT(failures, 10);
}

TEST_F(Files, APageOfZerosIsToldAsDamage)
{
    QByteArray bytes = file.bytes();
    bytes.replace(4096 * 5, 4096, QByteArray(4096, '\0'));
    file.replaceBytes(bytes);
    Connection connection;
    connection.Open(path);
    Recordset set;
    set.Open(u"select * from T"_s, connection);
    const Error error = errorOf([&] { set.RecordCount(); });
    EXPECT_EQ(error.failure(), Failure::Damaged);
    EXPECT_EQ(error.description(), u"成绩库文件已经损坏。（database disk image is malformed）"_s);
    EXPECT_TRUE(set.Eof()) << "told once";
}

TEST_F(Files, ALibraryIsKnownByItsTables)
{
    EXPECT_EQ(refused({{u"T"_s, u"成绩表"_s}, {}}).description(),
              u"%1 不是成绩库：没有“成绩表”。"_s.arg(path));
    Connection connection;
    connection.Open(path, {{u"T"_s}, {}});
    EXPECT_TRUE(connection.isOpen());
}

TEST_F(Files, WhatWasOpenStaysOpenWhenTheNextOneIsRefused)
{
    Connection connection;
    connection.Open(path);
    EXPECT_THROW(connection.Open(file.folder.filePath(u"无.CJK"_s)), Error);
    EXPECT_EQ(connection.path(), path);
    EXPECT_EQ(rowsOf(connection, u"select count(*) from T"_s), u"2000"_s);
}

TEST_F(Files, OneLockedByAnotherProgramIsOneClearMessage)
{
    OtherProgram other(path);
    other.run("begin exclusive");
    const Error error = refused({{u"T"_s}, {}});
    EXPECT_EQ(error.failure(), Failure::Locked);
    EXPECT_EQ(error.description(),
              u"成绩库正被别的程序使用，请关闭那个程序后再试。（database is locked）"_s);
}

TEST_F(Files, OneIsInUseWhileAnotherProgramReadsOrWritesIt)
{
    EXPECT_FALSE(isInUse(path)) << "nobody has it";
    OtherProgram other(path);
    EXPECT_FALSE(isInUse(path)) << "it is merely open";
    other.run("begin immediate");
    EXPECT_TRUE(isInUse(path));
    other.run("commit; begin; select * from sqlite_master");
    EXPECT_TRUE(isInUse(path));
    other.run("commit");
    EXPECT_FALSE(isInUse(path));
}

TEST_F(Files, WhatIsNoLibraryIsNotInUse)
{
    EXPECT_FALSE(isInUse(path + u".missing"_s));
    EXPECT_FALSE(isInUse(QFileInfo(path).path()));
}

TEST_F(Files, AReadOnlyOneIsReadAndNotWritten)
{
    setMode(0755, 0444);
    const OrdinaryUser user;
    Connection connection;
    connection.Open(path, {{u"T"_s}, {}});
    EXPECT_EQ(rowsOf(connection, u"select max(n) from T"_s), u"2000"_s);
    const Error error = errorOf([&] { connection.Execute(u"delete from T"_s); });
    EXPECT_EQ(error.failure(), Failure::ReadOnly);
    EXPECT_EQ(error.description(),
              u"成绩库是只读的，不能写入。（attempt to write a readonly database）"_s);
    EXPECT_EQ(errorOf([&] { WriteBatch batch(connection); }).description(),
              u"成绩库是只读的，不能写入。"_s);
}

TEST_F(Files, AFolderThatTakesNoJournalGivesOneClearMessage)
{
    setMode(0555, 0666);
    const OrdinaryUser user;
    Connection connection;
    connection.Open(path);
    const Error error = errorOf([&] { connection.Execute(u"delete from T"_s); });
    EXPECT_TRUE(
        error.description().startsWith(u"无法打开成绩库文件，或不能在它旁边建立临时文件。"_s)
        || error.failure() == Failure::ReadOnly)
        << error.what();
    EXPECT_EQ(rowsOf(connection, u"select count(*) from T"_s), u"2000"_s);
}

TEST_F(Files, OneThatMayNotBeReadIsRefused)
{
    setMode(0755, 0000);
    const OrdinaryUser user;
    EXPECT_TRUE(refused().description().startsWith(u"无法读取文件 %1。"_s.arg(path)));
}

TEST_F(Files, NothingIsWrittenToOneThatVanished)
{
    Connection connection;
    connection.Open(path);
    const QString moved = file.folder.filePath(u"别处.CJK"_s);
    ASSERT_TRUE(QFile::rename(path, moved));
    const Error error = errorOf([&] { connection.Execute(u"delete from T"_s); });
    EXPECT_EQ(error.failure(), Failure::Missing);
    EXPECT_EQ(error.description(), u"成绩库文件 %1 已被移走、删除或替换，没有写入。"_s.arg(path));
    EXPECT_THROW(WriteBatch{connection}, Error);
    EXPECT_EQ(rowsOf(connection, u"select count(*) from T"_s), u"2000"_s);
    EXPECT_EQ(file.files(), QStringList({u"别处.CJK"_s}));
}

TEST_F(Files, NothingIsWrittenToOneThatWasReplaced)
{
    Connection connection;
    connection.Open(path);
    const QString former = file.folder.filePath(u"旧.CJK"_s);
    ASSERT_TRUE(QFile::rename(path, former));
    ASSERT_TRUE(QFile::copy(former, path));
    const QByteArray before = file.bytes();
    Recordset set;
    set.Open(u"select * from T"_s, connection);
    set.Fields(u"n"_s).setValue(0);
    EXPECT_EQ(errorOf([&] { set.Update(); }).failure(), Failure::Missing);
    EXPECT_EQ(file.bytes(), before);
}

TEST_F(Files, ABatchWhoseFileVanishesOnTheWayIsTakenBack)
{
    Connection connection;
    connection.Open(path);
    const QString moved = file.folder.filePath(u"别处.CJK"_s);
    {
        WriteBatch batch(connection);
        connection.Execute(u"delete from T"_s);
        ASSERT_TRUE(QFile::rename(path, moved));
        EXPECT_EQ(errorOf([&] { batch.commit(); }).failure(), Failure::Missing);
    }
    connection.Open(moved);
    EXPECT_EQ(rowsOf(connection, u"select count(*) from T"_s), u"2000"_s);
    EXPECT_EQ(file.files(), QStringList({u"别处.CJK"_s}));
}

TEST_F(Files, OneThatKeptALogBesideItBecomesOneFileAgain)
{
    OtherProgram(path).run("pragma journal_mode=wal; insert into T values(0,'x')");
    Connection connection;
    connection.Open(path, {{u"T"_s}, {}});
    connection.Execute(u"delete from T where n=1"_s);
    EXPECT_EQ(file.files(), QStringList({u"库.CJK"_s}));
    connection.Close();
    EXPECT_EQ(file.files(), QStringList({u"库.CJK"_s}));
}

TEST_F(Files, AnotherProgramsFileKeepsTheLogThatItHas)
{
    OtherProgram(path).run("pragma journal_mode=wal");
    const QByteArray before = file.bytes();
    EXPECT_EQ(refused({{u"成绩表"_s}, {}}).failure(), Failure::NoLibrary);
    EXPECT_EQ(file.bytes(), before);
}

TEST_F(Files, AWriteThatWasBrokenOffIsMendedAtTheNextOpen)
{
    const QString copy = leaveBrokenOff();
    Connection connection;
    connection.Open(copy, {{u"T"_s}, {}});
    EXPECT_EQ(rowsOf(connection, u"select count(*) from T where m='y'"_s), u"0"_s);
    EXPECT_FALSE(QFile::exists(copy + u"-journal"_s));
}

TEST_F(Files, OneWhoseFirstPageIsTornIsMendedByItsJournal)
{
    const QString copy = leaveBrokenOff();
    support::write(copy, QByteArray(512, 'x') + support::read(copy).mid(512));
    Connection connection;
    connection.Open(copy, {{u"T"_s}, {}});
    EXPECT_EQ(rowsOf(connection, u"select count(*) from T where m<>'y'"_s), u"2000"_s);
    EXPECT_EQ(rowsOf(connection, u"PRAGMA integrity_check"_s), u"ok"_s);
}

TEST_F(Files, AnotherKindOfFileIsNotChangedByAJournalThatWasLeftThere)
{
    const QString copy = leaveBrokenOff();
    for (const QByteArray& bytes : {QByteArray("a letter"), QByteArray(4096, 'x'),
                                    QByteArray("\0\1\0\0Standard Jet DB", 19)}) {
        support::write(copy, bytes);
        Connection connection;
        EXPECT_THROW(connection.Open(copy, {{u"T"_s}, {}}), Error);
        EXPECT_EQ(support::read(copy), bytes);
        EXPECT_TRUE(QFile::exists(copy + u"-journal"_s));
    }
}

TEST_F(Files, BehindALinkOneIsOpenedByItsRealPathWithTheJournalThatStandsThere)
{
    const QString copy = leaveBrokenOff();
    // What was written since made the file longer than its header says.
    QFile::resize(copy, QFileInfo(copy).size() - 4096);
    const QString link = file.folder.filePath(u"链接.CJK"_s);
    ASSERT_TRUE(QFile::link(copy, link));
    Connection connection;
    connection.Open(link, {{u"T"_s}, {}});
    EXPECT_EQ(connection.path(), copy);
    EXPECT_EQ(rowsOf(connection, u"select count(*) from T where m='y'"_s), u"0"_s);
    EXPECT_FALSE(QFile::exists(copy + u"-journal"_s));
}

TEST_F(Files, TheirTriggersNeverRun)
{
    OtherProgram(path).run("create trigger spy after insert on T begin delete from T; end");
    Connection connection;
    connection.Open(path, {{u"T"_s}, {}});
    connection.Execute(u"insert into T values(0,'x')"_s);
    EXPECT_EQ(rowsOf(connection, u"select count(*) from T"_s), u"2001"_s);
}

TEST_F(Files, AViewInThePlaceOfATableIsTold)
{
    OtherProgram(path).run("create view V as select n, m from T");
    EXPECT_EQ(refused({{u"T"_s, u"V"_s}, {}}).description(),
              u"%1 不是成绩库：“V”是视图，不是表。"_s.arg(path));
    Connection connection;
    connection.Open(path, {{u"T"_s}, {}});
    EXPECT_TRUE(errorOf([&] { rowsOf(connection, u"select * from V"_s); })
                    .description()
                    .startsWith(u"“V”是视图，不是表，不能使用。"_s));
}

TEST_F(Files, AColumnThatHidesTheRowIdsIsTold)
{
    OtherProgram(path).run("create table U(RowId, n)");
    EXPECT_EQ(refused({{u"T"_s}, {}}).description(),
              u"%1 不能打开：表“U”里有名为 rowid 的列。"_s.arg(path));
    EXPECT_THROW(SqlText(u"ALTER TABLE T add COLUMN rowid Single"_s), Error);
}

TEST_F(Files, APathThatTheEngineHasNoRoomForIsTold)
{
    QString deep = file.folder.path();
    while (QFile::encodeName(deep).size() < 500)
        deep += u"/一层又一层的文件夹"_s;
    ASSERT_TRUE(QDir().mkpath(deep));
    const QString away = deep + u"/库.CJK"_s;
    ASSERT_TRUE(QFile::copy(path, away));
    Connection connection;
    EXPECT_EQ(errorOf([&] { connection.Open(away); }).description(),
              u"%1 的路径太长（超过 500 字节），请把它移到路径较短的文件夹里。"_s.arg(away));
}

TEST_F(Files, OneThatIsReplacedInTheMiddleOfACommitIsTold)
{
    const QString copy = file.folder.filePath(u"新.CJK"_s);
    ASSERT_TRUE(QFile::copy(path, copy));
    Connection connection;
    connection.Open(path);
    std::pair<QString, QString> names{copy, path};
    const auto replace = [](void* context) {
        const auto& [from, to] = *static_cast<std::pair<QString, QString>*>(context);
        std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData());
        return 0;
    };
    sqlite3_commit_hook(connection.handle(), replace, &names);
    const auto inABatch = [&] {
        WriteBatch batch(connection);
        connection.Execute(u"delete from T"_s);
        batch.commit();
    };
    EXPECT_EQ(errorOf(inABatch).description(),
              u"成绩库文件 %1 在写入时被移走、删除或替换，刚才的写入不在它里面。"_s.arg(path));
}

TEST_F(Files, OneThatIsReplacedInTheMiddleOfASingleWriteIsTold)
{
    Connection connection;
    connection.Open(path);
    const auto remove = [](void* name) {
        return int(!QFile::remove(*static_cast<const QString*>(name)));
    };
    QString name = path;
    sqlite3_commit_hook(connection.handle(), remove, &name);
    EXPECT_EQ(errorOf([&] { connection.Execute(u"delete from T"_s); }).failure(), Failure::Missing);
}

} // namespace
} // namespace database
