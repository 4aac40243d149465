#include <gtest/gtest.h>

#include "scoring/Scoring.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

const QString tag = u" - Sub JiSuanZF/Mdl_MDB"_s;

/// Two subjects and two totals; the formulas are each test's own.
class Totals : public testing::Test
{
protected:
    void exam(const runtime::Value& first, const runtime::Value& second)
    {
        test.addExam(
            u"期中"_s, u"理"_s, 1,
            {{u"语文"_s, 150}, {u"数学"_s, 100}, {u"文科总分"_s, first}, {u"理科总分"_s, second}});
    }

    void student(int number, support::NamedValues scores)
    {
        test.addStudent(1, number, u"学生%1"_s.arg(number), u"理"_s);
        test.addScores(u"期中"_s, 1, number, scores);
    }

    QString run(const QString& columns)
    {
        test.reload();
        scoring::Scoring(test.scores).JiSuanZF(u"期中"_s);
        return test.rows(u"select "_s + columns + u" from 成绩表"_s);
    }

    TestLibrary test{{u"语文"_s, u"数学"_s, u"文科总分"_s, u"理科总分"_s}};
};

TEST_F(Totals, AStudentAbsentInAllTermsHasMinusOne)
{
    exam(u"语文+数学"_s, u"数学"_s);
    student(1, {{u"语文"_s, -1}, {u"数学"_s, -1}});
    student(2, {{u"语文"_s, -1}, {u"数学"_s, 80}});
    student(3, {});
    EXPECT_EQ(run(u"文科总分, 理科总分"_s), u"-1|-1 / 80|80 / -1|-1"_s);
}

TEST_F(Totals, LaterTotalsCarryTheZAndTOfEarlierOnes)
{
    exam(u"语文+数学"_s, u"数学"_s);
    student(1, {{u"语文"_s, 100},
                {u"数学"_s, 80},
                {u"语文Z分"_s, 1.0},
                {u"语文T分"_s, 60.0},
                {u"数学Z分"_s, 0.5},
                {u"数学T分"_s, 55.0}});
    EXPECT_EQ(run(u"文科总分, 文科总分Z分, 文科总分T分, 理科总分, 理科总分Z分, 理科总分T分"_s),
              u"180|2|145|80|2.5|200"_s);
}

TEST_F(Totals, AnAbsentSubjectAddsItsZAndTButNotItsScore)
{
    exam(u"语文+数学"_s, {});
    student(1, {{u"语文"_s, -1},
                {u"数学"_s, 80},
                {u"语文Z分"_s, -2.0},
                {u"语文T分"_s, 30.0},
                {u"数学Z分"_s, 0.5},
                {u"数学T分"_s, 55.0}});
    EXPECT_EQ(run(u"文科总分, 文科总分Z分, 文科总分T分"_s), u"80|-2.5|100"_s);
}

TEST_F(Totals, ATermThatIsNoColumnFailsThriceARowByItsOwnNameAndCountsAsNotMet)
{
    exam(u"语文+体育"_s, u"数学"_s);
    student(1, {{u"语文"_s, 90}, {u"数学"_s, 80}});
    student(2, {{u"语文"_s, -1}, {u"数学"_s, 80}});
    EXPECT_EQ(run(u"文科总分, 理科总分"_s), u"90|80 / -1|80"_s);
    QStringList expected{u"没有名为“体育”的列。 - Function getKMMF/Mdl_MDB"_s};
    for (int row = 0; row < 2; ++row)
        expected += QStringList(3, u"没有名为“体育”的列。"_s + tag);
    EXPECT_EQ(test.dialogs.failures, expected);
}

TEST_F(Totals, ATotalCanBeATermOfALaterOne)
{
    exam(u"语文+数学"_s, u"文科总分+数学"_s);
    student(1, {{u"语文"_s, 100}, {u"数学"_s, 80}});
    EXPECT_EQ(run(u"文科总分, 理科总分"_s), u"180|260"_s);
    // Its formula is no full mark, so its weight is 0.
    EXPECT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures.first().endsWith(u" - Function getKMMF/Mdl_MDB"_s));
}

TEST_F(Totals, AFormulaThatNamesItsOwnTotalReadsTheSumAsItStands)
{
    exam(u"语文+文科总分"_s, u"理科总分"_s);
    student(1, {{u"语文"_s, 100}, {u"理科总分"_s, 77}});
    student(2, {{u"语文"_s, -1}, {u"文科总分"_s, -1}});
    EXPECT_EQ(run(u"文科总分, 理科总分"_s), u"200|0 / 0|0"_s);
}

TEST_F(Totals, ATotalWithoutAFormulaHasNoTerms)
{
    exam({}, u"数学"_s);
    student(1, {{u"语文"_s, 100}, {u"数学"_s, 80}});
    EXPECT_EQ(run(u"文科总分, 文科总分Z分, 理科总分"_s), u"-1|0|80"_s);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(Totals, TheSumPassesThroughTheSingleAtEveryTerm)
{
    exam(u"语文+数学+语文"_s, {});
    student(1, {{u"语文"_s, 0.1}, {u"数学"_s, 16777216}});
    const float expected = float(double(float(double(0.1f) + 16777216.0)) + double(0.1f));
    run(u"文科总分"_s);
    EXPECT_EQ(test.rows(u"select 文科总分=%1 from 成绩表"_s.arg(double(expected), 0, 'f', 3)),
              u"1"_s);
}

TEST_F(Totals, TheOtherStreamsRowLendsItsFormulas)
{
    test.addExam(u"期中"_s, u"文"_s, 1,
                 {{u"语文"_s, 150}, {u"数学"_s, 100}, {u"文科总分"_s, u"语文+数学"_s}});
    student(1, {{u"语文"_s, 100}, {u"数学"_s, 80}});
    EXPECT_EQ(run(u"文科总分"_s), u"180"_s);
}

TEST_F(Totals, ATotalThatHasNoColumnFailsAtEachAccessAndItsZAndTStand)
{
    exam(u"语文+数学"_s, {});
    student(1, {{u"语文"_s, 100}, {u"数学"_s, -1}, {u"语文Z分"_s, 1.0}, {u"语文T分"_s, 60.0}});
    student(2, {});
    test.execute(u"ALTER TABLE 成绩表 DROP COLUMN 文科总分"_s);
    EXPECT_EQ(run(u"文科总分Z分, 文科总分T分"_s), u"1.5|90 / 0|0"_s);
    // First row: set to 0, one term met. Second: set to 0, none met, set to -1.
    const QString message = u"没有名为“文科总分”的列。"_s + tag;
    EXPECT_EQ(test.dialogs.failures, QStringList(4, message));
}

TEST(TotalsOfALibraryWithoutTotals, ChangeNothing)
{
    TestLibrary test({u"语文"_s});
    test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 100}});
    test.addStudent(1, 1, u"甲"_s, u"理"_s);
    test.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 90}});
    test.reload();
    const QString before = test.rows(u"select * from 成绩表"_s);
    scoring::Scoring(test.scores).JiSuanZF(u"期中"_s);
    EXPECT_EQ(test.rows(u"select * from 成绩表"_s), before);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

} // namespace
