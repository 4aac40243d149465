#include <gtest/gtest.h>

#include "scoring/Scoring.h"
#include "scoring/StandardScores.h"
#include "support/FreeFile.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

const QString tag = u" - Sub Zfen/Mdl_MDB"_s;

/// A library with one exam "期中" of 语文 and 数学 in the stream 理.
class StandardScores : public testing::Test
{
protected:
    StandardScores() { test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 100}, {u"数学"_s, 150}}); }

    /// One student with a score in 语文; Null for none.
    void student(int number, const runtime::Value& score)
    {
        test.addStudent(1, number, u"学生%1"_s.arg(number), u"理"_s);
        test.addScores(u"期中"_s, 1, number, {{u"语文"_s, score}});
    }

    void run()
    {
        test.reload();
        scoring.Zfen(u"期中"_s);
    }

    library::Settings& settings() { return test.scores.settings; }
    QString chinese() { return test.rows(u"select 语文Z分, 语文T分 from 成绩表"_s); }

    TestLibrary test{{u"语文"_s, u"数学"_s}};
    scoring::Scoring scoring{test.scores};
};

TEST_F(StandardScores, AreComputedFromOneStateOfTheLibrary)
{
    student(1, 60);
    student(2, 80);
    test.execute(u"update 设置表 set 设置='50+10z' where 名称='T分'"_s);
    test.reload();
    const auto isFree = [this] { return support::isFree(test.scores.Conn.path()); };
    QList<bool> whileItRan;
    QList<bool> whileItWasTold;
    runtime::NoProgress none;
    runtime::PartProgress progress(none, [&](const QString&, int, int) { whileItRan << isFree(); });
    const runtime::BeforeDialogs beforeBox([&] { whileItWasTold << isFree(); });
    scoring.score(u"期中"_s, progress);
    EXPECT_EQ(whileItRan, QList<bool>(4, false));
    EXPECT_EQ(whileItWasTold, QList<bool>{true}) << "a box keeps no other program waiting";
}

TEST_F(StandardScores, AnAbsentStudentIsLeftOutOfTheMeanButScoredAsZero)
{
    student(1, 60);
    student(2, 80);
    student(3, -1);
    run();
    EXPECT_EQ(chinese(), u"-0.71|43 / 0.71|57 / -4.95|0"_s);
    EXPECT_EQ(scoring::GetPJF(test.scores, u"期中"_s, u"语文"_s, u"理"_s), 70);
    EXPECT_NEAR(scoring::GetBZC(test.scores, u"期中"_s, u"语文"_s, u"理"_s).toDouble(),
                14.142135623731, 1e-9);
}

TEST_F(StandardScores, ASubjectThatNobodySatIsLeftUntouched)
{
    student(1, -1);
    student(2, -1);
    test.execute(u"update 成绩表 set 语文Z分=9, 语文T分=99"_s);
    run();
    EXPECT_EQ(chinese(), u"9|99 / 9|99"_s);
}

