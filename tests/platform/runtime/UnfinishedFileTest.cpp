#include "platform/runtime/UnfinishedFile.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "support/ErrorOf.h"
#include "support/FileBytes.h"
#include "support/FullDisk.h"
#include "support/OrdinaryUser.h"
#include "support/PrintQString.h"

namespace runtime {
namespace {

using namespace Qt::StringLiterals;
using support::read;
using support::write;

class UnfinishedFiles : public testing::Test
{
protected:
    QString path(const QString& name) const { return folder.filePath(name); }
    QStringList files() const
    {
        return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    static int rights(const QString& path)
    {
        struct stat info = {};
        EXPECT_EQ(stat(QFile::encodeName(path).constData(), &info), 0);
        return int(info.st_mode & 0777);
    }
    /// Ends a process in the middle of making one; gives the name of what it leaves.
    QString leftOver()
    {
        const pid_t child = fork();
        if (child == 0) {
            UnfinishedFile file(target);
            file.write("half");
            _exit(0);
        }
        waitpid(child, nullptr, 0);
        return files().filter(u".tmp"_s).value(0);
    }

    QTemporaryDir folder;
    const QString target = path(u"库.CJK"_s);
};

TEST_F(UnfinishedFiles, ReplaceTheirTargetAndKeepTheRightsOfTheModel)
{
    write(target, "old");
    ASSERT_EQ(chmod(QFile::encodeName(target).constData(), 0640), 0);
    UnfinishedFile file(target);
    file.write("new");
    EXPECT_EQ(read(target), "old");
    file.replace(target, target);
    EXPECT_EQ(read(target), "new");
    EXPECT_EQ(rights(target), 0640);
    EXPECT_EQ(files(), QStringList{u"库.CJK"_s});
}

TEST_F(UnfinishedFiles, AreGoneUnlessTheyWerePutInPlace)
{
    {
        UnfinishedFile file(target);
        file.write("half");
    }
    EXPECT_EQ(files(), QStringList());
}

TEST_F(UnfinishedFiles, OfTwoAtOnceEachHasANameOfItsOwn)
{
    UnfinishedFile first(target);
    UnfinishedFile second(target);
    first.write("first");
    second.write("second");
    EXPECT_TRUE(first.takeName(target, target));
    EXPECT_FALSE(second.takeName(target, target)) << "the name is taken";
    EXPECT_EQ(read(target), "first");
    EXPECT_TRUE(second.takeName(path(u"其他"_s), target));
    EXPECT_EQ(read(path(u"其他"_s)), "second");
}

TEST_F(UnfinishedFiles, AShortWriteIsNoSuccess)
{
    UnfinishedFile file(target);
    const support::FullDisk disk(1000);
    EXPECT_EQ(support::errorOf([&] { file.write(QByteArray(1500, 'x')); }),
              u"无法写入文件 %1（磁盘已满，或文件的大小受到限制）。"_s.arg(target));
}

TEST_F(UnfinishedFiles, WhatCannotBeReplacedStays)
{
    const QString taken = path(u"夹"_s);
    const QString readOnly = path(u"只读"_s);
    ASSERT_TRUE(QDir().mkpath(taken));
    write(readOnly, "old");
    ASSERT_EQ(chmod(QFile::encodeName(readOnly).constData(), 0444), 0);
    ASSERT_EQ(chmod(QFile::encodeName(folder.path()).constData(), 0777), 0);
    const support::OrdinaryUser user;
    const std::pair<QString, QString> cases[] = {{taken, u"它是文件夹"_s},
                                                 {readOnly, u"没有权限"_s}};
    for (const auto& [name, why] : cases) {
        UnfinishedFile file(name);
        EXPECT_EQ(support::errorOf([&] { file.replace(name, name); }),
                  u"无法写入文件 %1（%2）。"_s.arg(name, why));
    }
    EXPECT_EQ(read(readOnly), "old");
    EXPECT_EQ(files(), QStringList{u"只读"_s});
}

TEST_F(UnfinishedFiles, AFolderThatIsNotThereIsTold)
{
    const QString away = path(u"没有/库.CJK"_s);
    EXPECT_EQ(support::errorOf([&] { UnfinishedFile file(away); }),
              u"无法写入文件 %1（文件夹不存在）。"_s.arg(away));
}

TEST_F(UnfinishedFiles, OfAProcessThatIsGoneAreRemovedAndThoseOfALivingOneStay)
{
    const QString name = leftOver();
    ASSERT_FALSE(name.isEmpty());
    write(path(name + u"-journal"_s), "half");
    write(path(u".yunshan-notes.tmp"_s), "the user's own");
    UnfinishedFile living(target);
    EXPECT_EQ(leftOvers(target), (QStringList{path(name), path(name + u"-journal"_s)}));
    removeLeftOvers(target);
    EXPECT_EQ(leftOvers(target), QStringList());
    EXPECT_EQ(files(), (QStringList{QFileInfo(living.path()).fileName(), u".yunshan-notes.tmp"_s}));
}

TEST_F(UnfinishedFiles, OfAnotherMachineGoAfterADay)
{
    const QString foreign = path(u".yunshan-00000000-1-12345678.tmp"_s);
    write(foreign, "half");
    removeLeftOvers(target);
    EXPECT_TRUE(QFile::exists(foreign));
    QFile file(foreign);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addDays(-2),
                                 QFileDevice::FileModificationTime));
    file.close();
    removeLeftOvers(target);
    EXPECT_EQ(files(), QStringList());
}

} // namespace
} // namespace runtime
