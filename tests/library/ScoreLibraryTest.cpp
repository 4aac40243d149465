#include "library/ScoreLibrary.h"

#include <QFile>

#include <gtest/gtest.h>

#include "support/FreeFile.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using library::ScoreLibrary;
using support::TestLibrary;

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class OpeningALibrary : public testing::Test
{
protected:
    OpeningALibrary()
    {
        QObject::connect(&test.scores, &ScoreLibrary::opened, [this] { ++opened; });
    }

    void open(const QString& path)
    {
        test.scores.LibPath = path;
        test.scores.OpenDB();
    }

    TestLibrary test{{u"语文"_s}};
    int opened = 0;
};

TEST_F(OpeningALibrary, TellsItsListenersAndKnowsItsFolder)
{
    open(test.file(u"测试.CJK"_s));
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(test.scores.LibFolder, test.folder.path());
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(OpeningALibrary, AMessageAboutItKeepsNobodyFromTheFile)
{
    test.addStudent(1, 1, u"甲"_s, u""_s);
    const QString path = test.scores.Conn.path();
    QList<bool> wasFree;
    const runtime::BeforeDialogs beforeBox([&] { wasFree.append(support::isFree(path)); });
    open(path);
    EXPECT_EQ(wasFree, QList<bool>{true});
}

TEST_F(OpeningALibrary, OneWhosePagesCannotBeReadIsToldAndNotOpen)
{
    test.addStudent(1, 1, u"甲"_s, u"理"_s);
    const QString path = test.scores.Conn.path();
    test.scores.Conn.Close();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    // The table of students begins somewhere behind the first page, which tells of the tables.
    constexpr qint64 pageSize = 8192;
    ASSERT_TRUE(file.seek(pageSize));
    file.write(QByteArray(int(file.size() - pageSize), '\x5a'));
    file.close();
    open(path);
    EXPECT_EQ(test.dialogs.failures,
              QStringList{u"成绩库文件已经损坏。（database disk image is malformed）"
                          " - Public Sub OpenDB/Mdl_MDB"_s});
    EXPECT_FALSE(test.scores.Conn.isOpen());
    EXPECT_EQ(opened, 0);
}

TEST_F(OpeningALibrary, AMissingFileClearsThePathAndTheOldOneStaysOpen)
{
    const QString missing = test.file(u"没有.CJK"_s);
    open(missing);
    EXPECT_EQ(test.dialogs.shown, QStringList{missing + u"\n库文件不存在！"_s});
    EXPECT_EQ(test.scores.LibPath, u""_s);
    EXPECT_EQ(opened, 0);
    EXPECT_EQ(test.scores.Conn.path(), test.file(u"测试.CJK"_s));
    EXPECT_EQ(test.rows(u"select count(*) from 设置表"_s), u"21"_s);
}

TEST_F(OpeningALibrary, AFileThatIsNoneIsToldOnceAndStaysAsItWas)
{
    const QString path = test.file(u"假.CJK"_s);
    writeFile(path, "hello");
    open(path);
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures.first().contains(u"不是成绩库"_s));
    EXPECT_TRUE(test.dialogs.failures.first().endsWith(u" - Public Sub OpenDB/Mdl_MDB"_s));
    EXPECT_EQ(test.scores.LibPath, path) << "what was asked for";
    EXPECT_EQ(test.scores.Conn.path(), test.file(u"测试.CJK"_s));
    EXPECT_EQ(readFile(path), "hello");
}

TEST_F(OpeningALibrary, ANameThatIsNoUtf8IsToldAsSuch)
{
    const QString missing = test.file(u"\uFFFD\uFFFD.CJK"_s);
    open(missing);
    EXPECT_EQ(test.dialogs.shown,
              (QStringList{missing + u"\n名称里有不是 UTF-8 编码的字，请先给文件改名。"_s,
                           missing + u"\n库文件不存在！"_s}));
}

