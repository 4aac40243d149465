#include "library/ImportHistory.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using library::HistoryStep;
using library::Presence;

QDateTime at(int minute)
{
    return QDateTime(QDate(2026, 3, 9), QTime(7, 0)).addSecs(60 * minute);
}

/// One step a minute: c2 the library was copy 2; i2 the same, and an import began; r1 it became
/// what it was in the first minute; r? in one that nobody knows; m1 and m? as r, or broken off.
std::vector<HistoryStep> stepsOf(const QString& text)
{
    using Kind = HistoryStep::Kind;
    std::vector<HistoryStep> steps;
    for (const QString& word : text.split(u' ')) {
        HistoryStep step{.time = at(int(steps.size()) + 1)};
        const int number = word.mid(1).toInt();
        const bool isRestore = word[0] == u'r' || word[0] == u'm';
        if (isRestore)
            step.kind = word[0] == u'r' ? Kind::Restored : Kind::MaybeRestored;
        else
            step.kind = word[0] == u'i' ? Kind::Imported : Kind::Copied;
        if (!isRestore)
            step.copy = size_t(number);
        else if (number > 0)
            step.restored = at(number);
        steps.push_back(step);
    }
    return steps;
}

/// + for an import that is in the library, - for one that was taken back, ? for neither.
std::string textOf(const std::vector<Presence>& imports)
{
    std::string text;
    for (const Presence presence : imports) {
        if (presence == Presence::Unknown)
            text += '?';
        else
            text += presence == Presence::InLibrary ? '+' : '-';
    }
    return text;
}

struct History
{
    const char* name;
    QString steps;
    std::string imports;
    /// The copy that the library equals at the end.
    size_t equal = 0;
};

class OfImports : public testing::TestWithParam<History>
{
};

TEST_P(OfImports, TellsWhichOnesAreInTheLibrary)
{
    const History& param = GetParam();
    const library::EqualCopy equal{param.equal > 0, param.equal};
    EXPECT_EQ(textOf(library::importsAfter(stepsOf(param.steps), at(60), equal)), param.imports);
}

INSTANTIATE_TEST_SUITE_P(
    History, OfImports,
    testing::Values(History{"AnImport", u"i1"_s, "+"}, History{"Undone", u"i1 c2 r1"_s, "-"},
                    History{"AnOlderCopyTakesBackAllSinceThen", u"i1 c2 i3 c4 r2"_s, "+-"},
                    History{"TheOldestCopyTakesBackAll", u"i1 i2 c3 r1"_s, "--"},
                    History{"ACopyOfTwoImportsTakesBackBoth", u"i1 i1 c2 r1"_s, "--"},
                    History{"RestoredBack", u"i1 c2 r1 c3 r2"_s, "+"},
                    History{"AllRestoredBack", u"i1 i2 c3 r1 c4 r3"_s, "++"},
                    History{"RestoredBackAndUndoneAgain", u"i1 c2 r1 c3 r2 c4 r1"_s, "-"},
                    History{"RestoredToTheTimeBetween", u"i1 c2 r1 c3 r2 c4 r4"_s, "-"},
                    History{"ImportedAfterwards", u"i1 c2 r1 i3"_s, "-+"},
                    History{"ACopyWithoutNotesOfNow", u"i1 r9"_s, "+"},
                    History{"RestoredToNobodyKnows", u"i1 c2 r? i3"_s, "?+"},
                    History{"AndToAKnownTimeWithIt", u"i1 c2 r? c3 r2"_s, "+"},
                    History{"AndToAKnownTimeWithoutIt", u"i1 c2 r? c3 r1"_s, "-"},
                    History{"MaybeUndone", u"i1 c2 i3 c4 m3"_s, "+?"},
                    History{"MaybeUndoneOrNobodyKnows", u"i1 c2 m?"_s, "?"},
                    History{"MaybeRestoredToTheSame", u"i1 c2 m2"_s, "+"},
                    History{"BrokenOffAsTheNextNoteTells", u"i1 c2 m1 i2"_s, "++"},
                    History{"BrokenOffAsTheLibraryTells", u"i1 c2 m1"_s, "+", 2},
                    History{"RestoredBackAsTheLibraryTells", u"i1 c2 r1"_s, "+", 2},
                    History{"ALibraryThatEqualsWhatTellsNothing", u"i1 c2 r1"_s, "-", 9}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ImportHistory, TakesWhatIsNotedForATimeToComeForTheOldest)
{
    std::vector<HistoryStep> steps = stepsOf(u"i1 c2 i3"_s);
    library::sortSteps(steps, at(2));
    EXPECT_EQ(steps[0].copy, 3U);
    EXPECT_EQ(steps[1].copy, 1U);
    HistoryStep restore{.kind = HistoryStep::Kind::Restored, .time = at(2), .restored = at(1)};
    steps.push_back(restore);
    EXPECT_EQ(textOf(library::importsAfter(steps, at(2), {})), "+-");
    steps.back().restored = at(3);
    EXPECT_EQ(textOf(library::importsAfter(steps, at(2), {})), "--");
}

} // namespace
