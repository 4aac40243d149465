#include "maintenance/PhotoFolder.h"

#include <sys/stat.h>

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "support/ErrorOf.h"
#include "support/FileBytes.h"
#include "support/OrdinaryUser.h"
#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;
using maintenance::PhotoFolder;

class APhotoFolder : public testing::Test
{
protected:
    void add(const QString& path)
    {
        ASSERT_TRUE(QDir(folder.path()).mkpath(QFileInfo(path).path()));
        support::write(folder.filePath(path), "photo");
    }

    /// What is found, relative to the folder.
    QString found(const QString& classNumber, const QString& name)
    {
        const QString file = PhotoFolder(folder.path()).find(classNumber, name);
        return file.isEmpty() ? file : QDir(folder.path()).relativeFilePath(file);
    }

    QTemporaryDir folder;
};

TEST_F(APhotoFolder, HasAFolderForEachClass)
{
    add(u"3/7.jpg"_s);
    add(u"12/王芳.jpg"_s);
    EXPECT_EQ(found(u"3"_s, u"7"_s), u"3/7.jpg"_s);
    EXPECT_EQ(found(u"12"_s, u"王芳"_s), u"12/王芳.jpg"_s);
    EXPECT_EQ(found(u"12"_s, u"7"_s), QString());
    EXPECT_EQ(found(u"4"_s, u"7"_s), QString());
}

TEST_F(APhotoFolder, OnlyJpgIsLookedAtWhateverItsCase)
{
    for (const QString& name :
         {u"a.JPG"_s, u"b.Jpg"_s, u"c.png"_s, u"d.jpeg"_s, u"e.jpg.txt"_s, u"jpg"_s, u"f"_s})
        add(u"1/"_s + name);
    EXPECT_EQ(found(u"1"_s, u"a"_s), u"1/a.JPG"_s);
    EXPECT_EQ(found(u"1"_s, u"b"_s), u"1/b.Jpg"_s);
    for (const QString& name : {u"c"_s, u"d"_s, u"e"_s, u"f"_s, u"e.jpg"_s, u"A"_s, QString()})
        EXPECT_EQ(found(u"1"_s, name), QString()) << name.toStdString();
}

TEST_F(APhotoFolder, OfTwoEndingsTheSmallOneIsTaken)
{
    for (const QString& name : {u"1.JPG"_s, u"1.jpg"_s, u"1.Jpg"_s})
        add(u"1/"_s + name);
    EXPECT_EQ(found(u"1"_s, u"1"_s), u"1/1.jpg"_s);
}

TEST_F(APhotoFolder, NoNameLeadsOutOfIt)
{
    add(u"photos/1/1.jpg"_s);
    add(u"photos/1/deep/2.jpg"_s);
    add(u"secret.jpg"_s);
    add(u"photos/direct.jpg"_s);
    PhotoFolder photos(folder.filePath(u"photos"_s));
    const QString secret = folder.filePath(u"secret"_s);
    for (const auto& [classNumber, name] : {std::pair(u"1"_s, u"../../secret"_s),
                                            {u"1"_s, secret},
                                            {u".."_s, u"secret"_s},
                                            {u"."_s, u"direct"_s},
                                            {QString(), u"direct"_s},
                                            {u"1/deep"_s, u"2"_s},
                                            {u"1"_s, u"deep/2"_s},
                                            {u"1/.."_s, u"direct"_s},
                                            {u"1"_s, u"..\\..\\secret"_s}})
        EXPECT_EQ(photos.find(classNumber, name), QString()) << name.toStdString();
}

TEST_F(APhotoFolder, NeitherFoldersNorHiddenFilesArePhotos)
{
    ASSERT_TRUE(QDir(folder.path()).mkpath(u"1/1.jpg"_s));
    add(u"1/.jpg"_s);
    EXPECT_EQ(found(u"1"_s, u"1"_s), QString());
    EXPECT_EQ(found(u"1"_s, QString()), QString());
}

TEST_F(APhotoFolder, ItsPathMayEndInEitherSlash)
{
    add(u"照片/1/1.jpg"_s);
    const QString path = folder.filePath(u"照片"_s);
    for (const QString& given :
         QStringList{path, path + u'/', path + u'\\', path + u"\\/"_s, folder.path() + u"\\照片"_s,
                     folder.path() + u"\\照片\\"_s}) {
        PhotoFolder photos(given);
        EXPECT_TRUE(photos.exists()) << given.toStdString();
        EXPECT_EQ(photos.find(u"1"_s, u"1"_s), path + u"/1/1.jpg"_s) << given.toStdString();
    }
}

TEST_F(APhotoFolder, OneThatIsNotThereHasNone)
{
    for (const QString& path : {QString(), folder.filePath(u"没有"_s)}) {
        PhotoFolder photos(path);
        EXPECT_FALSE(photos.exists());
        EXPECT_EQ(photos.find(u"1"_s, u"1"_s), QString());
    }
}

TEST_F(APhotoFolder, OneThatCannotBeListedIsAnError)
{
    add(u"1/1.jpg"_s);
    const QString shut = folder.filePath(u"1"_s);
    for (const auto& [path, mode] : {std::pair(folder.path(), 0755U), {shut, 0300U}})
        ASSERT_EQ(chmod(QFile::encodeName(path).constData(), mode), 0);
    {
        const support::OrdinaryUser ordinary;
        EXPECT_EQ(support::errorOf([&] { found(u"1"_s, u"1"_s); }),
                  u"无法读取文件夹“%1”（没有权限）。"_s.arg(shut));
    }
    EXPECT_EQ(chmod(QFile::encodeName(shut).constData(), 0700), 0);
}

} // namespace
