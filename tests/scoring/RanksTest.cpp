#include "scoring/Ranks.h"

#include <gtest/gtest.h>

#include "scoring/Scoring.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

class Ranks : public testing::Test
{
protected:
    Ranks() { test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 100}, {u"总分"_s, u"语文"_s}}); }

    void student(int classNumber, int number, const runtime::Value& score,
                 const QString& stream = u"理"_s)
    {
        test.addStudent(classNumber, number, u"学生"_s, stream);
        test.addScores(u"期中"_s, classNumber, number, {{u"语文"_s, score}});
    }

    QString run()
    {
        test.reload();
        scoring.PanNJBjMC(u"期中"_s);
        return test.rows(u"select 语文年名, 语文班名 from 成绩表"_s);
    }

    TestLibrary test{{u"语文"_s, u"总分"_s}};
    scoring::Scoring scoring{test.scores};
};

TEST_F(Ranks, EqualScoresShareTheRankAndTheNextTakesItsPosition)
{
    student(1, 1, 90);
    student(1, 2, 80);
    student(1, 3, 90);
    EXPECT_EQ(run(), u"1|1 / 3|3 / 1|1"_s);
}

TEST_F(Ranks, ASingleStudentIsFirst)
{
    student(1, 1, 0);
    EXPECT_EQ(run(), u"1|1"_s);
}

TEST_F(Ranks, AbsentStudentsHoldMinusOneAndDisturbNobody)
{
    student(1, 1, -1);
    student(1, 2, 60);
    student(2, 1, 70);
    EXPECT_EQ(run(), u"-1|-1 / 2|1 / 1|1"_s);
}

TEST_F(Ranks, ANegativeScoreStandsInItsRankColumnsAsItIs)
{
    student(1, 1, -5);
    student(1, 2, 60);
    student(1, 3, -1);
    EXPECT_EQ(run(), u"-5|-5 / 1|1 / -1|-1"_s);
}

TEST_F(Ranks, IfAllAreAbsentEveryRankIsMinusOne)
{
    student(1, 1, -1);
    student(1, 2, -1);
    EXPECT_EQ(run(), u"-1|-1 / -1|-1"_s);
}

TEST_F(Ranks, AScoreThatWasNeverEnteredTakesTheRankInForce)
{
    student(1, 1, {});
    student(1, 2, 60);
    student(1, 3, 50);
    EXPECT_EQ(run(), u"2|2 / 1|1 / 2|2"_s);
}

TEST_F(Ranks, AnAbsentStudentDoesNotChangeTheRankInForce)
{
    student(1, 1, {});
    student(1, 2, 60);
    student(1, 3, -1);
    student(1, 4, 70);
    EXPECT_EQ(run(), u"2|2 / 2|2 / -1|-1 / 1|1"_s);
}

TEST_F(Ranks, WithoutAnyScoreAllAreFirst)
{
    student(1, 1, {});
    student(1, 2, {});
    EXPECT_EQ(run(), u"1|1 / 1|1"_s);
}

TEST_F(Ranks, StreamsAreRankedApartEvenInClassesOfTheSameNumber)
{
    student(1, 1, 60);
    student(1, 2, 90, u"文"_s);
    student(1, 3, 70);
    EXPECT_EQ(run(), u"2|2 / 1|1 / 1|1"_s);
}

TEST_F(Ranks, AClassThatTheStudentListNoLongerHasIsNotRankedByClass)
{
    student(1, 1, 60);
    student(2, 1, 70);
    test.execute(u"update 信息表 set 班级=1, 学号=2 where 班级=2"_s);
    EXPECT_EQ(run(), u"2|1 / 1|NULL"_s);
}

