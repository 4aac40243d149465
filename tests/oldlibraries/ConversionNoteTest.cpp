#include "oldlibraries/ConversionNote.h"

#include <sys/wait.h>
#include <unistd.h>

#include <functional>

#include <QDir>

#include "oldlibraries/AskedConversion.h"
#include "support/OldSamples.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace oldlibraries {
namespace {

using namespace Qt::StringLiterals;

/// Data files of the program, and a folder elsewhere.
class ConversionNotes : public testing::Test
{
protected:
    /// Runs in a process of its own, which ends without tidying up.
    static void killed(const std::function<void()>& work)
    {
        const pid_t child = fork();
        if (child == 0) {
            work();
            _exit(0);
        }
        waitpid(child, nullptr, 0);
    }
    static QStringList filesOf(const QString& folder)
    {
        return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    QStringList left() const { return filesOf(elsewhere.path()); }
    QStringList notes() const { return filesOf(paths.dataFile(u"转换"_s)); }

    QTemporaryDir app;
    const runtime::AppPaths paths = support::TestLibrary::makeAppFolder(app.path());
    QTemporaryDir elsewhere;
    const QString newPath = elsewhere.filePath(u"新.CJK"_s);
};

/// Kills the process at the n-th report.
class Killer : public runtime::NoProgress
{
public:
    explicit Killer(int report) : m_left(report) {}

    void report(const QString&, int, int) override
    {
        if (--m_left == 0)
            _exit(0);
    }

private:
    int m_left;
};

TEST_F(ConversionNotes, WhatAKilledConversionLeavesGoesAtTheNextStart)
{
    const QString old = elsewhere.filePath(u"旧.CJK"_s);
    const QByteArray bytes = support::oldSample(u"one-stream"_s);
    support::write(old, bytes);
    killed([&] {
        const support::ScriptedDialogs dialogs;
        Killer progress(2);
        convertAsked({.oldPath = old, .newPath = newPath, .templateFile = paths.templateFile()},
                     paths, progress);
    });
    EXPECT_FALSE(left().filter(u".tmp"_s).isEmpty()) << "nothing was left";
    EXPECT_EQ(notes().size(), 1);
    removeLeftOvers(paths);
    EXPECT_EQ(left(), QStringList{u"旧.CJK"_s});
    EXPECT_EQ(notes(), QStringList());
    EXPECT_EQ(support::read(old), bytes);
}

TEST_F(ConversionNotes, OfSeveralKilledConversionsEachFolderIsTidied)
{
    const QTemporaryDir third;
    for (const QString& path : {newPath, third.filePath(u"库.CJK"_s)}) {
        killed([&] {
            const ConversionNote note(paths, path);
            const runtime::UnfinishedFile half(path);
            _exit(0);
        });
    }
    EXPECT_EQ(notes().size(), 2);
    removeLeftOvers(paths);
    EXPECT_EQ(left(), QStringList());
    EXPECT_EQ(filesOf(third.path()), QStringList());
    EXPECT_EQ(notes(), QStringList());
}

TEST_F(ConversionNotes, FollowALinkToTheFolderThatIsWritten)
{
    const QTemporaryDir other;
    const QString link = other.filePath(u"库.CJK"_s);
    support::write(newPath, "replaced");
    ASSERT_TRUE(QFile::link(newPath, link));
    killed([&] {
        const ConversionNote note(paths, link);
        const runtime::UnfinishedFile half(newPath);
        _exit(0);
    });
    EXPECT_EQ(left().size(), 2);
    removeLeftOvers(paths);
    EXPECT_EQ(left(), QStringList{u"新.CJK"_s});
}

TEST_F(ConversionNotes, AConversionThatStillRunsKeepsItsFile)
{
    const ConversionNote note(paths, newPath);
    const runtime::UnfinishedFile half(newPath);
    removeLeftOvers(paths);
    EXPECT_EQ(left().size(), 1);
    EXPECT_EQ(notes().size(), 1);
}

TEST_F(ConversionNotes, GoWithTheirConversion)
{
    {
        const ConversionNote note(paths, newPath);
        EXPECT_EQ(notes().size(), 1);
    }
    EXPECT_EQ(notes(), QStringList());
}

TEST_F(ConversionNotes, WaitForAFolderThatIsAway)
{
    const QString stick = elsewhere.filePath(u"盘"_s);
    ASSERT_TRUE(QDir().mkdir(stick));
    killed([&] {
        const ConversionNote note(paths, stick + u"/库.CJK"_s);
        const runtime::UnfinishedFile half(stick + u"/库.CJK"_s);
        _exit(0);
    });
    ASSERT_TRUE(QDir().rename(stick, stick + u"2"_s));
    removeLeftOvers(paths);
    EXPECT_EQ(notes().size(), 1);
    ASSERT_TRUE(QDir().rename(stick + u"2"_s, stick));
    removeLeftOvers(paths);
    EXPECT_EQ(notes(), QStringList());
    EXPECT_EQ(filesOf(stick), QStringList());
}

TEST_F(ConversionNotes, FilesOfTheUserStay)
{
    killed([&] {
        const ConversionNote note(paths, newPath);
        _exit(0);
    });
    const QStringList own{u".yunshan-notes.tmp"_s, u"新.CJK"_s, u"新.CJK.tmp"_s};
    for (const QString& name : own)
        support::write(elsewhere.filePath(name), "the user's own");
    removeLeftOvers(paths);
    EXPECT_EQ(left(), own);
}

TEST_F(ConversionNotes, AnEmptyOneGoesAndNamesNoFolder)
{
    killed([&] {
        QDir().mkpath(paths.dataFile(u"转换"_s));
        const runtime::UnfinishedFile note(paths.dataFile(u"转换/"_s));
        _exit(0);
    });
    ASSERT_EQ(notes().size(), 1);
    removeLeftOvers(paths);
    EXPECT_EQ(notes(), QStringList());
}

TEST_F(ConversionNotes, ThatCannotBeWrittenHinderNothing)
{
    support::write(paths.dataFile(u"转换"_s), "a file in its place");
    const support::ScriptedDialogs dialogs;
    const ConversionNote note(paths, newPath);
    removeLeftOvers(paths);
    EXPECT_EQ(dialogs.shown, QStringList());
    EXPECT_EQ(support::read(paths.dataFile(u"转换"_s)), "a file in its place");
}

} // namespace
} // namespace oldlibraries
