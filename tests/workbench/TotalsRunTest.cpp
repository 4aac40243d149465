#include "workbench/TotalsRun.h"

#include <gmock/gmock.h>

#include "WorkbenchFixture.h"

using namespace Qt::StringLiterals;

namespace {

/// Notes the texts, an empty one at the end, and is cancelled as soon as one of them contains
/// `cancelAt`.
class NotedProgress : public runtime::Progress
{
public:
    void report(const QString& text, int done, int total) override
    {
        EXPECT_GE(done, lastDone) << done;
        EXPECT_LE(done, total);
        lastDone = done;
        if (texts.isEmpty() || texts.last() != text)
            texts.append(text);
        m_cancelled = m_cancelled || (!cancelAt.isEmpty() && text.contains(cancelAt));
    }
    void finish() override { texts.append(QString()); }
    bool cancelled() const override { return m_cancelled; }

    QStringList texts;
    QString cancelAt;
    int lastDone = 0;

private:
    bool m_cancelled = false;
};

class TotalsRun : public WorkbenchTest
{
protected:
    TotalsRun()
    {
        library.addScores(u"期中"_s, 2, 1, {{u"语文"_s, 100}, {u"数学"_s, 90}});
        library.addScores(u"期中"_s, 3, 1, {{u"语文"_s, 80}, {u"数学"_s, 120}});
        library.addScores(u"期末"_s, 2, 1, {{u"语文"_s, 70}});
        library.addScores(u"期末"_s, 3, 1, {{u"语文"_s, 75}});
    }

    QString ranks(const QString& exam)
    {
        return library.rows(
            u"select 语文年名, 总分, 总分年名 from 成绩表 where 考试名称='%1'"_s.arg(exam));
    }

    const QStringList both{u"期中"_s, u"期末"_s};
    scoring::Scoring scoring{library.scores};
    NotedProgress progress;
};

TEST_F(TotalsRun, ScoresTheExamsAndTellsWhenItBeganAndEnded)
{
    workbench::computeTotals({u"期中"_s}, scoring, progress);
    EXPECT_EQ(ranks(u"期中"_s), u"1|190|2 / 2|200|1"_s);
    EXPECT_EQ(ranks(u"期末"_s), u"NULL|NULL|NULL / NULL|NULL|NULL"_s);
    ASSERT_FALSE(progress.texts.isEmpty());
    EXPECT_EQ(progress.texts.first(), u"计算总分：期中..."_s);
    EXPECT_EQ(progress.texts.last(), QString()) << "the line is empty once all is done";
    ASSERT_EQ(library.dialogs.shown.size(), 1);
    EXPECT_THAT(library.dialogs.shown.first().toStdString(),
                testing::MatchesRegex("计算总分 完成！[0-9]+:[0-9]+:[0-9]+\n[0-9]+:[0-9]+:[0-9]+"));
}

TEST_F(TotalsRun, TakesTheExamsInTheirOrder)
{
    workbench::computeTotals(both, scoring, progress);
    EXPECT_EQ(progress.texts.filter(u"计算总分："_s),
              (QStringList{u"计算总分：期中..."_s, u"计算总分：期末..."_s}));
    EXPECT_TRUE(ranks(u"期末"_s).startsWith(u"2|"_s));
}

TEST_F(TotalsRun, WithoutAnExamTellsThatItIsDone)
{
    workbench::computeTotals({}, scoring, progress);
    EXPECT_EQ(progress.texts, QStringList{QString()});
    ASSERT_EQ(library.dialogs.shown.size(), 1);
    EXPECT_TRUE(library.dialogs.shown.first().startsWith(u"计算总分 完成！"_s));
}

TEST_F(TotalsRun, CancellingLeavesTheExamsBeforeScored)
{
    progress.cancelAt = u"期末"_s;
    workbench::computeTotals(both, scoring, progress);
    EXPECT_EQ(ranks(u"期中"_s), u"1|190|2 / 2|200|1"_s);
    EXPECT_EQ(ranks(u"期末"_s), u"NULL|NULL|NULL / NULL|NULL|NULL"_s);
    EXPECT_EQ(library.dialogs.shown, QStringList());
    EXPECT_EQ(progress.texts.last(), QString()) << "the line is empty, cancelled or not";
}

TEST_F(TotalsRun, RanksTheExamsAndNamesEach)
{
    workbench::rankExams(both, scoring, progress);
    EXPECT_EQ(progress.texts, (QStringList{u"期中"_s, u"期末"_s, QString()}));
    EXPECT_TRUE(ranks(u"期中"_s).startsWith(u"1|NULL|"_s)) << ranks(u"期中"_s).toStdString();
    EXPECT_TRUE(ranks(u"期末"_s).startsWith(u"2|"_s)) << ranks(u"期末"_s).toStdString();
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(TotalsRun, CancellingTheRanksOfAllExamsClearsTheLineToo)
{
    progress.cancelAt = u"期中"_s;
    workbench::rankExams(both, scoring, progress);
    EXPECT_EQ(progress.texts, (QStringList{u"期中"_s, QString()}));
    EXPECT_TRUE(ranks(u"期末"_s).startsWith(u"NULL|"_s)) << ranks(u"期末"_s).toStdString();
}

} // namespace