TEST_F(StandardScores, AMeanOfZeroLeavesTheColumnsAsTheyWere)
{
    student(1, 0);
    student(2, 0);
    run();
    EXPECT_EQ(chinese(), u"NULL|NULL / NULL|NULL"_s);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(StandardScores, AScoreThatWasNeverEnteredGivesNothing)
{
    student(1, 60);
    student(2, 80);
    student(3, {});
    run();
    EXPECT_EQ(chinese(), u"-0.71|43 / 0.71|57 / NULL|NULL"_s);
}

TEST_F(StandardScores, OneSitterGivesNobodyAZ)
{
    student(1, 60);
    student(2, -1);
    run();
    EXPECT_EQ(chinese(), u"NULL|NULL / NULL|NULL"_s);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(StandardScores, EqualScoresFailAtEachRowAndTheFirstRowTakesTheOffsetAlone)
{
    student(1, 70);
    student(2, 70);
    run();
    EXPECT_EQ(chinese(), u"NULL|50 / NULL|50"_s);
    EXPECT_EQ(test.dialogs.failures, (QStringList{u"除数为零。"_s + tag, u"除数为零。"_s + tag}));
}

TEST_F(StandardScores, AFailedDivisionTakesTheZThatTheRunLeftBehind)
{
    student(1, 60);
    student(2, 80);
    test.execute(u"update 成绩表 set 数学=75"_s);
    run();
    EXPECT_EQ(test.rows(u"select 数学Z分, 数学T分 from 成绩表"_s), u"0.71|57 / 0.71|57"_s);
    EXPECT_EQ(test.dialogs.failures.size(), 2);
}

TEST_F(StandardScores, TheZLeftBehindGoesOnIntoTheNextStream)
{
    test.addExam(u"期中"_s, u"文"_s, 1, {{u"语文"_s, 100}});
    test.addStudent(2, 1, u"文一"_s, u"文"_s);
    test.addStudent(2, 2, u"文二"_s, u"文"_s);
    test.addScores(u"期中"_s, 2, 1, {{u"语文"_s, 80}});
    test.addScores(u"期中"_s, 2, 2, {{u"语文"_s, 90}});
    student(1, 70);
    student(2, 70);
    run();
    EXPECT_EQ(chinese(), u"-0.71|43 / 0.71|57 / 0.71|57 / 0.71|57"_s);
}

TEST_F(StandardScores, ANullLeftBehindMakesTNullToo)
{
    student(1, 70);
    student(2, {});
    student(3, 70);
    run();
    EXPECT_EQ(chinese(), u"NULL|50 / NULL|NULL / NULL|NULL"_s);
    EXPECT_EQ(test.dialogs.failures.size(), 2);
}

TEST_F(StandardScores, EachStreamHasAMeanOfItsOwn)
{
    test.addExam(u"期中"_s, u"文"_s, 1, {{u"语文"_s, 100}});
    test.addStudent(2, 1, u"文一"_s, u"文"_s);
    test.addStudent(2, 2, u"文二"_s, u"文"_s);
    test.addScores(u"期中"_s, 2, 1, {{u"语文"_s, 80}});
    test.addScores(u"期中"_s, 2, 2, {{u"语文"_s, 90}});
    student(1, 60);
    student(2, 80);
    run();
    EXPECT_EQ(chinese(), u"-0.71|43 / 0.71|57 / -0.71|43 / 0.71|57"_s);
}

TEST_F(StandardScores, TheMeanOfAClassCoversThatClassAlone)
{
    student(1, 60);
    student(2, -1);
    test.addStudent(2, 1, u"二班"_s, u"理"_s);
    test.addScores(u"期中"_s, 2, 1, {{u"语文"_s, 90}});
    test.reload();
    EXPECT_EQ(scoring::GetBJPJF(test.scores, u"期中"_s, u"语文"_s, u"理"_s, 1), 60);
    EXPECT_EQ(scoring::GetBJPJF(test.scores, u"期中"_s, u"语文"_s, u"理"_s, 2), 90);
    EXPECT_EQ(scoring::GetBJPJF(test.scores, u"期中"_s, u"语文"_s, u"理"_s, 3), 0);
}

struct Conversion
{
    QString setting;
    double factor;
    double offset;
};

TEST_F(StandardScores, TheConversionIsReadWithBlanksAndInEitherCase)
{
    const Conversion conversions[] = {
        {u"10z+50"_s, 10, 50}, {u"10 z + 50"_s, 10, 50}, {u"15Z+100"_s, 15, 100},
        {u"2.5z+0"_s, 2.5, 0}, {u"z+50"_s, 0, 50},
    };
    for (const Conversion& conversion : conversions) {
        test.execute(u"update 设置表 set 设置='%1' where 名称='T分'"_s.arg(conversion.setting));
        scoring::GetZtoT(test.scores);
        EXPECT_EQ(settings().TFactor, conversion.factor) << conversion.setting.toStdString();
        EXPECT_EQ(settings().TOffset, conversion.offset) << conversion.setting.toStdString();
    }
}

TEST_F(StandardScores, AConversionInAnotherOrderIsRefusedAndTheOldOneStays)
{
    scoring::GetZtoT(test.scores);
    test.execute(u"update 设置表 set 设置='50+10z' where 名称='T分'"_s);
    scoring::GetZtoT(test.scores);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"T分转换公式设置不正确！"_s});
    EXPECT_EQ(settings().TFactor, 10);
    EXPECT_EQ(settings().TOffset, 50);
}

TEST_F(StandardScores, WithoutTheSettingTheOldConversionStaysAfterAMessage)
{
    scoring::GetZtoT(test.scores);
    test.execute(u"delete from 设置表 where 名称='T分'"_s);
    scoring::GetZtoT(test.scores);
    EXPECT_EQ(test.dialogs.failures, QStringList{u"没有当前记录。 - Sub GetZtoT/Mdl_MDB"_s});
    EXPECT_EQ(settings().TFactor, 10);
    EXPECT_EQ(settings().TOffset, 50);
}

