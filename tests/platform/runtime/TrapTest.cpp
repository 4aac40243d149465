#include "platform/runtime/Trap.h"

#include <new>
#include <stdexcept>

#include <gtest/gtest.h>

#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Phase.h"
#include "support/PrintQString.h"
#include "support/ScriptedDialogs.h"

namespace runtime {
namespace {

using namespace Qt::StringLiterals;

TEST(Trap, AFailingStatementIsShownWithTheTagAndTheNextOneRuns)
{
    support::ScriptedDialogs dialogs;
    const Trap trap{" - Sub PaiMC/Mdl_MDB"};
    int value = 1;
    EXPECT_FALSE(trap([&] {
        throw Error(u"没有名为“甲”的列。"_s);
        value = 2;
    }));
    EXPECT_TRUE(trap([&] { value += 10; }));
    EXPECT_EQ(value, 11);
    EXPECT_EQ(dialogs.failures, QStringList({u"没有名为“甲”的列。 - Sub PaiMC/Mdl_MDB"_s}));
}

TEST(Trap, ALoopShowsOneMessageARound)
{
    support::ScriptedDialogs dialogs;
    const Trap trap{" - tag"};
    for (int i = 0; i < 3; ++i)
        trap([&] { throw Error(QString::number(i)); });
    EXPECT_EQ(dialogs.failures, QStringList({u"0 - tag"_s, u"1 - tag"_s, u"2 - tag"_s}));
}

TEST(Trap, ASilentOneShowsNothing)
{
    support::ScriptedDialogs dialogs;
    EXPECT_FALSE(Trap::silent()([] { throw Error(u"x"_s); }));
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST(Trap, AMistakeOfTheProgramPasses)
{
    support::ScriptedDialogs dialogs;
    const Trap trap{" - tag"};
    EXPECT_THROW(trap([] { throw std::logic_error("mistake"); }), std::logic_error);
    EXPECT_THROW(Trap::silent()([] { throw std::out_of_range("mistake"); }), std::out_of_range);
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST(Trap, OtherFailuresOfTheMachineAreShownToo)
{
    support::ScriptedDialogs dialogs;
    const Trap trap{" - tag"};
    trap([] { throw std::bad_alloc(); });
    trap([] { throw std::runtime_error("读"); });
    EXPECT_EQ(dialogs.failures, QStringList({u"内存不足。 - tag"_s, u"读 - tag"_s}));
}

TEST(Trap, ShowsAFailureThatWasNotThrown)
{
    support::ScriptedDialogs dialogs;
    Trap{" - tag"}.fail(u"x"_s);
    Trap::silent().fail(u"y"_s);
    EXPECT_EQ(dialogs.failures, QStringList({u"x - tag"_s}));
}

TEST(Trap, WithinAPhaseAFailureOfTheFileOrOfMemoryPassesToTheTrapAroundIt)
{
    support::ScriptedDialogs dialogs;
    const Trap outer{" - outer"};
    const Trap inner{" - inner"};
    for (const bool ofMemory : {false, true}) {
        bool wentOn = false;
        EXPECT_FALSE(outer([&] {
            const Phase phase;
            inner([] { throw Error(u"一条语句"_s); });
            inner([&] {
                if (ofMemory)
                    throw std::bad_alloc();
                throw PhaseError(u"磁盘"_s);
            });
            wentOn = true;
        }));
        EXPECT_FALSE(wentOn);
    }
    EXPECT_EQ(dialogs.failures, QStringList({u"一条语句 - inner"_s, u"磁盘 - outer"_s,
                                             u"一条语句 - inner"_s, u"内存不足。 - outer"_s}));
}

/// Has shown enough failures, and shows no more of them.
class Tired : public support::ScriptedDialogs
{
public:
    bool fold(const QString&) override { return true; }
};

TEST(Trap, ThatAPhaseFailedIsShownHoweverManyFailuresWereShownBefore)
{
    Tired dialogs;
    const Trap trap{" - tag"};
    trap([] { throw Error(u"一条"_s); });
    EXPECT_EQ(dialogs.shown, QStringList());
    trap([] { throw PhaseError(u"磁盘"_s); });
    trap([] {
        const Phase phase;
        throw PhaseError(u"内存"_s);
    });
    EXPECT_EQ(dialogs.shown, QStringList({u"磁盘 - tag"_s, u"内存 - tag"_s}));
}

TEST(Phase, KeepsWhatTellsSomethingBackUntilTheOutermostOneEnds)
{
    support::ScriptedDialogs dialogs;
    dialogs.expect(u"问"_s, Answer::Ok);
    {
        const Phase phase;
        MsgBox(u"一"_s);
        Trap{" - tag"}.fail(u"二"_s);
        {
            const Phase within;
            warn(u"三"_s);
        }
        EXPECT_EQ(dialogs.shown, QStringList());
        MsgBox(u"问"_s, {}, Buttons::OkCancel);
        EXPECT_EQ(dialogs.shown, QStringList({u"问"_s})) << "an answer is needed now";
    }
    EXPECT_EQ(dialogs.shown, QStringList({u"问"_s, u"一"_s, u"二 - tag"_s, u"三"_s}));
    EXPECT_FALSE(Phase::isRunning());
}

TEST(Choice, GivesTheButtonByItsPlace)
{
    support::ScriptedDialogs dialogs;
    dialogs.expect(u"哪一个"_s, u"乙"_s);
    EXPECT_EQ(choose({.text = u"哪一个"_s, .buttons = {u"甲"_s, u"乙"_s}}), 1);
}

TEST(Error, TellsItsDescriptionInUtf8)
{
    EXPECT_STREQ(Error(u"内存不足。"_s).what(), "内存不足。");
}

TEST(MsgBox, GivesTheButtonThatWasPressed)
{
    support::ScriptedDialogs dialogs;
    dialogs.expect(u"覆盖"_s, Answer::Cancel);
    EXPECT_EQ(MsgBox(u"同名文件已存在，是否覆盖原文件？"_s, u"是否覆盖"_s, Buttons::OkCancel),
              Answer::Cancel);
    EXPECT_EQ(MsgBox(u"完成"_s), Answer::Ok);
    EXPECT_EQ(dialogs.shown,
              QStringList({u"是否覆盖: 同名文件已存在，是否覆盖原文件？"_s, u"完成"_s}));
}

TEST(InstalledDialogs, PutTheFormerOnesBack)
{
    EXPECT_THROW(Dialogs::current(), std::logic_error);
    support::ScriptedDialogs outer;
    {
        support::ScriptedDialogs inner;
        MsgBox(u"in"_s);
        EXPECT_EQ(inner.shown, QStringList({u"in"_s}));
    }
    MsgBox(u"out"_s);
    EXPECT_EQ(outer.shown, QStringList({u"out"_s}));
}

TEST(BeforeDialogs, ActBeforeEveryBoxAsLongAsTheyLive)
{
    support::ScriptedDialogs dialogs;
    QList<qsizetype> shownBefore;
    {
        const BeforeDialogs before([&] { shownBefore.append(dialogs.shown.size()); });
        MsgBox(u"完成"_s);
        Trap{" - tag"}.fail(u"x"_s);
        GetColor(0);
    }
    MsgBox(u"后"_s);
    EXPECT_EQ(shownBefore, QList<qsizetype>({0, 1, 2}));
}

} // namespace
} // namespace runtime