TEST_F(Ranks, TotalsAreRankedByTInTheGradeAndAbsentOnesToo)
{
    student(1, 1, 60);
    student(1, 2, -1);
    student(2, 1, 80);
    test.execute(u"update 成绩表 set 总分=语文, 总分T分=语文"_s);
    run();
    EXPECT_EQ(test.rows(u"select 总分年名, 总分班名, 总分T分年名 from 成绩表"_s),
              u"2|1|2 / -1|-1|3 / 1|1|1"_s);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(Ranks, OneGroupCanBeRankedByItself)
{
    student(1, 1, 60);
    student(2, 1, 80);
    test.reload();
    scoring.PaiMC(u"期中"_s, u"理"_s, 2);
    EXPECT_EQ(test.rows(u"select 语文年名, 语文班名 from 成绩表"_s), u"NULL|NULL / NULL|1"_s);
    scoring.PaiMC(u"期中"_s, u"理"_s, 0);
    EXPECT_EQ(test.rows(u"select 语文年名, 语文班名 from 成绩表"_s), u"2|NULL / 1|1"_s);
}

TEST_F(Ranks, AnExamWithoutRowsIsPassedOverInSilence)
{
    test.addStudent(1, 1, u"甲"_s, u"理"_s);
    EXPECT_EQ(run(), u""_s);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(Ranks, AMissingRankColumnCostsAMessageForEachRow)
{
    student(1, 1, 60);
    student(1, 2, 80);
    test.execute(u"ALTER TABLE 成绩表 DROP COLUMN 语文年名"_s);
    test.reload();
    scoring.PanNJBjMC(u"期中"_s);
    EXPECT_EQ(test.dialogs.failures,
              (QStringList{u"没有名为“语文年名”的列。 - Sub PaiMC/Mdl_MDB"_s,
                           u"没有名为“语文年名”的列。 - Sub PaiMC/Mdl_MDB"_s}));
    EXPECT_EQ(test.rows(u"select 语文班名 from 成绩表"_s), u"2 / 1"_s);
}

TEST_F(Ranks, WithoutTheScoresOfATotalItsTIsStillRanked)
{
    student(1, 1, 60);
    student(1, 2, 80);
    test.execute(u"update 成绩表 set 总分T分=语文"_s);
    test.execute(u"ALTER TABLE 成绩表 DROP COLUMN 总分"_s);
    run();
    EXPECT_EQ(test.rows(u"select 总分年名, 总分T分年名 from 成绩表"_s), u"NULL|2 / NULL|1"_s);
    EXPECT_EQ(test.dialogs.failures, QStringList{u"没有名为“总分”的列。 - Sub PaiMC/Mdl_MDB"_s});
}

TEST_F(Ranks, AColumnThatIsMissingIsToldOnceForEachStreamHoweverManyClassesItHas)
{
    student(1, 1, 60, u"文"_s);
    student(2, 1, 70);
    student(3, 1, 80);
    test.addExam(u"期中"_s, u"文"_s, 1, {{u"语文"_s, 100}});
    test.reload();
    test.execute(u"ALTER TABLE 成绩表 DROP COLUMN 语文"_s);
    scoring.PanNJBjMC(u"期中"_s);
    const QString message = u"没有名为“语文”的列。 - Sub PaiMC/Mdl_MDB"_s;
    EXPECT_EQ(test.dialogs.failures, (QStringList{message, message}));
}

TEST_F(Ranks, ATermOfAFormulaThatIsNoSubjectIsToldOnceForTheGradeAndAllClasses)
{
    student(1, 1, 60);
    student(2, 1, 70);
    test.execute(u"update 考试名称表 set 总分='语文+体育'"_s);
    EXPECT_EQ(run(), u"2|1 / 1|1"_s);
    ASSERT_EQ(test.dialogs.failures.size(), 1) << test.dialogs.failures.join(u'\n').toStdString();
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(u" - Function GetZFMF/Mdl_MDB"_s));
}

TEST_F(Ranks, OtherExamsKeepTheirs)
{
    student(1, 1, 60);
    test.addExam(u"期末"_s, u"理"_s, 2, {{u"语文"_s, 100}});
    test.addScores(u"期末"_s, 1, 1, {{u"语文"_s, 90}, {u"语文年名"_s, 7}, {u"语文班名"_s, 8}});
    EXPECT_EQ(run(), u"1|1 / 7|8"_s);
}

TEST_F(Ranks, EveryStreamOfTheStudentListIsRankedWhateverTheCatalogueHolds)
{
    student(1, 1, 60);
    student(2, 1, 70, u"文"_s);
    student(3, 1, 80, u"艺"_s);
    test.addExam(u"期中"_s, u"艺"_s, 1, {{u"语文"_s, 100}});
    EXPECT_EQ(run(), u"1|1 / 1|1 / 1|1"_s);
    EXPECT_EQ(test.scores.catalogue.Streams, QStringList());
}

TEST_F(Ranks, AnExamOfOneStreamLendsItsSubjectsToTheOtherButNoTotals)
{
    student(1, 1, 60, u"文"_s);
    student(1, 2, 70, u"文"_s);
    test.execute(u"update 成绩表 set 总分=语文"_s);
    EXPECT_EQ(run(), u"2|2 / 1|1"_s);
    EXPECT_EQ(test.rows(u"select 总分年名 from 成绩表"_s), u"2 / 1"_s);
    // The other way round the full marks of totals are not looked for in the other stream.
    test.execute(u"update 考试名称表 set 科类='文'"_s);
    test.execute(u"update 信息表 set 科类='理'"_s);
    test.execute(u"update 成绩表 set 科类='理', 语文年名=NULL, 语文班名=NULL, 总分年名=NULL"_s);
    EXPECT_EQ(run(), u"2|2 / 1|1"_s);
    EXPECT_EQ(test.rows(u"select 总分年名 from 成绩表"_s), u"NULL / NULL"_s);
}

TEST_F(Ranks, ASubjectWithoutFullMarksWasNotExamined)
{
    student(1, 1, 60);
    test.execute(u"update 考试名称表 set 语文=0"_s);
    EXPECT_EQ(run(), u"NULL|NULL"_s);
    test.execute(u"update 考试名称表 set 语文=NULL"_s);
    EXPECT_EQ(run(), u"NULL|NULL"_s);
}

TEST_F(Ranks, TheChosenCategoriesDoNotNarrowThem)
{
    student(1, 1, 60);
    student(1, 2, 90);
    test.execute(u"update 成绩表 set 类别代码=学号"_s);
    test.scores.settings.CategoryFilter = u" and (类别代码=1)"_s;
    EXPECT_EQ(run(), u"2|2 / 1|1"_s);
}

struct RankCase
{
    QStringList values;
    QStringList ranks;
};

TEST(MyPaiXU, RanksTextsByTheirNumbers)
{
    const RankCase cases[] = {
        {{u"90"_s, u"90"_s, u"80"_s}, {u"1"_s, u"1"_s, u"3"_s}},
        {{u"70.5"_s, u""_s, u"71"_s}, {u"2"_s, u""_s, u"1"_s}},
        {{u"100"_s, u"9"_s, u"20"_s}, {u"1"_s, u"3"_s, u"2"_s}},
        {{u"-1"_s, u""_s}, {u"2"_s, u""_s}},
        {{u"5"_s}, {u"1"_s}},
        {{}, {}},
    };
    for (const RankCase& one : cases) {
        QStringList values = one.values;
        scoring::MyPaiXU(values);
        EXPECT_EQ(values, one.ranks);
    }
}

TEST_F(Ranks, AScoreThatWasNeverEnteredStandsBehindAScoreOfNought)
{
    student(1, 1, {});
    student(1, 2, 60);
    student(1, 3, 0);
    EXPECT_EQ(run(), u"2|2 / 1|1 / 2|2"_s);
}

TEST_F(Ranks, AStreamWithoutRowsCostsNoMessageForAColumnThatIsGone)
{
    student(1, 1, 60);
    test.addStudent(2, 1, u"文科生"_s, u"文"_s);
    test.addExam(u"期中"_s, u"文"_s, 1, {{u"语文"_s, 100}});
    test.execute(u"ALTER TABLE 成绩表 DROP COLUMN 语文"_s);
    run();
    EXPECT_EQ(test.dialogs.failures, QStringList{u"没有名为“语文”的列。 - Sub PaiMC/Mdl_MDB"_s});
}

} // namespace
