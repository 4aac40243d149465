#include "maintenance/PhotoRun.h"

#include <gtest/gtest.h>

#include <QDir>

#include "support/FileBytes.h"
#include "support/FixedPhotoFiles.h"
#include "support/NoRoom.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace maintenance {

namespace {

using namespace Qt::StringLiterals;

const QString done = u"设置完毕！"_s;

/// Presses 取消 when the text is reported for the given time.
class CancelledProgress : public runtime::NoProgress
{
public:
    CancelledProgress(const QString& part, int times) : m_part(part), m_left(times) {}

    void report(const QString& text, int, int) override { m_left -= text.contains(m_part); }
    bool cancelled() const override { return m_left <= 0; }

private:
    QString m_part;
    int m_left;
};

class PhotosOfAFolder : public testing::Test
{
protected:
    void add(const QString& path)
    {
        ASSERT_TRUE(QDir(folder).mkpath(QFileInfo(folder + path).path()));
        support::write(folder + path, path.toUtf8());
    }

    void give(const QString& name, const QString& photo)
    {
        test.execute(
            u"update 信息表 set 照片名='%2', 照片=cast('old' as blob) where 姓名='%1'"_s.arg(
                name, photo));
    }

    bool run(library::Backup backup = library::Backup::SwitchedOff)
    {
        return PhotoRun(test.scores, files, *progress).run(folder, backup);
    }

    QString photos()
    {
        return test.rows(u"select 姓名,照片名,cast(照片 as text) from 信息表 order by ID"_s);
    }

    QStringList copies() { return QDir(test.folder.path()).entryList({u"*.bak"_s}, QDir::Files); }

    support::TestLibrary test{{u"语文"_s}};
    QString folder = test.file(u"照片/"_s);
    support::FixedPhotoFiles files;
    runtime::NoProgress unwatched;
    runtime::Progress* progress = &unwatched;
};

class ThreeStudents : public PhotosOfAFolder
{
protected:
    ThreeStudents()
    {
        test.addStudent(1, 1, u"甲"_s, u"理"_s);
        test.addStudent(1, 2, u"乙"_s, u"理"_s);
        test.addStudent(2, 1, u"丙"_s, u"理"_s);
        QDir(test.folder.path()).mkdir(u"照片"_s);
    }
};

TEST_F(ThreeStudents, GetThePhotosOfTheirNumbersOrNames)
{
    add(u"1/1.jpg"_s);
    add(u"1/乙.jpg"_s);
    add(u"2/1.JPG"_s);
    EXPECT_TRUE(run());
    EXPECT_EQ(photos(), u"甲|1.jpg|1/1.jpg / 乙|乙.jpg|1/乙.jpg / 丙|1.JPG|2/1.JPG"_s);
    EXPECT_EQ(test.dialogs.shown, (QStringList{u"设置了 3 名学生的照片。"_s, done}));
}

TEST_F(ThreeStudents, TheFileOfTheNumberGoesBeforeThatOfTheName)
{
    add(u"1/1.jpg"_s);
    add(u"1/甲.jpg"_s);
    run();
    EXPECT_EQ(photos(), u"甲|1.jpg|1/1.jpg / 乙|NULL|NULL / 丙|NULL|NULL"_s);
}

TEST_F(ThreeStudents, WithoutAFileKeepWhatTheyHaveAndAMissingClassIsNoError)
{
    add(u"1/2.jpg"_s);
    give(u"丙"_s, u"old.jpg"_s);
    EXPECT_TRUE(run());
    EXPECT_EQ(photos(), u"甲|NULL|NULL / 乙|2.jpg|1/2.jpg / 丙|old.jpg|old"_s);
    EXPECT_EQ(test.dialogs.shown,
              (QStringList{u"设置了 1 名学生的照片。\n没有照片文件：2 名"_s, done}));
}

TEST_F(ThreeStudents, ThoseWhoShareAPhotoAreCounted)
{
    for (const QString& name : {u"乙"_s, u"丁"_s, u"丁"_s})
        test.addStudent(1, 9, name, u"理"_s);
    for (const QString& file : {u"1/1.jpg"_s, u"1/乙.jpg"_s, u"1/丁.jpg"_s, u"2/1.jpg"_s})
        add(file);
    EXPECT_TRUE(run());
    EXPECT_EQ(test.dialogs.shown,
              (QStringList{u"设置了 6 名学生的照片。\n"
                           "与同班同名或同号的学生用了同一张照片，请检查：4 名"_s,
                           done}));
}

TEST_F(ThreeStudents, AnEmptyFolderSetsNothing)
{
    EXPECT_TRUE(run(library::Backup::Make));
    EXPECT_EQ(test.dialogs.shown,
              (QStringList{u"设置了 0 名学生的照片。\n没有照片文件：3 名"_s, done}));
    EXPECT_EQ(copies(), QStringList());
}

TEST_F(ThreeStudents, AFolderThatIsNotThereIsTold)
{
    folder = test.file(u"没有"_s);
    EXPECT_FALSE(run());
    folder.clear();
    EXPECT_FALSE(run());
    EXPECT_EQ(test.dialogs.shown, (QStringList{u"文件夹不存在：\n"_s + test.file(u"没有"_s),
                                               u"请先选择学生照片所在的文件夹。"_s}));
    EXPECT_EQ(test.dialogs.look(u"不存在"_s).icon, runtime::Icon::Warning);
}

TEST_F(ThreeStudents, AFileThatIsNoPictureIsRefusedWithItsNameAndTheRunGoesOn)
{
    add(u"1/1.jpg"_s);
    add(u"1/2.jpg"_s);
    files.refused = {folder + u"1/1.jpg"_s};
    EXPECT_TRUE(run());
    EXPECT_EQ(photos(), u"甲|NULL|NULL / 乙|2.jpg|1/2.jpg / 丙|NULL|NULL"_s);
    EXPECT_EQ(test.dialogs.shown,
              (QStringList{
                  u"照片文件“%1”不是图片，或已损坏。"
                  " - Private Sub Command1_Click/FormSheZhiZhaoPian"_s.arg(folder + u"1/1.jpg"_s),
                  u"设置了 1 名学生的照片。\n没有照片文件：1 名\n照片文件不能用：1 名"_s, done}));
}

class StudentsWithPhotos : public ThreeStudents
{
protected:
    StudentsWithPhotos()
    {
        for (const QString& file : {u"1/1.jpg"_s, u"1/2.jpg"_s, u"2/1.jpg"_s})
            add(file);
        give(u"甲"_s, u"old.jpg"_s);
    }

