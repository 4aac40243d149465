#include "platform/runtime/AppPaths.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "support/ErrorOf.h"
#include "support/PrintQString.h"

namespace runtime {
namespace {

using namespace Qt::StringLiterals;

void write(const QString& name, const QByteArray& bytes)
{
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

QByteArray read(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
}

class AppFolders : public testing::Test
{
protected:
    AppFolders()
    {
        qputenv("XDG_DATA_HOME", folder.filePath(u"home"_s).toUtf8());
        QDir(folder.path()).mkpath(u"bin"_s);
    }
    ~AppFolders() override
    {
        if (m_hadHome)
            qputenv("XDG_DATA_HOME", m_home);
        else
            qunsetenv("XDG_DATA_HOME");
    }

    /// Data as an installed program finds it: share/yunshan beside bin.
    void ship()
    {
        QDir(folder.path()).mkpath(u"share/yunshan/data"_s);
        write(folder.filePath(u"share/yunshan/data/科目.txt"_s), "语文\n");
        write(folder.filePath(u"share/yunshan/data/满分.txt"_s), "语文=150\n");
    }

    QTemporaryDir folder;
    const bool m_hadHome = qEnvironmentVariableIsSet("XDG_DATA_HOME");
    const QByteArray m_home = qgetenv("XDG_DATA_HOME");
};

TEST_F(AppFolders, AProgramWithItsOwnDataFolderWritesThere)
{
    QDir(folder.path()).mkpath(u"bin/data"_s);
    const AppPaths paths = AppPaths::locate(folder.filePath(u"bin"_s));
    EXPECT_EQ(paths.AppPath(), folder.filePath(u"bin/"_s));
    EXPECT_EQ(paths.dataFile(u"满分.txt"_s), folder.filePath(u"bin/data/满分.txt"_s));
    EXPECT_EQ(paths.templateFile(), folder.filePath(u"bin/MFC.dll"_s));
}

TEST_F(AppFolders, AnInstalledProgramWritesToTheFolderOfTheUserFilledWithTheDefaults)
{
    ship();
    const AppPaths paths = AppPaths::locate(folder.filePath(u"bin"_s));
    EXPECT_EQ(paths.AppPath(), folder.filePath(u"home/yunshan/"_s));
    EXPECT_EQ(read(paths.dataFile(u"科目.txt"_s)), "语文\n");
    EXPECT_EQ(paths.templateFile(), folder.filePath(u"share/yunshan/MFC.dll"_s));
}

TEST_F(AppFolders, WhatTheUserChangedIsNotOverwritten)
{
    ship();
    const AppPaths first = AppPaths::locate(folder.filePath(u"bin"_s));
    write(first.dataFile(u"满分.txt"_s), "语文=120\n");
    const AppPaths second = AppPaths::locate(folder.filePath(u"bin"_s));
    EXPECT_EQ(read(second.dataFile(u"满分.txt"_s)), "语文=120\n");
}

TEST_F(AppFolders, ADefaultThatIsShippedReadOnlyCanBeWrittenByTheUser)
{
    ship();
    QFile::setPermissions(folder.filePath(u"share/yunshan/data/满分.txt"_s), QFile::ReadOwner);
    const AppPaths paths = AppPaths::locate(folder.filePath(u"bin"_s));
    EXPECT_TRUE(QFile::permissions(paths.dataFile(u"满分.txt"_s)) & QFile::WriteOwner);
}

TEST_F(AppFolders, AFileThatTheUserMadeReadOnlyStaysSo)
{
    ship();
    const QString mine = AppPaths::locate(folder.filePath(u"bin"_s)).dataFile(u"满分.txt"_s);
    QFile::setPermissions(mine, QFile::ReadOwner);
    AppPaths::locate(folder.filePath(u"bin"_s));
    EXPECT_FALSE(QFile::permissions(mine) & QFile::WriteOwner);
}

TEST_F(AppFolders, AProgramWithItsOwnDataFolderPassesOverAnInstalledOneBesideIt)
{
    ship();
    QDir(folder.path()).mkpath(u"bin/data"_s);
    const AppPaths paths = AppPaths::locate(folder.filePath(u"bin"_s));
    EXPECT_EQ(paths.AppPath(), folder.filePath(u"bin/"_s));
    EXPECT_EQ(paths.templateFile(), folder.filePath(u"bin/MFC.dll"_s));
}

TEST_F(AppFolders, AnInstalledProgramTouchesNothingOfWhatIsInstalled)
{
    ship();
    AppPaths::locate(folder.filePath(u"bin"_s));
    EXPECT_TRUE(QDir(folder.filePath(u"bin"_s)).isEmpty());
    EXPECT_EQ(QDir(folder.filePath(u"share/yunshan"_s))
                  .entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{u"data"_s});
    EXPECT_EQ(read(folder.filePath(u"share/yunshan/data/满分.txt"_s)), "语文=150\n");
}

TEST_F(AppFolders, ADefaultThatAnUpdateBringsIsAdded)
{
    ship();
    AppPaths::locate(folder.filePath(u"bin"_s));
    write(folder.filePath(u"share/yunshan/data/新.txt"_s), "新\n");
    const AppPaths paths = AppPaths::locate(folder.filePath(u"bin"_s));
    EXPECT_EQ(read(paths.dataFile(u"新.txt"_s)), "新\n");
}

TEST_F(AppFolders, TheInstalledHelpIsFoundUnderAppPathAsItIsAfterEachUpdate)
{
    ship();
    write(folder.filePath(u"share/yunshan/帮助.doc"_s), "old");
    EXPECT_EQ(read(AppPaths::locate(folder.filePath(u"bin"_s)).AppPath() + u"帮助.doc"_s), "old");
    write(folder.filePath(u"share/yunshan/帮助.doc"_s), "new");
    EXPECT_EQ(read(AppPaths::locate(folder.filePath(u"bin"_s)).AppPath() + u"帮助.doc"_s), "new");
}

TEST_F(AppFolders, TheHelpIsFoundAgainAfterTheProgramWasInstalledElsewhere)
{
    ship();
    write(folder.filePath(u"share/yunshan/帮助.doc"_s), "help");
    AppPaths::locate(folder.filePath(u"bin"_s));
    QDir(folder.path()).mkpath(u"opt"_s);
    ASSERT_TRUE(QDir().rename(folder.filePath(u"bin"_s), folder.filePath(u"opt/bin"_s)));
    ASSERT_TRUE(QDir().rename(folder.filePath(u"share"_s), folder.filePath(u"opt/share"_s)));
    EXPECT_EQ(read(AppPaths::locate(folder.filePath(u"opt/bin"_s)).AppPath() + u"帮助.doc"_s),
              "help");
}

TEST_F(AppFolders, AHelpThatTheUserPutThereStays)
{
    ship();
    write(folder.filePath(u"share/yunshan/帮助.doc"_s), "help");
    QDir(folder.path()).mkpath(u"home/yunshan"_s);
    write(folder.filePath(u"home/yunshan/帮助.doc"_s), "own");
    EXPECT_EQ(read(AppPaths::locate(folder.filePath(u"bin"_s)).AppPath() + u"帮助.doc"_s), "own");
}

TEST_F(AppFolders, AUserWithoutADataFolderIsToldWhichOne)
{
    ship();
    write(folder.filePath(u"home"_s), "a file where the folder should be");
    EXPECT_EQ(support::errorOf([&] { AppPaths::locate(folder.filePath(u"bin"_s)); }),
              u"无法建立数据文件夹 "_s + folder.filePath(u"home/yunshan/data"_s));
}

TEST(AppPaths, AFolderGivenWithOrWithoutASlashEndsInOne)
{
    EXPECT_EQ(AppPaths(u"/a/b"_s).AppPath(), u"/a/b/"_s);
    EXPECT_EQ(AppPaths(u"/a/b/"_s).dataFile(u"x"_s), u"/a/b/data/x"_s);
}

} // namespace
} // namespace runtime
