#include "platform/runtime/Text.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/TextFile.h"

#include <sys/stat.h>

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "platform/runtime/Error.h"
#include "support/ErrorOf.h"
#include "support/FullDisk.h"
#include "support/OrdinaryUser.h"
#include "support/PrintQString.h"
#include "support/ScriptedDialogs.h"

namespace runtime {
namespace {

using namespace Qt::StringLiterals;

class TextFile : public testing::Test
{
protected:
    QString write(const QByteArray& bytes)
    {
        const QString name = folder.filePath(u"科目.txt"_s);
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return name;
    }

    QStringList read(const QByteArray& bytes)
    {
        QStringList list{u"before"_s};
        ReadTxtSet(write(bytes), list);
        return list;
    }

    QTemporaryDir folder;
    support::ScriptedDialogs dialogs;
};

TEST(Trim, TakesBlanksOffBothEndsAndNothingElse)
{
    EXPECT_EQ(Trim(u"  a b  "_s), u"a b"_s);
    EXPECT_EQ(Trim(u"\ta　"_s), u"\ta　"_s);
    EXPECT_EQ(Trim(u"   "_s), QString());
    EXPECT_EQ(Trim(QString()), QString());
}

TEST(DelLast, GivesTheTextWithoutItsLastCharacters)
{
    EXPECT_EQ(DelLast(u"abc"_s, 1), u"ab"_s);
    EXPECT_EQ(DelLast(u"语文年名"_s, 2), u"语文"_s);
    EXPECT_EQ(DelLast(u"abc"_s, 3), QString());
    EXPECT_EQ(DelLast(u"abc"_s, 0), u"abc"_s);
}

TEST(DelLast, OfATextThatIsTooShortGivesNothingAfterAMessage)
{
    const support::ScriptedDialogs dialogs;
    EXPECT_EQ(DelLast(u"ab"_s, 3), QString());
    EXPECT_EQ(DelLast(QString(), 1), QString());
    const QString message = u"要去掉的字符比文本还长。 - Function DelLast/MdlSYS"_s;
    EXPECT_EQ(dialogs.failures, (QStringList{message, message}));
}

TEST(Right, GivesTheWholeTextIfItIsShorter)
{
    EXPECT_EQ(Right(u"语文总分"_s, 2), u"总分"_s);
    EXPECT_EQ(Right(u"分"_s, 2), u"分"_s);
}

TEST_F(TextFile, LinesComeInFileOrderWithoutTheEmptyOnes)
{
    EXPECT_EQ(read("语文\r\n\r\n数学\r\n"), QStringList({u"语文"_s, u"数学"_s}));
    EXPECT_EQ(read("语文\n\n\n数学"), QStringList({u"语文"_s, u"数学"_s}));
    EXPECT_EQ(read(" a \n \n"), QStringList({u" a "_s, u" "_s}));
    EXPECT_EQ(read(""), QStringList());
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(TextFile, AMarkAtTheBeginningIsNoPartOfTheFirstLine)
{
    EXPECT_EQ(read("\xEF\xBB\xBF语文\r\n数学"), QStringList({u"语文"_s, u"数学"_s}));
}

TEST_F(TextFile, BytesThatAreNoUtf8AreReadAsGb18030)
{
    EXPECT_EQ(read("\xD3\xEF\xCE\xC4\r\n\xCA\xFD\xD1\xA7\r\n"),
              QStringList({u"语文"_s, u"数学"_s}));
}

TEST_F(TextFile, ACharacterCutOffAtTheEndIsNoUtf8Either)
{
    // Two characters of GB18030, of which the first three bytes would be one of UTF-8.
    EXPECT_EQ(decodeText("\xE4\xB8\xB0\xC2"), u"涓奥"_s);
}

TEST_F(TextFile, ABrokenCharacterDoesNotCostTheRestOfTheFile)
{
    EXPECT_EQ(decodeText("\xD3\xEF\xFF\xCE\xC4"), u"语\uFFFD文"_s);
    EXPECT_EQ(decodeText("\xD3\xEF\xCE"), u"语\uFFFD"_s);
}

TEST_F(TextFile, AMissingFileLeavesTheListAsItWas)
{
    QStringList list{u"before"_s};
    ReadTxtSet(folder.filePath(u"none.txt"_s), list);
    EXPECT_EQ(list, QStringList({u"before"_s}));
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(TextFile, AFolderOfThatNameIsNoFile)
{
    QStringList list{u"before"_s};
    ReadTxtSet(folder.path(), list);
    EXPECT_EQ(list, QStringList({u"before"_s}));
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(TextFile, AFileThatCannotBeReadIsShownWithTheTagOfTheRoutine)
{
    const QString name = write("语文");
    ASSERT_EQ(chmod(folder.path().toUtf8().constData(), 0755), 0);
    ASSERT_EQ(chmod(name.toUtf8().constData(), 0), 0);
    const support::OrdinaryUser user;
    QStringList list{u"before"_s};
    ReadTxtSet(name, list);
    EXPECT_EQ(list, QStringList({u"before"_s}));
    ASSERT_EQ(dialogs.failures.size(), 1);
    EXPECT_TRUE(dialogs.failures[0].startsWith(u"无法读取文件 "_s));
    EXPECT_TRUE(dialogs.failures[0].endsWith(u" - Sub ReadTxtSet/MdlSYS"_s));
}

TEST_F(TextFile, AllItsLinesAreReadWithTheEmptyOnes)
{
    EXPECT_EQ(readAllLines(write("语文\r\n\r\n数学\n")),
              (QStringList{u"语文"_s, u""_s, u"数学"_s}));
    EXPECT_EQ(readAllLines(write("语文\n\n")), (QStringList{u"语文"_s, u""_s}));
    EXPECT_EQ(readAllLines(write("语文")), QStringList{u"语文"_s}) << "without a line end";
    EXPECT_EQ(readAllLines(write("")), QStringList());
    EXPECT_EQ(readAllLines(folder.filePath(u"none.txt"_s)), QStringList());
}

TEST_F(TextFile, WritingReplacesTheFileWhole)
{
    const QString name = write("an older and longer content");
    writeTextFile(name, u"语文=150\n"_s);
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("语文=150\n"));
}

TEST_F(TextFile, WritingThatFindsRoomForAPartLeavesTheOldFile)
{
    const QString name = write("the older content");
    const QString text(40'000, u'x');
    const support::FullDisk disk(30'000);
    EXPECT_EQ(support::errorOf([&] { writeTextFile(name, text); }).section(u'（', 0, 0),
              u"无法写入文件 "_s + name);
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("the older content"));
}

TEST_F(TextFile, WritingIntoAMissingFolderIsAnError)
{
    EXPECT_THROW(writeTextFile(folder.filePath(u"none/file.txt"_s), u"x"_s), Error);
}

TEST(ForTerminal, ShowsWhatWouldSteerATerminalInsteadOfSendingIt)
{
    EXPECT_EQ(forTerminal(u"王芳\n总分 <a> %1"_s), u"王芳\n总分 <a> %1"_s);
    EXPECT_EQ(forTerminal(u"a\x1b[2Jb\rc\td"_s), u"a␛[2Jb␍c\td"_s);
    EXPECT_EQ(forTerminal(u"\u202e颠倒\u2066\u200f\u0085\u007f"_s), u"�颠倒���␡"_s);
}

} // namespace
} // namespace runtime
