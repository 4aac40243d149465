#include "shell/LibraryFile.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

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
        shell::compactLibrary(test.scores, date);
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

    TestLibrary test{{u"语文"_s}};
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
    const QStringList told = failures();
    ASSERT_EQ(told.size(), 2);
    EXPECT_TRUE(told[0].startsWith(u"无法把 %1 改名为 %2（"_s.arg(path, wrong)))
        << told[0].toStdString();
    EXPECT_EQ(told[1], u"找不到文件 %1。"_s.arg(wrong));
    EXPECT_EQ(test.dialogs.shown.last(), finished);
    EXPECT_EQ(test.dialogs.shown.size(), 3);
    EXPECT_EQ(libraryFiles(), QStringList{u"测试.CJK"_s});
    EXPECT_EQ(bytes(path), before);
    EXPECT_TRUE(test.scores.Conn.isOpen()) << "opened again";
    EXPECT_EQ(test.scores.LibPath, path);
    EXPECT_EQ(students(), u"甲"_s);
}

TEST_F(Compaction, AFailingOneLeavesTheBackupAlone)
{
    test.scores.Conn.Close();
    const QByteArray damaged("SQLite format 3\0 and no more", 28);
    write(path, damaged);
    compact();
    const QStringList told = failures();
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told[0].contains(backup)) << told[0].toStdString();
    EXPECT_EQ(test.dialogs.shown.mid(1), (QStringList{path + u"\n库文件不存在！"_s, finished}));
    EXPECT_EQ(libraryFiles(), QStringList{u"测试.CJK_2024-05-06_.bak"_s});
    EXPECT_EQ(bytes(backup), damaged);
    EXPECT_FALSE(test.scores.Conn.isOpen());
    EXPECT_EQ(test.scores.LibPath, QString());
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

TEST_F(Compaction, ABackupThatCannotBeRemovedKeepsTheLibraryWhereItIs)
{
    ASSERT_TRUE(QDir().mkpath(backup + u"/voll"_s));
    compact();
    const QStringList told = failures();
    ASSERT_FALSE(told.isEmpty());
    EXPECT_EQ(told[0], u"无法删除文件 %1。"_s.arg(backup));
    EXPECT_EQ(test.dialogs.shown.last(), finished);
    EXPECT_EQ(students(), u"甲"_s);
    EXPECT_EQ(libraryFiles(), QStringList{u"测试.CJK"_s});
}

} // namespace
