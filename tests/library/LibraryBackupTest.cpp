#include "library/LibraryBackup.h"

#include <sys/stat.h>

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include "library/LibraryCopies.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Trap.h"
#include "support/ErrorOf.h"
#include "support/FileBytes.h"
#include "support/FullDisk.h"
#include "support/NoRoom.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using library::LibraryCopy;
using support::read;
using support::TestLibrary;
using support::write;

class Telling : public runtime::NoProgress
{
public:
    void report(const QString& text, int done, int total) override
    {
        told.append(u"%1 %2/%3"_s.arg(text).arg(done).arg(total));
    }
    bool cancelled() const override { return told.size() >= cancelAfter; }

    QStringList told;
    int cancelAfter = 1000;
};

class DatedCopies : public testing::Test
{
protected:
    /// The library has another content each time.
    void change() { test.addStudent(1, ++students, u"甲"_s, u"理"_s); }

    QString copyAt(const QDateTime& time)
    {
        change();
        return library::backUpLibrary(path, time, {u"导入 期中"_s}, progress);
    }
    QString copyAt(int minute, int second)
    {
        return copyAt(QDateTime(QDate(2026, 3, 9), QTime(7, minute, second)));
    }

    QStringList copies() const
    {
        QStringList names = QDir(test.folder.path()).entryList({u"*.bak"_s}, QDir::Files);
        for (QString& name : names)
            name.remove(u"测试.CJK_"_s);
        names.sort();
        return names;
    }
    QStringList files() const
    {
        return QDir(test.folder.path()).entryList(QDir::Files | QDir::Hidden);
    }

    /// Adds a student in a batch, as an import does; false if it was not written.
    bool import()
    {
        const library::BackupBeforeWrite backup(test.scores, progress, library::Backup::Make,
                                                {u"导入 期中"_s});
        return runtime::Trap(" - Import")([&] {
            database::WriteBatch batch(test.scores.Conn);
            change();
            change();
            batch.commit();
        });
    }

    TestLibrary test{{u"语文"_s}};
    const QString path = test.scores.Conn.path();
    Telling progress;
    int students = 0;
};

TEST_F(DatedCopies, StandBesideTheLibraryAndTheNewestFiveOfBothNamingsAndTheFirstOfTheDayAreKept)
{
    write(path + u"_2026-03-09_.bak"_s, "compaction's");
    write(path + u"_2026-03-09_0706.bak"_s, "named to the minute");
    write(path + u"_2026-03-09_0703.bak"_s, "named to the minute");
    write(path + u"_2026-03-09_0704.bak"_s, "named to the minute");
    write(test.file(u"二中.CJK_2020-01-01_010101.bak"_s), "another library's");
    EXPECT_EQ(copyAt(5, 0), path + u"_2026-03-09_070500.bak"_s);
    EXPECT_EQ(read(path + u"_2026-03-09_070500.bak"_s), read(path));
    for (int second = 7; second <= 9; ++second)
        copyAt(6, second);
    EXPECT_EQ(copies(),
              (QStringList{u"2026-03-09_.bak"_s, u"2026-03-09_0703.bak"_s,
                           u"2026-03-09_070500.bak"_s, u"2026-03-09_0706.bak"_s,
                           u"2026-03-09_070607.bak"_s, u"2026-03-09_070608.bak"_s,
                           u"2026-03-09_070609.bak"_s, u"二中.CJK_2020-01-01_010101.bak"_s}));
}

TEST_F(DatedCopies, OfOneSecondDoNotReplaceEachOther)
{
    const QString first = copyAt(5, 59);
    const QByteArray bytes = read(first);
    EXPECT_EQ(copyAt(5, 59), path + u"_2026-03-09_070600.bak"_s);
    EXPECT_EQ(read(first), bytes);
}