TEST_F(StandardScores, TheConversionIsThatOfTheProgramAndOutlivesItsScoringAndItsLibrary)
{
    TestLibrary other({u"语文"_s});
    student(1, 60);
    student(2, 80);
    run();
    test.execute(u"update 设置表 set 设置='50+10z' where 名称='T分'"_s);
    scoring::Scoring(test.scores).Zfen(u"期中"_s);
    EXPECT_EQ(chinese(), u"-0.71|43 / 0.71|57"_s);
    test.scores.LibPath = other.scores.LibPath;
    test.scores.OpenDB();
    EXPECT_EQ(settings().TFactor, 10);
    EXPECT_EQ(settings().TOffset, 50);
}

TEST_F(StandardScores, ANegativeScoreCountsAsZeroHoweverLowItIs)
{
    student(1, 60);
    student(2, 80);
    student(3, -5);
    run();
    EXPECT_EQ(chinese(), u"-0.71|43 / 0.71|57 / -4.95|0"_s);
}

TEST_F(StandardScores, AMeanThatCannotBeReadIsZeroAfterAMessage)
{
    EXPECT_EQ(scoring::GetPJF(test.scores, u"期中"_s, u"没有"_s, u"理"_s), 0);
    EXPECT_EQ(scoring::GetBJPJF(test.scores, u"期中"_s, u"没有"_s, u"理"_s, 1), 0);
    ASSERT_EQ(test.dialogs.failures.size(), 2);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(u" - Function GetPJF/Mdl_MDB"_s));
    EXPECT_TRUE(test.dialogs.failures[1].endsWith(u" - Function GetBJPJF/Mdl_MDB"_s));
}

TEST_F(StandardScores, AMissingZColumnCostsAMessageForEachRowAndTStands)
{
    student(1, 60);
    student(2, 80);
    test.execute(u"ALTER TABLE 成绩表 DROP COLUMN 语文Z分"_s);
    run();
    EXPECT_EQ(test.rows(u"select 语文T分 from 成绩表"_s), u"43 / 57"_s);
    EXPECT_EQ(test.dialogs.failures, QStringList(2, u"没有名为“语文Z分”的列。"_s + tag));
}

TEST_F(StandardScores, AMissingScoreColumnFailsInMeanAndDeviationAndLeavesTheRestAlone)
{
    student(1, 60);
    test.execute(u"update 成绩表 set 语文Z分=9"_s);
    test.execute(u"ALTER TABLE 成绩表 DROP COLUMN 语文"_s);
    run();
    EXPECT_EQ(chinese(), u"9|NULL"_s);
    ASSERT_EQ(test.dialogs.failures.size(), 2);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(u" - Function GetPJF/Mdl_MDB"_s));
    EXPECT_TRUE(test.dialogs.failures[1].endsWith(u" - Function GetBZC/Mdl_MDB"_s));
}

TEST_F(StandardScores, AnExamOfTheOtherStreamAloneLendsItsSubjectsToTheArtsOnly)
{
    test.addStudent(2, 1, u"文一"_s, u"文"_s);
    test.addStudent(2, 2, u"文二"_s, u"文"_s);
    test.addScores(u"期中"_s, 2, 1, {{u"语文"_s, 60}});
    test.addScores(u"期中"_s, 2, 2, {{u"语文"_s, 80}});
    run();
    EXPECT_EQ(chinese(), u"-0.71|43 / 0.71|57"_s);
    test.execute(u"update 考试名称表 set 科类='文'"_s);
    test.execute(u"update 信息表 set 科类='理'"_s);
    test.execute(u"update 成绩表 set 科类='理', 语文Z分=NULL, 语文T分=NULL"_s);
    run();
    EXPECT_EQ(chinese(), u"NULL|NULL / NULL|NULL"_s);
}

TEST_F(StandardScores, TheColumnsOfTotalsAreNotTouched)
{
    TestLibrary other({u"语文"_s, u"总分"_s});
    other.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 100}, {u"总分"_s, u"语文"_s}});
    for (int number = 1; number <= 2; ++number) {
        other.addStudent(1, number, u"学生"_s, u"理"_s);
        other.addScores(u"期中"_s, 1, number, {{u"语文"_s, number * 10}, {u"总分"_s, number * 10}});
    }
    other.reload();
    scoring::Scoring(other.scores).Zfen(u"期中"_s);
    EXPECT_EQ(other.rows(u"select 语文T分, 总分Z分, 总分T分 from 成绩表"_s),
              u"43|NULL|NULL / 57|NULL|NULL"_s);
}

} // namespace
