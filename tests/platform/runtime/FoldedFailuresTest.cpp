#include "platform/runtime/FoldedFailures.h"

#include <gtest/gtest.h>

#include "platform/runtime/Phase.h"
#include "platform/runtime/Trap.h"
#include "support/PrintQString.h"
#include "support/ScriptedDialogs.h"

namespace runtime {
namespace {

using namespace Qt::StringLiterals;

const QString tag = u" - Sub JiSuanZF/Mdl_MDB"_s;

TEST(FoldedFailures, ATextIsNewOnceAndItsRepeatsAreCounted)
{
    FoldedFailures failures;
    EXPECT_TRUE(failures.isNew(u"没有列。"_s + tag));
    for (int i = 0; i < 107'966; ++i)
        EXPECT_FALSE(failures.isNew(u"没有列。"_s + tag));
    EXPECT_TRUE(failures.isNew(u"没有列。 - Sub PaiMC/Mdl_MDB"_s));
    EXPECT_EQ(failures.takeCounts(),
              QStringList{u"没有列。 - Sub JiSuanZF/Mdl_MDB（同样的提示另有 107,966 条）"_s});
}

TEST(FoldedFailures, ManyTextsOfOneTagAreCountedBehindTheFirst)
{
    FoldedFailures failures;
    int shown = 0;
    for (int i = 0; i < 10'000; ++i)
        shown += failures.isNew(u"“%1”不能存入列“语文”。"_s.arg(i) + tag) ? 1 : 0;
    EXPECT_EQ(shown, FoldedFailures::MostTexts);
    EXPECT_TRUE(failures.isNew(u"别的"_s)) << "another tag, or none, has its own";
    EXPECT_EQ(failures.takeCounts(),
              QStringList{u"另有 9,980 条类似的提示 - Sub JiSuanZF/Mdl_MDB"_s});
}

TEST(FoldedFailures, TheNextCommandBeginsAnew)
{
    FoldedFailures failures;
    failures.isNew(u"甲"_s);
    failures.isNew(u"甲"_s);
    EXPECT_EQ(failures.takeCounts().size(), 1);
    EXPECT_TRUE(failures.isNew(u"甲"_s));
    EXPECT_EQ(failures.takeCounts(), QStringList());
}

TEST(FoldedFailures, APhaseKeepsNothingBackOfWhatIsCounted)
{
    class Folding : public support::ScriptedDialogs
    {
    public:
        bool fold(const QString& failure) override { return !folded.isNew(failure); }
        FoldedFailures folded;
    };
    Folding dialogs;
    const Trap trap{" - tag"};
    {
        const Phase phase;
        for (int i = 0; i < 3; ++i)
            trap.fail(u"坏"_s);
        EXPECT_EQ(dialogs.failures, QStringList());
        EXPECT_FALSE(dialogs.folded.isNew(u"坏 - tag"_s)) << "counted while the phase runs";
    }
    EXPECT_EQ(dialogs.failures, QStringList{u"坏 - tag"_s});
}

} // namespace
} // namespace runtime