TEST_F(OpeningALibrary, OneMadeBeforeWithTheColumnsInAnotherOrderIsReadAsItIs)
{
    test.addStudent(1, 7, u"甲"_s, u"理"_s);
    test.execute(u"alter table 成绩表 rename to 旧表"_s);
    test.execute(u"create table 成绩表(id Long INTEGER, 班级 Double REAL, 学号 Double REAL, "
                 "姓名 text(50), 类别代码 Double REAL, 科类 text(50), 考试名称 text(50), "
                 "考试编号 Integer INTEGER, 语文 Single REAL, 语文年名 Long INTEGER)"_s);
    test.execute(u"drop table 旧表"_s);
    open(test.file(u"测试.CJK"_s));
    test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 150}});
    test.addScores(u"期中"_s, 1, 7, {{u"语文"_s, 90}});
    EXPECT_EQ(test.rows(u"select 学号, 姓名, 语文 from 成绩表"_s), u"7|甲|90"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(OpeningALibrary, APathWithoutAFolderOpensNothing)
{
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(test.folder.path()));
    test.scores.LibFolder = u"unchanged"_s;
    open(u"测试.CJK"_s);
    QDir::setCurrent(before);
    EXPECT_EQ(opened, 0);
    EXPECT_EQ(test.scores.LibFolder, u"unchanged"_s);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST(FileNames, AreCutToTheirLastFiftyCharacters)
{
    EXPECT_EQ(ScoreLibrary::GetName(u"/a/b/照片.jpg"_s), u"照片.jpg"_s);
    EXPECT_EQ(ScoreLibrary::GetName(u"C:\\a\\照片.jpg"_s), u"照片.jpg"_s);
    EXPECT_EQ(ScoreLibrary::GetName(u"照片.jpg"_s), u"照片.jpg"_s);
    const QString sixty = QString(56, u'x') + u".jpg"_s;
    EXPECT_EQ(ScoreLibrary::GetName(u"/a/"_s + sixty), sixty.right(50));
}

class Pictures : public testing::Test
{
protected:
    qint64 student(const QString& pictureName, const QByteArray& bytes)
    {
        const qint64 id = test.addStudent(1, 1, u"甲"_s, u"理"_s);
        database::Recordset rows;
        rows.Open(u"select * from 信息表 where ID=%1"_s.arg(id), test.scores.Conn);
        rows.Fields(u"照片名"_s).setValue(pictureName);
        if (!bytes.isEmpty()) {
            writeFile(test.file(u"in.jpg"_s), bytes);
            test.scores.SaveBin(test.file(u"in.jpg"_s), rows.Fields(u"照片"_s));
        }
        rows.Update();
        return id;
    }

    TestLibrary test{{u"语文"_s}};
    QString scratch = test.paths.dataFile(u"tmp.tmp"_s);
};

TEST_F(Pictures, ComeOutAsTheyWentIn)
{
    const QByteArray bytes("\x00\xff picture", 10);
    EXPECT_EQ(test.scores.GetPic(student(u"甲.jpg"_s, bytes)), scratch);
    EXPECT_EQ(readFile(scratch), bytes);
}

TEST_F(Pictures, ANameWithoutAPictureLeavesTheLastOneInTheScratchFile)
{
    writeFile(scratch, "last");
    EXPECT_EQ(test.scores.GetPic(student(u"甲.jpg"_s, {})), scratch);
    EXPECT_EQ(readFile(scratch), "last");
}

TEST_F(Pictures, ANameWithoutAPictureMakesNoScratchFile)
{
    EXPECT_EQ(test.scores.GetPic(student(u"甲.jpg"_s, {})), scratch);
    EXPECT_FALSE(QFile::exists(scratch));
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(Pictures, OfAStudentWhoIsGoneCostsAMessage)
{
    EXPECT_EQ(test.scores.GetPic(99), u""_s);
    EXPECT_EQ(test.dialogs.failures, QStringList{u"没有当前记录。 - Function GetPic/Mdl_MDB"_s});
}

TEST_F(Pictures, WithoutANameThereIsNone)
{
    EXPECT_EQ(test.scores.GetPic(student(u"  "_s, "bytes")), u""_s);
    EXPECT_FALSE(QFile::exists(scratch));
}

TEST_F(Pictures, AreWholeOnTheDiskWhenTheirNameIsGiven)
{
    const QByteArray large(300'000, 'x');
    for (const QByteArray& bytes : {large, QByteArray("a smaller one")}) {
        const qint64 id = student(u"甲.jpg"_s, bytes);
        EXPECT_EQ(readFile(test.scores.GetPic(id)), bytes);
    }
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(Pictures, AFullDiskIsToldWithItsTag)
{
    for (const qsizetype size : {10, 300'000}) {
        const qint64 id = student(u"甲.jpg"_s, QByteArray(size, 'x'));
        database::Recordset rows;
        rows.Open(u"select * from 信息表 where ID=%1"_s.arg(id), test.scores.Conn);
        test.dialogs.failures.clear();
        test.scores.GetBin(rows.Fields(u"照片"_s), u"/dev/full"_s);
        ASSERT_EQ(test.dialogs.failures.size(), 1) << size;
        EXPECT_TRUE(test.dialogs.failures.first().startsWith(u"无法写入文件 /dev/full（"_s));
        EXPECT_TRUE(test.dialogs.failures.first().endsWith(u" - Sub GetBin/Mdl_MDB"_s));
    }
}

TEST_F(Pictures, AMissingFileIsToldWithItsTag)
{
    database::Recordset rows;
    rows.Open(u"select * from 信息表"_s, test.scores.Conn);
    rows.AddNew();
    EXPECT_FALSE(test.scores.SaveBin(test.file(u"没有.jpg"_s), rows.Fields(u"照片"_s)));
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures.first().endsWith(u" - Sub SaveBin/Mdl_MDB"_s));
}

TEST_F(Pictures, AFileThatCannotBeReadLeavesThePictureAsItWas)
{
    const qint64 id = student(u"甲.jpg"_s, "old");
    database::Recordset rows;
    rows.Open(u"select * from 信息表 where ID=?"_s, {id}, test.scores.Conn);
    // Opens, and fails at the first read.
    EXPECT_FALSE(test.scores.SaveBin(u"/proc/self/mem"_s, rows.Fields(u"照片"_s)));
    EXPECT_TRUE(test.dialogs.failures.first().startsWith(u"无法读取文件 /proc/self/mem（"_s));
    rows.Update();
    EXPECT_EQ(readFile(test.scores.GetPic(id)), "old");
}

TEST_F(Pictures, AFileThatALibraryHasNoRoomForIsRefused)
{
    QFile file(test.file(u"film.jpg"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.resize(200'000'000));
    database::Recordset rows;
    rows.Open(u"select * from 信息表"_s, test.scores.Conn);
    rows.AddNew();
    EXPECT_FALSE(test.scores.SaveBin(file.fileName(), rows.Fields(u"照片"_s)));
    EXPECT_EQ(
        test.dialogs.failures,
        QStringList{u"文件 %1 太大，成绩库放不下。 - Sub SaveBin/Mdl_MDB"_s.arg(file.fileName())});
}

TEST_F(Pictures, OfNoBytesIsEmpty)
{
    const qint64 id = student(u"甲.jpg"_s, "old");
    writeFile(test.file(u"empty.jpg"_s), "");
    database::Recordset rows;
    rows.Open(u"select * from 信息表 where ID=?"_s, {id}, test.scores.Conn);
    EXPECT_TRUE(test.scores.SaveBin(test.file(u"empty.jpg"_s), rows.Fields(u"照片"_s)));
    rows.Update();
    EXPECT_EQ(rows.Fields(u"照片"_s).ActualSize(), 0);
}

} // namespace
