#include "library/LibraryRestore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "library/AskedRestore.h"
#include "platform/runtime/UnfinishedFile.h"
#include "support/CopiedLibrary.h"
#include "support/ErrorOf.h"
#include "support/FileBytes.h"
#include "support/FullDisk.h"
#include "support/OrdinaryUser.h"
#include "support/OtherProgram.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using library::LibraryCopy;
using library::Occasion;
using support::read;
using support::TestLibrary;
using support::write;

class Cancelled : public runtime::NoProgress
{
public:
    bool cancelled() const override { return true; }
};

/// The library is gone when what follows its comparison is finished.
class Losing : public runtime::NoProgress
{
public:
    explicit Losing(QString library) : m_library(std::move(library)) {}
    void finish() override
    {
        if (m_isCompared)
            QFile::remove(m_library);
        m_isCompared = true;
    }

private:
    const QString m_library;
    bool m_isCompared = false;
};

class Restore : public support::CopiedLibrary
{
protected:
    QStringList files() const
    {
        return QDir(test.folder.path())
            .entryList({u"*.CJK*"_s, u".yunshan*"_s}, QDir::Files | QDir::Hidden);
    }
    QString restoreError()
    {
        return support::errorOf(
            [&] { library::restoreLibrary(test.scores, path, copy, {u"恢复备份"_s}, progress); });
    }
};

TEST_F(Restore, OpensTheCopyInThePlaceOfTheLibraryAndKeepsWhatWasThere)
{
    const QByteArray before = read(path);
    const QString former =
        library::restoreLibrary(test.scores, path, copy, {u"恢复备份"_s}, progress);
    EXPECT_EQ(read(path), read(copy));
    EXPECT_EQ(read(former), before);
    EXPECT_EQ(exams(), u"期中"_s);
    EXPECT_EQ(test.scores.catalogue.ExamList, QStringList{u"期中"_s});
    EXPECT_EQ(newest().occasionText(), u"恢复备份"_s);
    EXPECT_EQ(files().filter(u".yunshan"_s), QStringList());
}

TEST_F(Restore, OfALibraryThatAnotherProgramUsesIsRefused)
{
    support::OtherProgram other(path);
    other.run("begin immediate");
    EXPECT_EQ(restoreError(), u"文件 %1 正在使用，不能覆盖。"_s.arg(path));
    other.run("rollback");
    expectAsBefore();
}

