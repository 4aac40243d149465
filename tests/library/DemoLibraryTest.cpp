#include "library/DemoLibrary.h"

#include <utility>

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "support/ErrorOf.h"
#include "support/FileBytes.h"
#include "support/PrintQString.h"
#include "support/ScriptedDialogs.h"

namespace {

using namespace Qt::StringLiterals;
using library::ownDemoLibrary;
using library::shippedDemoLibrary;
using support::read;
using support::write;

class DemoLibrary : public testing::Test
{
protected:
    QTemporaryDir folder;
    const runtime::AppPaths paths{folder.path()};
    const QString documents = folder.filePath(u"文档"_s);
    const QString own = documents + u"/云杉学业册/示范成绩库.CJK"_s;
    const QString second = documents + u"/云杉学业册/示范成绩库 2.CJK"_s;
    const QByteArray shipped = libraryOf("shipped");
    support::ScriptedDialogs dialogs;

    /// A file that begins as a library does.
    static QByteArray libraryOf(const QByteArray& content)
    {
        return QByteArray("SQLite format 3").leftJustified(100, '\0') + content;
    }

    /// The shipped one, cut behind its first page, as its header tells.
    QByteArray cut() const
    {
        QByteArray bytes = shipped;
        bytes[16] = '\2'; // pages of 512 bytes
        bytes[31] = '\2'; // and two of them
        return bytes;
    }
};

TEST_F(DemoLibrary, IsCopiedToTheDocumentsAtTheFirstTime)
{
    write(shippedDemoLibrary(paths), shipped);
    ASSERT_TRUE(QFile::setPermissions(shippedDemoLibrary(paths), QFile::ReadOwner));
    EXPECT_EQ(ownDemoLibrary(paths, documents), own);
    EXPECT_EQ(read(own), shipped);
    EXPECT_EQ(dialogs.shown, QStringList());
    EXPECT_TRUE(QFile::permissions(own) & QFile::WriteOwner)
        << "what is shipped is write-protected";
}

TEST_F(DemoLibrary, TheCopyOfTheUserIsNeverReplaced)
{
    write(shippedDemoLibrary(paths), shipped);
    ownDemoLibrary(paths, documents);
    write(own, libraryOf("changed"));
    EXPECT_EQ(ownDemoLibrary(paths, documents), own);
    EXPECT_EQ(read(own), libraryOf("changed"));
}

TEST_F(DemoLibrary, BesideACopyThatIsNoLibraryAFurtherOneIsMade)
{
    write(shippedDemoLibrary(paths), shipped);
    ownDemoLibrary(paths, documents);
    for (const auto& [bytes, fault] :
         {std::pair{QByteArray(), u" 是空文件，不是成绩库。"_s},
          std::pair{QByteArray("a letter"), u" 不是成绩库。"_s},
          std::pair{cut(), u" 不完整（后面一部分丢失了），无法打开。"_s}}) {
        QFile::remove(second);
        dialogs.shown.clear();
        write(own, bytes);
        EXPECT_EQ(ownDemoLibrary(paths, documents), second);
        EXPECT_EQ(read(second), shipped);
        EXPECT_EQ(read(own), bytes) << "what stands there stays";
        EXPECT_EQ(dialogs.shown, QStringList{own + fault + u"\n另建了一份示范成绩库："_s + second});
        write(second, libraryOf("changed"));
        EXPECT_EQ(ownDemoLibrary(paths, documents), second);
        EXPECT_EQ(read(second), libraryOf("changed"));
        EXPECT_EQ(dialogs.shown.size(), 1) << "told once";
    }
}

TEST_F(DemoLibrary, FoldersOfItsNameArePassedOver)
{
    write(shippedDemoLibrary(paths), shipped);
    ASSERT_TRUE(QDir().mkpath(own));
    ASSERT_TRUE(QDir().mkpath(second));
    const QString third = documents + u"/云杉学业册/示范成绩库 3.CJK"_s;
    EXPECT_EQ(ownDemoLibrary(paths, documents), third);
    EXPECT_EQ(
        dialogs.shown,
        QStringList{second + u" 不是文件，不能作为成绩库打开。\n另建了一份示范成绩库："_s + third});
}

TEST_F(DemoLibrary, AShippedOneThatIsDamagedIsNotCopied)
{
    write(shippedDemoLibrary(paths), cut());
    EXPECT_EQ(support::errorOf([&] { ownDemoLibrary(paths, documents); }),
              shippedDemoLibrary(paths) + u" 不完整（后面一部分丢失了），无法打开。"_s);
    EXPECT_FALSE(QFile::exists(documents));
}

TEST_F(DemoLibrary, OneThatIsNotShippedIsTold)
{
    EXPECT_EQ(support::errorOf([&] { ownDemoLibrary(paths, documents); }),
              u"找不到随程序提供的示范成绩库 "_s + shippedDemoLibrary(paths)
                  + u"，请重新安装程序。"_s);
    EXPECT_FALSE(QFile::exists(documents));
}

TEST_F(DemoLibrary, AFolderThatCannotBeMadeIsTold)
{
    write(shippedDemoLibrary(paths), shipped);
    write(documents, "a file");
    EXPECT_EQ(support::errorOf([&] { ownDemoLibrary(paths, documents); }),
              u"无法建立文件夹 "_s + documents + u"/云杉学业册"_s);
}

} // namespace