TEST_F(DatedCopies, TellTheTimeAtWhichTheyWereMadeWhateverTheirName)
{
    copyAt(5, 59);
    const QString second = copyAt(5, 59);
    const LibraryCopy newest = library::copiesOf(path).front();
    EXPECT_EQ(newest.path, second);
    EXPECT_EQ(library::timeText(newest.time), u"2026-03-09 07:05:59"_s);
    // What is noted later, or by a file of no use, does not change it.
    QFile::remove(library::occasionFile(second));
    EXPECT_EQ(library::timeText(library::copiesOf(path).front().time), u"2026-03-09 07:06:00"_s);
    library::noteOccasion(second, {QDateTime(QDate(2026, 3, 10), QTime(8, 0)), {u"重新分班"_s}});
    EXPECT_EQ(library::timeText(library::copiesOf(path).front().time), u"2026-03-09 07:06:00"_s);
}

TEST_F(DatedCopies, TakeWhatIsNotedOfThemAlongWhenTheyGo)
{
    copyAt(5, 0);
    const QString second = copyAt(5, 1);
    ASSERT_TRUE(QFile::exists(library::occasionFile(second)));
    for (int next = 2; next <= 6; ++next)
        copyAt(5, next);
    EXPECT_FALSE(QFile::exists(second));
    EXPECT_FALSE(QFile::exists(library::occasionFile(second)));
}

TEST_F(DatedCopies, AreTheOnlyFilesThatAreRemovedAsOnes)
{
    const QString copy = copyAt(5, 0);
    const QString elsewhere = test.file(u"二中.CJK"_s);
    const QString ofAnother = elsewhere + u"_2026-03-09_070500.bak"_s;
    write(elsewhere, "a library in use");
    write(ofAnother, "its copy");
    for (const QString& file : {path, elsewhere, ofAnother})
        EXPECT_FALSE(library::removeCopy(path, file)) << file.toStdString();
    EXPECT_TRUE(QFile::exists(path) && QFile::exists(elsewhere) && QFile::exists(ofAnother));
    EXPECT_TRUE(library::removeCopy(path, copy));
    EXPECT_FALSE(QFile::exists(copy) || QFile::exists(library::occasionFile(copy)));
    EXPECT_FALSE(library::removeCopy(path, copy));
}

TEST_F(DatedCopies, AreNotFilesThatAreNamedToATimeThatThereIsNot)
{
    QStringList files;
    for (const char16_t* ending : {u"2026-99-99_9999", u"2026-02-30_070500", u"2026-13-01_"})
        files.append(path + u'_' + QString::fromUtf16(ending) + u".bak"_s);
    for (const QString& file : std::as_const(files))
        write(file, "the user's own");
    for (int second = 0; second < 8; ++second)
        copyAt(5, second);
    for (const library::LibraryCopy& copy : library::copiesOf(path))
        EXPECT_FALSE(files.contains(copy.path)) << copy.path.toStdString();
    for (const QString& file : std::as_const(files)) {
        EXPECT_FALSE(library::removeCopy(path, file));
        EXPECT_EQ(read(file), "the user's own");
    }
}

TEST_F(DatedCopies, TheOneJustMadeStaysUnderAClockPutBack)
{
    for (int hour = 1; hour <= 7; ++hour)
        copyAt(QDateTime(QDate(2027, 1, 1), QTime(hour, 0)));
    EXPECT_TRUE(QFile::exists(copyAt(QDateTime(QDate(2026, 1, 1), QTime(8, 0)))));
    EXPECT_EQ(copies().size(), 7);
}

TEST_F(DatedCopies, NoneIsMadeOfWhatTheNewestHolds)
{
    const QString first = copyAt(5, 0);
    const QDateTime later(QDate(2026, 3, 9), QTime(9, 0));
    EXPECT_EQ(library::backUpLibrary(path, later, {u"重新分班"_s}, progress), first);
    EXPECT_EQ(copies().size(), 1);
    const std::vector<library::NotedOccasion> noted = library::notedOccasions(first);
    ASSERT_EQ(noted.size(), 2);
    EXPECT_EQ(noted[0].occasion.text, u"导入 期中"_s);
    EXPECT_EQ(noted[1].time, later);
    EXPECT_EQ(noted[1].occasion.text, u"重新分班"_s);
}