    const QString question = u"找到 3 名学生的照片，其中 1 名已经有照片。\n"
                             "替换他们原来的照片，还是只补没有照片的 2 名？"_s;
};

TEST_F(StudentsWithPhotos, AreReplacedIfTheUserSaysSo)
{
    test.dialogs.expect(question, u"替换"_s);
    run();
    EXPECT_EQ(photos(), u"甲|1.jpg|1/1.jpg / 乙|2.jpg|1/2.jpg / 丙|1.jpg|2/1.jpg"_s);
    EXPECT_EQ(test.dialogs.safeOf(u"已经有照片"_s), u"只补没有照片的"_s);
}

TEST_F(StudentsWithPhotos, StayAsTheyAreWhereOnlyTheMissingOnesAreWanted)
{
    test.dialogs.expect(question, u"只补没有照片的"_s);
    run();
    EXPECT_EQ(photos(), u"甲|old.jpg|old / 乙|2.jpg|1/2.jpg / 丙|1.jpg|2/1.jpg"_s);
    EXPECT_EQ(test.dialogs.shown.mid(1),
              (QStringList{u"设置了 2 名学生的照片。\n已有照片，没有替换：1 名"_s, done}));
}

TEST_F(StudentsWithPhotos, NothingHappensAfterCancel)
{
    test.dialogs.expect(question, u"取消"_s);
    EXPECT_FALSE(run());
    EXPECT_EQ(photos(), u"甲|old.jpg|old / 乙|NULL|NULL / 丙|NULL|NULL"_s);
    EXPECT_EQ(test.dialogs.shown.size(), 1);
}

class LargePhotos : public ThreeStudents
{
protected:
    LargePhotos()
    {
        for (const QString& file : {u"1/1.jpg"_s, u"1/2.jpg"_s, u"2/1.jpg"_s})
            add(file);
        files.large = {folder + u"1/1.jpg"_s, folder + u"2/1.jpg"_s};
    }

