#include "platform/runtime/AppPaths.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

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

TEST(AppPaths, AFolderGivenWithOrWithoutASlashEndsInOne)
{
    EXPECT_EQ(AppPaths(u"/a/b"_s).AppPath(), u"/a/b/"_s);
    EXPECT_EQ(AppPaths(u"/a/b/"_s).dataFile(u"x"_s), u"/a/b/data/x"_s);
}

} // namespace
} // namespace runtime
