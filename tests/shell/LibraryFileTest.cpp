#include "shell/LibraryFile.h"

#include <sys/stat.h>

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include "platform/database/WriteBatch.h"
#include "support/FullDisk.h"
#include "support/OtherProgram.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

const QString tag = u" - Private Sub mfSaveAs_Click/FormMain"_s;
const QString finished = u"压缩完毕!"_s;

/// An open library with one student.
class Compaction : public testing::Test
{
protected:
    Compaction() { test.addStudent(1, 1, u"甲"_s, u"理"_s); }

    void compact(const QString& date = u"2024-05-06"_s)
    {
        shell::compactLibrary(test.scores, date, progress);
    }

    QString students() { return test.rows(u"select 姓名 from 信息表"_s); }

    QStringList libraryFiles() const
    {
        return QDir(test.folder.path()).entryList({u"测试*"_s}, QDir::Files, QDir::Name);
    }

    static QByteArray bytes(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    static void write(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    /// The failures end with the tag of the command; gives them without it.
    QStringList failures() const
    {
        QStringList texts = test.dialogs.failures;
        for (QString& text : texts) {
            EXPECT_TRUE(text.endsWith(tag)) << text.toStdString();
            text.chop(tag.size());
        }
        return texts;
    }

    QStringList allFiles() const
    {
        return QDir(test.folder.path())
            .entryList({u"测试*"_s, u".*"_s}, QDir::Files | QDir::Hidden, QDir::Name);
    }

    TestLibrary test{{u"语文"_s}};
    runtime::NoProgress progress;
    const QString path = test.scores.LibPath;
    const QString backup = path + u"_2024-05-06_.bak"_s;
};

TEST_F(Compaction, ThePreviousFileStaysAsTheDaysBackup)
{
    const QByteArray before = bytes(path);
    compact();
    EXPECT_EQ(test.dialogs.shown, QStringList{finished});
    EXPECT_EQ(libraryFiles(), (QStringList{u"测试.CJK"_s, u"测试.CJK_2024-05-06_.bak"_s}));
    EXPECT_EQ(bytes(backup), before);
    EXPECT_TRUE(test.scores.Conn.isOpen());
    EXPECT_EQ(test.scores.LibPath, path);
    EXPECT_EQ(students(), u"甲"_s);
}

TEST_F(Compaction, WhatWasDeletedTakesNoRoomAnyMore)
{
    test.execute(
        u"insert into 信息表(班级,学号,备注) values(9,9,'%1')"_s.arg(QString(300000, u'长')));
    test.execute(u"delete from 信息表 where 班级=9"_s);
    const qint64 before = QFile(path).size();
    compact();
    EXPECT_LT(QFile(path).size() + 500000, before);
    EXPECT_EQ(students(), u"甲"_s);
}

TEST_F(Compaction, ASecondOneOnTheSameDayReplacesTheBackup)
{
    compact();
    test.addStudent(1, 2, u"乙"_s, u"理"_s);
    const QByteArray second = bytes(path);
    compact();
    EXPECT_EQ(test.dialogs.shown, (QStringList{finished, finished}));
    EXPECT_EQ(libraryFiles().size(), 2);
    EXPECT_EQ(bytes(backup), second);
}

TEST_F(Compaction, AnotherDayHasABackupOfItsOwn)
{
    compact();
    compact(u"2024-05-07"_s);
    EXPECT_EQ(libraryFiles().size(), 3);
    EXPECT_EQ(students(), u"甲"_s);
}

TEST_F(Compaction, ADateWithSlashesCompactsNothingAndSaysItIsDone)
{
    const QByteArray before = bytes(path);
    compact(u"2024/5/6"_s);
    const QString wrong = path + u"_2024/5/6_.bak"_s;
    EXPECT_EQ(failures(), (QStringList{u"无法写入文件 %1（文件夹不存在）。"_s.arg(wrong),
                                       u"没有备份 %1，成绩库没有压缩。"_s.arg(wrong)}));
    EXPECT_EQ(test.dialogs.shown.last(), finished);
    EXPECT_EQ(test.dialogs.shown.size(), 3);
    EXPECT_EQ(libraryFiles(), QStringList{u"测试.CJK"_s});
    EXPECT_EQ(bytes(path), before);
    EXPECT_TRUE(test.scores.Conn.isOpen()) << "opened again";
    EXPECT_EQ(test.scores.LibPath, path);
    EXPECT_EQ(students(), u"甲"_s);
}

TEST_F(Compaction, ADamagedLibraryStaysAsItIs)
{
    test.scores.Conn.Close();
    const QByteArray damaged("SQLite format 3\0 and no more", 28);
    write(path, damaged);
    compact();
    const QString sentence = u"%1 不完整（后面一部分丢失了），无法打开。"_s.arg(path);
    EXPECT_EQ(
        test.dialogs.shown,
        (QStringList{sentence + tag, sentence + u" - Public Sub OpenDB/Mdl_MDB"_s, finished}));
    EXPECT_EQ(allFiles(), QStringList{u"测试.CJK"_s});
    EXPECT_EQ(bytes(path), damaged);
    EXPECT_FALSE(test.scores.Conn.isOpen());
}

TEST_F(Compaction, PagesThatCannotBeReadKeepTheLibraryWhereItIs)
{
    test.execute(u"update 信息表 set 备注='%1'"_s.arg(QString(300'000, u'长')));
    test.scores.Conn.Close();
    QByteArray damaged = bytes(path);
    damaged.replace(damaged.size() - 200'000, 100'000, QByteArray(100'000, '\x55'));
    write(path, damaged);
    compact();
    ASSERT_EQ(failures().size(), 1);
    EXPECT_EQ(bytes(path), damaged);
    EXPECT_EQ(bytes(backup), damaged);
    EXPECT_EQ(test.dialogs.shown.last(), finished);
}

TEST_F(Compaction, OnAFullDiskTheLibraryStaysAsItWas)
{
    compact();
    const QByteArray morning = bytes(backup);
    test.addStudent(1, 2, u"乙"_s, u"理"_s);
    const QByteArray before = bytes(path);
    test.dialogs.shown.clear();
    test.dialogs.failures.clear();
    {
        const support::FullDisk disk(50'000);
        compact();
    }
    EXPECT_EQ(failures(),
              (QStringList{u"无法写入文件 %1（磁盘已满，或文件的大小受到限制）。"_s.arg(backup),
                           u"没有备份 %1，成绩库没有压缩。"_s.arg(backup)}));
    EXPECT_EQ(test.dialogs.shown.last(), finished);
    EXPECT_EQ(bytes(path), before);
    EXPECT_EQ(bytes(backup), morning) << "the morning's backup is whole";
    EXPECT_EQ(allFiles().size(), 2);
    EXPECT_EQ(students(), u"甲 / 乙"_s);
}

TEST_F(Compaction, ANamedLibraryIsTakenBackFirstToWhatItWasBeforeACrash)
{
    const QString crashed = test.file(u"旧.CJK"_s);
    {
        // A small cache makes the engine write pages before the end of the batch.
        test.execute(u"PRAGMA cache_size=5"_s);
        database::WriteBatch batch(test.scores.Conn);
        test.execute(u"with recursive n(i) as (select 1 union all select i+1 from n where i<3000) "
                     "insert into 信息表(班级,学号,姓名,科类) select 2,i,'乙','理' from n"_s);
        ASSERT_TRUE(QFile::copy(path, crashed));
        ASSERT_TRUE(QFile::copy(path + u"-journal"_s, crashed + u"-journal"_s));
    }
    test.scores.Conn.Close();
    test.scores.LibPath = crashed;
    compact();
    EXPECT_EQ(test.dialogs.shown, QStringList{finished});
    EXPECT_FALSE(QFile::exists(crashed + u"-journal"_s));
    EXPECT_EQ(students(), u"甲"_s);
    EXPECT_EQ(test.rows(u"PRAGMA integrity_check"_s), u"ok"_s);
}

TEST_F(Compaction, ALibraryThatAnotherProgramWritesIsLeftAlone)
{
    {
        support::OtherProgram other(path);
        other.run("begin; delete from 信息表");
        compact();
        ASSERT_EQ(failures().size(), 1);
        EXPECT_TRUE(failures().first().startsWith(u"成绩库正被别的程序使用"_s));
        EXPECT_EQ(test.dialogs.shown.last(), finished);
        other.run("commit");
    }
    EXPECT_EQ(allFiles(), QStringList{u"测试.CJK"_s});
    EXPECT_EQ(students(), QString());
}

TEST_F(Compaction, KeepsTheRightsOfTheLibrary)
{
    ASSERT_EQ(chmod(QFile::encodeName(path).constData(), 0600), 0);
    compact();
    for (const QString& file : {path, backup})
        EXPECT_EQ(QFile::permissions(file), QFile::Permissions(0x6600)) << file.toStdString();
}

TEST_F(Compaction, ALibraryThatIsNamedAndNotOpenIsCompactedToo)
{
    test.scores.Conn.Close();
    compact();
    EXPECT_EQ(test.dialogs.shown, QStringList{finished});
    EXPECT_TRUE(test.scores.Conn.isOpen());
    EXPECT_TRUE(QFile::exists(backup));
}

TEST_F(Compaction, TheOpenLibraryIsCompactedWhateverFileWasAskedForLast)
{
    const QString foreign = test.file(u"别的.CJK"_s);
    write(foreign, "not to be touched");
    test.scores.LibPath = foreign;
    compact();
    EXPECT_EQ(test.dialogs.shown, QStringList{finished});
    EXPECT_EQ(bytes(foreign), "not to be touched");
    EXPECT_EQ(test.scores.Conn.path(), path);
    EXPECT_EQ(libraryFiles(), (QStringList{u"测试.CJK"_s, u"测试.CJK_2024-05-06_.bak"_s}));
}

TEST_F(Compaction, ABackupThatCannotBeReplacedKeepsTheLibraryWhereItIs)
{
    ASSERT_TRUE(QDir().mkpath(backup + u"/voll"_s));
    compact();
    EXPECT_EQ(failures(), (QStringList{u"无法写入文件 %1（它是文件夹）。"_s.arg(backup),
                                       u"没有备份 %1，成绩库没有压缩。"_s.arg(backup)}));
    EXPECT_EQ(test.dialogs.shown.last(), finished);
    EXPECT_EQ(students(), u"甲"_s);
    EXPECT_EQ(libraryFiles(), QStringList{u"测试.CJK"_s});
}

} // namespace
