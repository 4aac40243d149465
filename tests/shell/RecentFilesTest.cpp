#include "shell/RecentFiles.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "platform/runtime/TextFile.h"
#include "support/OrdinaryUser.h"
#include "support/PrintQString.h"
#include "support/ScriptedDialogs.h"

namespace {

using namespace Qt::StringLiterals;
using shell::RecentFiles;

/// The list as a text file in a folder of its own, with the count of the menu.
class RecentList : public testing::Test
{
protected:
    /// Runs MKRecent as a start of the program does, with an object that knows nothing yet.
    QString start(const QString& path = {})
    {
        recent = RecentFiles();
        return recent.MKRecent(list, path, 6);
    }

    void write(const QString& text) { runtime::writeTextFile(list, text); }

    QString written() const
    {
        QFile file(list);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : u"none"_s;
    }

    static QStringList shorten(QStringList files)
    {
        for (QString& file : files)
            file = file.section(u'/', -1);
        return files;
    }

    QTemporaryDir folder;
    const QString list = folder.filePath(u"recent.dat"_s);
    support::ScriptedDialogs dialogs;
    RecentFiles recent;
};

TEST_F(RecentList, BeginsWithThePlaceholderAndWritesNothing)
{
    EXPECT_EQ(start(), QString());
    EXPECT_EQ(recent.mfREC(), QStringList{u"(最近打开的文件)"_s});
    EXPECT_EQ(written(), u"none"_s);
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(RecentList, TheFirstFileMakesTheList)
{
    EXPECT_EQ(start(u"/甲.CJK"_s), QString());
    EXPECT_EQ(recent.mfREC(), QStringList{u"/甲.CJK"_s});
    EXPECT_EQ(written(), u"/甲.CJK\n"_s);
}

TEST_F(RecentList, TheNewestAdditionStandsFirst)
{
    for (const QString& path : {u"/甲.CJK"_s, u"/乙.CJK"_s, u"/丙.CJK"_s})
        start(path);
    EXPECT_EQ(recent.mfREC(), (QStringList{u"/丙.CJK"_s, u"/乙.CJK"_s, u"/甲.CJK"_s}));
    EXPECT_EQ(written(), u"/丙.CJK\n/乙.CJK\n/甲.CJK\n"_s);
}

TEST_F(RecentList, AFileThatIsListedKeepsItsPlace)
{
    const QString before = u"/丙.CJK\n/乙.CJK\n/甲.CJK\n"_s;
    for (const QString& path : {u"/甲.CJK"_s, u"/乙.CJK"_s, u"/丙.CJK"_s}) {
        write(before);
        start(path);
        EXPECT_EQ(written(), before) << path.toStdString();
        EXPECT_EQ(shorten(recent.mfREC()), (QStringList{u"丙.CJK"_s, u"乙.CJK"_s, u"甲.CJK"_s}));
    }
}

TEST_F(RecentList, TheSeventhFilePushesTheLastOneOut)
{
    for (int i = 1; i <= 6; ++i)
        start(u"/%1.CJK"_s.arg(i));
    EXPECT_EQ(written(), u"/6.CJK\n/5.CJK\n/4.CJK\n/3.CJK\n/2.CJK\n/1.CJK\n"_s);
    start(u"/7.CJK"_s);
    EXPECT_EQ(written(), u"/7.CJK\n/6.CJK\n/5.CJK\n/4.CJK\n/3.CJK\n/2.CJK\n"_s);
    EXPECT_EQ(recent.mfREC().size(), 6);
    start(u"/1.CJK"_s);
    EXPECT_EQ(recent.mfREC().first(), u"/1.CJK"_s) << "what was pushed out is new again";
}

TEST_F(RecentList, EntriesBeyondTheCountAreReadAndGoAtTheNextWrite)
{
    write(u"/1\n/2\n/3\n/4\n/5\n/6\n/7\n/8\n"_s);
    start();
    EXPECT_EQ(recent.mfREC().join(u' '), u"/1 /2 /3 /4 /5 /6"_s);
    EXPECT_TRUE(written().contains(u"/8"_s)) << "without a path nothing is written";
    start(u"/7"_s);
    EXPECT_EQ(recent.mfREC().join(u' '), u"/7 /1 /2 /3 /4 /5"_s)
        << "an entry beyond the count is not looked for";
    EXPECT_EQ(written(), u"/7\n/1\n/2\n/3\n/4\n/5\n"_s);
}

TEST_F(RecentList, APathOfTwoLinesIsLeftOut)
{
    start(u"/甲.CJK"_s);
    for (const QString& path : {u"/高\n三.CJK"_s, u"/高\r三.CJK"_s}) {
        EXPECT_EQ(start(path), QString());
        EXPECT_EQ(recent.mfREC(), QStringList{u"/甲.CJK"_s});
        EXPECT_EQ(written(), u"/甲.CJK\n"_s);
    }
}

TEST_F(RecentList, EmptyLinesAreDropped)
{
    write(u"\n/甲.CJK\n\n\n/乙.CJK\n\n"_s);
    start();
    EXPECT_EQ(recent.mfREC(), (QStringList{u"/甲.CJK"_s, u"/乙.CJK"_s}));
    start(u"/丙.CJK"_s);
    EXPECT_EQ(written(), u"/丙.CJK\n/甲.CJK\n/乙.CJK\n"_s);
}

TEST_F(RecentList, LinesOfAnotherSystemAreRead)
{
    write(u"/甲.CJK\r\n/乙.CJK\r\n"_s);
    start();
    EXPECT_EQ(recent.mfREC(), (QStringList{u"/甲.CJK"_s, u"/乙.CJK"_s}));
}

TEST_F(RecentList, WithoutAPathTheFirstEntryIsGivenBackIfItsFileExists)
{
    const QString library = folder.filePath(u"甲.CJK"_s);
    write(library + u"\n/乙.CJK\n"_s);
    EXPECT_EQ(start(), QString()) << "the file does not exist";
    ASSERT_TRUE(QFile(library).open(QIODevice::WriteOnly));
    EXPECT_EQ(start(), library);
    EXPECT_EQ(start(u"/乙.CJK"_s), QString()) << "a path was given";
}

TEST_F(RecentList, OnlyTheFirstEntryIsGivenBack)
{
    const QString library = folder.filePath(u"甲.CJK"_s);
    ASSERT_TRUE(QFile(library).open(QIODevice::WriteOnly));
    write(u"/乙.CJK\n"_s + library + u"\n"_s);
    EXPECT_EQ(start(), QString());
}

TEST_F(RecentList, AListThatCannotBeWrittenIsToldAndStillShown)
{
    recent.MKRecent(folder.filePath(u"没有/recent.dat"_s), u"/甲.CJK"_s, 6);
    ASSERT_EQ(dialogs.failures.size(), 1);
    EXPECT_TRUE(dialogs.failures[0].endsWith(u" - Sub MKRecent/FormMain"_s))
        << dialogs.failures[0].toStdString();
    EXPECT_EQ(recent.mfREC(), QStringList{u"/甲.CJK"_s});
}

TEST_F(RecentList, AListThatCannotBeReadIsTold)
{
    write(u"/甲.CJK\n"_s);
    ASSERT_TRUE(QFile::setPermissions(folder.path(), QFile::Permissions(0x7755)));
    ASSERT_TRUE(QFile::setPermissions(folder.filePath(u"recent.dat"_s), {}));
    const support::OrdinaryUser user;
    EXPECT_EQ(start(), QString());
    ASSERT_EQ(dialogs.failures.size(), 1);
    EXPECT_TRUE(dialogs.failures[0].startsWith(u"无法读取文件 "_s));
    EXPECT_TRUE(dialogs.failures[0].endsWith(u" - Sub MKRecent/FormMain"_s));
}

TEST_F(RecentList, AnEntryThatIsRemovedLeavesTheOthersInTheirOrder)
{
    write(u"/1\n\n/2\n/3\n/4\n/5\n/6\n/7\n"_s);
    start();
    recent.remove(list, u"/2"_s);
    EXPECT_EQ(written(), u"/1\n/3\n/4\n/5\n/6\n/7\n"_s);
    recent.MKRecent(list, {}, 6);
    EXPECT_EQ(recent.files().join(u' '), u"/1 /3 /4 /5 /6 /7"_s);
    recent.remove(list, u"/nowhere"_s);
    EXPECT_EQ(written(), u"/1\n/3\n/4\n/5\n/6\n/7\n"_s);
}

TEST_F(RecentList, TheLastEntryCanBeRemoved)
{
    start(u"/甲.CJK"_s);
    EXPECT_EQ(recent.files(), QStringList{u"/甲.CJK"_s});
    recent.remove(list, u"/甲.CJK"_s);
    EXPECT_EQ(recent.MKRecent(list, {}, 6), QString());
    EXPECT_EQ(recent.files(), QStringList());
    EXPECT_EQ(recent.mfREC(), QStringList{u"(最近打开的文件)"_s});
}

} // namespace