TEST_F(DatedCopies, HaveTheRightsOfTheLibrary)
{
    ASSERT_EQ(chmod(QFile::encodeName(path).constData(), 0600), 0);
    const QString copy = copyAt(5, 0);
    EXPECT_EQ(QFile::permissions(copy), QFile::permissions(path));
}

TEST_F(DatedCopies, ThatCannotBeMadeAreAnErrorAndLeaveNothing)
{
    change();
    const QStringList before = files();
    const support::FullDisk disk(50'000);
    EXPECT_EQ(support::errorOf([&] {
                  library::backUpLibrary(path, QDateTime::currentDateTime(), {}, progress);
              }),
              u"无法写入文件 %1（磁盘已满，或文件的大小受到限制）。"_s.arg(path));
    EXPECT_EQ(files(), before);
}

TEST_F(DatedCopies, OfALargeLibraryTellWhereTheyStandAndCanBeCancelled)
{
    test.execute(u"insert into 信息表(照片) values(zeroblob(3000000))"_s);
    copyAt(5, 0);
    const int total = int(QFileInfo(path).size() / 1024);
    EXPECT_EQ(progress.told.first(), u"备份成绩库... 1024/%1"_s.arg(total));
    progress.told.clear();
    progress.cancelAfter = 2;
    EXPECT_EQ(support::errorOf([&] { copyAt(6, 0); }), u"备份没有做完就取消了。"_s);
    EXPECT_EQ(copies(), QStringList{u"2026-03-09_070500.bak"_s});
}

TEST_F(DatedCopies, AreMadeBeforeTheFirstWriteOnly)
{
    const QByteArray before = read(path);
    ASSERT_TRUE(import());
    ASSERT_EQ(copies().size(), 1);
    EXPECT_EQ(read(path + u'_' + copies().value(0)), before);
    EXPECT_EQ(test.rows(u"select count(*) from 信息表"_s), u"2"_s);
}

TEST_F(DatedCopies, EachOfTwoRunsInOneMinuteHasItsOwn)
{
    ASSERT_TRUE(import());
    ASSERT_TRUE(import());
    EXPECT_EQ(copies().size(), 2);
}

TEST_F(DatedCopies, WhatWritesNothingLeavesNone)
{
    {
        const library::BackupBeforeWrite backup(test.scores, progress, library::Backup::Make,
                                                {u"导入 期中"_s});
        database::WriteBatch batch(test.scores.Conn);
        test.rows(u"select * from 信息表"_s);
        batch.commit();
    }
    EXPECT_EQ(copies(), QStringList());
}

TEST_F(DatedCopies, WithoutOneNothingIsWrittenAndThatIsOneMessage)
{
    const QByteArray before = read(path);
    {
        const support::FullDisk disk(50'000);
        EXPECT_FALSE(import());
    }
    EXPECT_EQ(test.dialogs.failures,
              QStringList{u"备份没有成功，什么也没有写入：无法写入文件 %1（磁盘已满，"
                          "或文件的大小受到限制）。 - Import"_s.arg(path)});
    EXPECT_EQ(read(path), before);
    EXPECT_EQ(copies(), QStringList());
}

TEST_F(DatedCopies, WithoutRoomAreToldBeforehandUnlessNoneIsWanted)
{
    EXPECT_TRUE(library::hasRoomForBackup(test.scores, library::Backup::Make));
    support::outgrowDisk(test);
    EXPECT_TRUE(library::hasRoomForBackup(test.scores, library::Backup::SwitchedOff));
    EXPECT_EQ(test.dialogs.shown, QStringList());
    EXPECT_FALSE(library::hasRoomForBackup(test.scores, library::Backup::Make));
    support::expectOnlyNoRoomTold(test.dialogs.shown);
}

} // namespace