TEST_F(Restore, OnAFullDiskChangesNothing)
{
    const QStringList before = files();
    {
        const support::FullDisk disk(50'000);
        EXPECT_EQ(restoreError(),
                  u"无法写入文件 %1（磁盘已满，或文件的大小受到限制）。"_s.arg(path));
    }
    EXPECT_EQ(files(), before);
    expectAsBefore();
}

TEST_F(Restore, InAFolderThatCannotBeWrittenChangesNothing)
{
    // By their group too, which the user may share.
    constexpr auto writable = QFile::Permissions(0x6666);
    for (const QString& name : files())
        QFile::setPermissions(test.file(name), writable);
    const QString folder = test.folder.path();
    QFile::setPermissions(folder, QFile::Permissions(0x5555));
    {
        const support::OrdinaryUser user;
        EXPECT_TRUE(restoreError().startsWith(u"无法写入文件 %1（"_s.arg(path)));
    }
    QFile::setPermissions(folder, QFile::Permissions(0x7700));
    expectAsBefore();
}

TEST_F(Restore, ThatIsCancelledChangesNothing)
{
    Cancelled cancelled;
    EXPECT_EQ(support::errorOf([&] {
                  library::restoreLibrary(test.scores, path, copy, {u"恢复备份"_s}, cancelled);
              }),
              u"恢复没有做完就取消了，成绩库没有改变。"_s);
    expectAsBefore();
}

TEST_F(Restore, OfAForeignDatabaseIsRefused)
{
    copy = test.file(u"别的.bak"_s);
    support::OtherProgram(copy).run("create table t(a)");
    EXPECT_TRUE(
        restoreError().startsWith(u"这份备份不能用，成绩库没有改变：%1 不是成绩库"_s.arg(copy)));
    expectAsBefore();
}

TEST_F(Restore, AsksWithWhatWillBeOtherwise)
{
    test.dialogs.expect(u"把成绩库恢复为这份备份？"_s, u"取消"_s);
    EXPECT_FALSE(library::restoreAsked(test.scores, path, newest(), progress));
    EXPECT_EQ(test.dialogs.questions.last(),
              u"把成绩库恢复为这份备份？\n2026-03-09 07:01:00，导入 期末 之前\n\n"
              "备份以后增加、恢复后没有的考试：1 次（期末）\n"
              "备份以后增加、恢复后没有的学生：1 名（2 班 1 号 新生）\n\n"
              "现在的成绩库会先备份，以后可以再恢复回来。"_s);
    EXPECT_EQ(test.dialogs.safeOf(u"把成绩库恢复"_s), u"取消"_s);
    expectAsBefore();

    test.dialogs.expect(u"把成绩库恢复为这份备份？"_s, u"恢复"_s);
    EXPECT_TRUE(library::restoreAsked(test.scores, path, newest(), progress));
    EXPECT_EQ(exams(), u"期中"_s);
    EXPECT_EQ(test.dialogs.shown.last(),
              u"恢复完毕，成绩库现在是 2026-03-09 07:01:00 的备份的内容。\n"
              "恢复前的成绩库已备份为 %1。"_s.arg(QFileInfo(newest().path).fileName()));
}

TEST_F(Restore, AsksWithTheScoresThatComeOrGoWithTheRowsOfStudents)
{
    const QString copied = backUp({u"重新分班"_s}, 2);
    const auto expect = [&](const QString& line) {
        test.dialogs.expect(u"\n\n恢复后回到备份内容的考试："_s + line + u"\n\n"_s, u"取消"_s);
        EXPECT_FALSE(library::restoreAsked(test.scores, path, {copied, QDateTime()}, progress));
    };
    test.addScores(u"期中"_s, 2, 1, {{u"语文"_s, 80}});
    expect(u"1 次，1 人次的成绩恢复后没有（期中：备份里没有的成绩 1 行）"_s);
    test.execute(u"delete from 成绩表 where 考试名称='期末'"_s);
    expect(u"2 次，1 人次的成绩恢复后没有，1 人次的成绩恢复后又有"
           "（期中：备份里没有的成绩 1 行；期末：只有备份里有的成绩 1 行）"_s);
    test.execute(u"delete from 成绩表 where 班级=2"_s);
    test.execute(u"update 成绩表 set 语文=1"_s);
    expect(u"2 次，不同的成绩共 1 个，1 人次的成绩恢复后又有"
           "（期中：成绩不同 1 个；期末：只有备份里有的成绩 1 行）"_s);
}

TEST_F(Restore, AsksAlsoWhereNothingDiffersOrCannotBeCompared)
{
    backUp({u"重新分班"_s}, 2);
    test.dialogs.expect(u"这份备份和现在的成绩库内容相同（照片只比较了大小）。"_s, u"取消"_s);
    EXPECT_FALSE(library::restoreAsked(test.scores, path, newest(), progress));
    test.scores.Conn.Close();
    test.dialogs.expect(u"现在的成绩库没有打开，无法比较。"_s, u"恢复"_s);
    EXPECT_TRUE(library::restoreAsked(test.scores, path, {copy, QDateTime()}, progress));
    EXPECT_TRUE(test.scores.Conn.isOpen());
}

TEST_F(Restore, OfACopyThatIsOfNoUseIsToldAndNotAskedAbout)
{
    const LibraryCopy chosen = newest();
    const auto expectTold = [&](const QString& message) {
        test.dialogs.shown.clear();
        EXPECT_FALSE(library::restoreAsked(test.scores, path, chosen, progress));
        EXPECT_EQ(test.dialogs.shown, QStringList{message});
    };
    write(copy, read(copy).left(20'000));
    expectTold(u"%1 不完整（后面一部分丢失了），无法打开。"_s.arg(copy));
    write(copy, "a text");
    expectTold(u"%1 不是成绩库。"_s.arg(copy));
    QFile::remove(copy);
    expectTold(u"找不到文件 %1。"_s.arg(copy));
    EXPECT_EQ(test.dialogs.questions, QStringList());
    expectAsBefore();
}

TEST_F(Restore, OfASoundCopyIsAskedAboutWhereTheLibraryCannotBeCompared)
{
    test.execute(u"drop table 信息表"_s);
    test.dialogs.expect(u"没有比较这份备份和现在的成绩库。"_s, u"恢复"_s);
    EXPECT_TRUE(library::restoreAsked(test.scores, path, newest(), progress));
    EXPECT_EQ(test.dialogs.questions.size(), 1);
    EXPECT_EQ(exams(), u"期中"_s);
}

TEST_F(Restore, ThatLeavesALibraryThatDoesNotOpenIsNotToldToBeDone)
{
    Losing losing(path);
    test.dialogs.expect(u"把成绩库恢复为这份备份？"_s, u"恢复"_s);
    EXPECT_FALSE(library::restoreAsked(test.scores, path, newest(), losing));
    EXPECT_FALSE(test.scores.Conn.isOpen());
    EXPECT_TRUE(test.dialogs.shown.last().startsWith(
        u"成绩库已换成 2026-03-09 07:01:00 的备份，但是没有能打开。\n"
        "恢复前的成绩库已备份为 "_s));
}

TEST_F(Restore, AsksWithLongAndBrokenNamesCutToALine)
{
    test.execute(u"update 考试名称表 set 考试名称='甲'||char(10)||'乙 %1'||"
                 "replace(hex(zeroblob(10000)),'00','长') where 考试名称='期末'"_s);
    test.dialogs.expect(u"把成绩库恢复为这份备份？"_s, u"取消"_s);
    EXPECT_FALSE(library::restoreAsked(test.scores, path, newest(), progress));
    EXPECT_LT(test.dialogs.questions.last().size(), 600);
    EXPECT_TRUE(test.dialogs.questions.last().contains(u"甲⏎乙 %1长长"_s));
}

TEST_F(Restore, OfALibraryThatDoesNotFitIntoItsNameKeepsItsBytes)
{
    test.scores.Conn.Close();
    write(path, "half a library");
    const QString former =
        library::restoreLibrary(test.scores, path, copy, {u"恢复备份"_s}, progress);
    EXPECT_EQ(read(former), "half a library");
    EXPECT_EQ(read(path), read(copy));
    EXPECT_EQ(exams(), u"期中"_s);
}

/// The library and its journal as a power cut in the middle of a write leaves them.
QString tornLibrary(TestLibrary& test)
{
    const QString torn = test.file(u"断电.CJK"_s);
    support::OtherProgram other(test.scores.LibPath);
    other.run("pragma cache_size=5; begin;"
              "with recursive n(i) as (select 1 union all select i+1 from n where i<3000) "
              "insert into 信息表(班级,学号,姓名,科类) select 2,i,'乙','理' from n");
    write(torn, QByteArray(512, 'x') + read(test.scores.LibPath).mid(512));
    QFile::copy(test.scores.LibPath + u"-journal"_s, torn + u"-journal"_s);
    other.run("rollback");
    return torn;
}

TEST_F(Restore, OverALibraryThatAPowerCutToreKeepsItAsItWasBeforeThatWrite)
{
    const QByteArray before = read(path);
    const QString torn = tornLibrary(test);
    const QString former =
        library::restoreLibrary(test.scores, torn, copy, {u"恢复备份"_s}, progress);
    EXPECT_EQ(exams(), u"期中"_s);
    EXPECT_EQ(read(former), before);
}

TEST_F(Restore, OverADamagedLibraryKeepsItsJournalBesideTheCopyOfIt)
{
    const QString torn = tornLibrary(test);
    const QByteArray journal = read(torn + u"-journal"_s);
    write(torn, "half a library");
    const QString former =
        library::restoreLibrary(test.scores, torn, copy, {u"恢复备份"_s}, progress);
    EXPECT_EQ(exams(), u"期中"_s);
    EXPECT_EQ(read(former), "half a library");
    EXPECT_EQ(read(former + u"-journal"_s), journal);
    EXPECT_TRUE(library::removeCopy(torn, former));
    EXPECT_EQ(files().filter(u"-journal"_s), QStringList());
}

TEST_F(Restore, AndTheComparisonLeaveACopyWithABrokenWriteAsItIs)
{
    const QString torn = tornLibrary(test);
    const QByteArray bytes = read(torn);
    const QByteArray journal = read(torn + u"-journal"_s);
    const auto differences = library::compareWithCopy(test.scores.Conn, torn, progress);
    EXPECT_TRUE(differences && !differences->any());
    EXPECT_TRUE(library::isSoundCopy(torn, progress));
    test.execute(u"delete from 成绩表"_s);
    library::restoreLibrary(test.scores, path, torn, {u"恢复备份"_s}, progress);
    expectAsBefore();
    EXPECT_EQ(read(torn), bytes);
    EXPECT_EQ(read(torn + u"-journal"_s), journal);
}

TEST_F(Restore, RemovesWhatAKilledOneLeft)
{
    test.scores.Conn.Close();
    // Its maker has a number that no process has.
    const QString left =
        QString(runtime::UnfinishedFile(path).path())
            .replace(u"-%1-"_s.arg(QCoreApplication::applicationPid()), u"-999999999-"_s);
    write(left, "half a copy");
    library::restoreCopy(path, copy, QDateTime::currentDateTime(), {u"恢复备份"_s}, progress);
    EXPECT_FALSE(QFile::exists(left));
}

} // namespace