    const QString question = u"2 张照片很大（超过 5 MB 或 2000 像素），成绩库会因此变大。\n"
                             "可以都改存高 600 像素的较小的图片，文件本身不变。"_s;
};

TEST_F(LargePhotos, AreAskedAboutOnceAndGoInSmaller)
{
    test.dialogs.expect(question, u"改存较小的图片"_s);
    run();
    EXPECT_EQ(photos(), u"甲|1.jpg|smaller 1.jpg / 乙|2.jpg|1/2.jpg / 丙|1.jpg|smaller 1.jpg"_s);
    EXPECT_EQ(test.dialogs.questions.size(), 1);
}

TEST_F(LargePhotos, GoInAsTheyAreOtherwise)
{
    test.dialogs.expect(question, u"原样存入"_s);
    run();
    EXPECT_EQ(photos(), u"甲|1.jpg|1/1.jpg / 乙|2.jpg|1/2.jpg / 丙|1.jpg|2/1.jpg"_s);
    EXPECT_EQ(test.dialogs.safeOf(u"很大"_s), u"原样存入"_s);
}

TEST_F(LargePhotos, NothingHappensAfterCancel)
{
    test.dialogs.expect(question, u"取消"_s);
    EXPECT_FALSE(run());
    EXPECT_EQ(photos(), u"甲|NULL|NULL / 乙|NULL|NULL / 丙|NULL|NULL"_s);
}

TEST_F(LargePhotos, ThoseThatAreNotReplacedAreNotAskedAbout)
{
    give(u"甲"_s, u"old.jpg"_s);
    give(u"丙"_s, u"old.jpg"_s);
    test.dialogs.expect(u"已经有照片"_s, u"只补没有照片的"_s);
    run();
    EXPECT_EQ(photos(), u"甲|old.jpg|old / 乙|2.jpg|1/2.jpg / 丙|old.jpg|old"_s);
    EXPECT_EQ(test.dialogs.questions.size(), 1);
}

TEST_F(LargePhotos, OneThatGoesAwayAfterItWasFoundIsToldAndTheOthersAreSet)
{
    files.large.clear();
    files.whenChecked = [this](const QString& path) {
        if (path.endsWith(u"1/2.jpg"_s))
            QFile::remove(path);
    };
    EXPECT_TRUE(run());
    EXPECT_EQ(photos(), u"甲|1.jpg|1/1.jpg / 乙|NULL|NULL / 丙|1.jpg|2/1.jpg"_s);
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures.first().endsWith(u" - Sub SaveBin/Mdl_MDB"_s));
    EXPECT_TRUE(test.dialogs.shown.contains(u"设置了 2 名学生的照片。\n照片文件不能用：1 名"_s));
}

TEST_F(LargePhotos, CancelledTheyLeaveTheLibraryAsItWas)
{
    files.large.clear();
    for (const auto& [part, times] :
         {std::pair(u"查找照片"_s, 1), {u"设置照片"_s, 1}, {u"设置照片"_s, 3}}) {
        CancelledProgress cancelled(part, times);
        progress = &cancelled;
        EXPECT_FALSE(run());
        EXPECT_EQ(photos(), u"甲|NULL|NULL / 乙|NULL|NULL / 丙|NULL|NULL"_s);
    }
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(LargePhotos, TheLibraryIsCopiedAheadOfTheFirstWriteUnlessThatIsSwitchedOff)
{
    files.large.clear();
    run(library::Backup::SwitchedOff);
    EXPECT_EQ(copies(), QStringList());
    test.execute(u"update 信息表 set 照片名=NULL"_s);
    run(library::Backup::Make);
    EXPECT_EQ(copies().size(), 1);
}

TEST_F(LargePhotos, HostileNamesFindNothingAndHarmNothing)
{
    const QString longName(50, u'长');
    for (const QString& name : {u"../1/1"_s, u"it''s"_s, u"--"_s, u"a\nb"_s, longName, u"."_s})
        test.execute(u"update 信息表 set 学号=99, 姓名='%1' where ID=1"_s.arg(name));
    files.large.clear();
    EXPECT_TRUE(run());
    EXPECT_EQ(test.rows(u"select 照片名 from 信息表 where ID=1"_s), u"NULL"_s);
    EXPECT_EQ(test.dialogs.failures, QStringList());
}

TEST_F(LargePhotos, AFileNameWithAnApostropheIsSet)
{
    test.execute(u"update 信息表 set 学号=99, 姓名='O''Neil' where ID=1"_s);
    add(u"1/O'Neil.jpg"_s);
    files.large.clear();
    EXPECT_TRUE(run());
    EXPECT_EQ(test.rows(u"select 照片名 from 信息表 where ID=1"_s), u"O'Neil.jpg"_s);
}

TEST_F(LargePhotos, ATableThatIsGoneIsToldWithTheTag)
{
    test.execute(u"drop table 信息表"_s);
    EXPECT_FALSE(run());
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures.first().endsWith(
        u" - Private Sub Command1_Click/FormSheZhiZhaoPian"_s));
    EXPECT_FALSE(test.dialogs.shown.contains(done));
}

} // namespace

TEST_F(ThreeStudents, ACopyThatDoesNotFitIsToldBeforeTheQuestions)
{
    give(u"甲"_s, u"1.jpg"_s);
    add(u"1/1.jpg"_s);
    support::outgrowDisk(test);
    EXPECT_FALSE(run(library::Backup::Make));
    support::expectOnlyNoRoomTold(test.dialogs.shown);
}

} // namespace maintenance
