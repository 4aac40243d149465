#include "maintenance/ScoreCorrection.h"

#include <gtest/gtest.h>

#include "support/OtherProgram.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using maintenance::ScoreCorrection;
using Result = ScoreCorrection::Result;

const QString storedText = u"保存新成绩成功！"_s;

class Corrections : public testing::Test
{
protected:
    Corrections()
    {
        test.addStudent(1, 1, u"甲"_s, u"文"_s);
        test.addStudent(1, 2, u"乙"_s, u"文"_s);
        test.addStudent(3, 1, u"丙"_s, u"理"_s);
        test.addExam(u"期中"_s, u"文"_s, 1,
                     {{u"语文"_s, 150}, {u"数学"_s, 90.1}, {u"总分"_s, u"语文+数学"_s}});
        test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 100}});
        test.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 70}, {u"数学"_s, 60.5}});
        test.addScores(u"期中"_s, 1, 2, {{u"语文"_s, 80}, {u"数学"_s, 50}});
        test.addScores(u"期中"_s, 3, 1, {{u"语文"_s, 60}});
        test.reload();
    }

    static ScoreCorrection::Place place(const QString& classNumber, const QString& number,
                                        const QString& subject = u"语文"_s,
                                        const QString& exam = u"期中"_s)
    {
        return {exam, classNumber, number, subject};
    }

    QString shown(const ScoreCorrection::Place& place)
    {
        const auto found = correction.ShowCJ(place);
        return found ? found->name + u'|' + found->score : u"as before"_s;
    }

    Result save(const QString& score, const QString& subject = u"语文"_s)
    {
        return correction.save(place(u"1"_s, u"1"_s, subject), score);
    }

    QString scores() { return test.rows(u"select 语文, 数学 from 成绩表"_s); }

    support::TestLibrary test{{u"语文"_s, u"数学"_s, u"总分"_s}};
    ScoreCorrection correction{test.scores};
    const QString before = u"70|60.5 / 80|50 / 60|NULL"_s;
};

TEST_F(Corrections, ShowTheNameAndTheScoreOfTheSubject)
{
    EXPECT_EQ(shown(place(u"1"_s, u"1"_s)), u"甲|70"_s);
    EXPECT_EQ(shown(place(u"1"_s, u"1"_s, u"数学"_s)), u"甲|60.5"_s);
    EXPECT_EQ(shown(place(u"3"_s, u"1"_s, u"数学"_s)), u"丙|"_s) << "never entered";
}

TEST_F(Corrections, ShowTwoEmptyFieldsForAnUnknownClassAndNumber)
{
    EXPECT_EQ(shown(place(u"9"_s, u"9"_s)), u"|"_s);
    EXPECT_EQ(shown(place(u"1"_s, u"1"_s, u"语文"_s, u"期末"_s)), u"|"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(Corrections, ShowNothingNewAsLongAsClassOrNumberAreEmpty)
{
    EXPECT_EQ(shown(place(u""_s, u"1"_s)), u"as before"_s);
    EXPECT_EQ(shown(place(u"1"_s, u""_s)), u"as before"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(Corrections, RefuseAClassOrNumberThatIsNoNumberWithTheTag)
{
    for (const QString& text : {u"高一"_s, u"1 or 1=1"_s, u"1'"_s, u"1--"_s}) {
        test.dialogs.shown.clear();
        const QString refused = u"“"_s + text + u"”不是班级或学号，只能是数字。"_s;
        EXPECT_EQ(shown(place(text, u"1"_s)), u"|"_s);
        EXPECT_EQ(correction.save(place(u"1"_s, text), u"9"_s), Result::Failed);
        EXPECT_EQ(test.dialogs.shown,
                  (QStringList{refused + u" - Sub ShowCJ/FormXiuGaiChengJi"_s,
                               refused + u" - Private Sub TextCJ_KeyUp/FormXiuGaiChengJi"_s}));
    }
    EXPECT_EQ(scores(), before);
}

TEST_F(Corrections, OfAnExamWithAnApostropheAreRefusedByTheStatement)
{
    test.addExam(u"O'Neil"_s, u"文"_s, 2, {{u"语文"_s, 100}});
    test.addScores(u"O'Neil"_s, 1, 1, {{u"语文"_s, 50}});
    EXPECT_EQ(shown(place(u"1"_s, u"1"_s, u"语文"_s, u"O'Neil"_s)), u"|"_s);
    EXPECT_EQ(correction.save(place(u"1"_s, u"1"_s, u"语文"_s, u"O'Neil"_s), u"9"_s),
              Result::Failed);
    ASSERT_EQ(test.dialogs.failures.size(), 2);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(u" - Sub ShowCJ/FormXiuGaiChengJi"_s));
}

TEST_F(Corrections, StoreAScoreAndSaySo)
{
    EXPECT_EQ(save(u"95.5"_s), Result::Stored);
    EXPECT_EQ(scores(), u"95.5|60.5 / 80|50 / 60|NULL"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{storedText});
    EXPECT_EQ(shown(place(u"1"_s, u"1"_s)), u"甲|95.5"_s);
}

TEST_F(Corrections, TakeTheFullMarkItselfComparedAsA32BitFloat)
{
    EXPECT_EQ(save(u"150"_s), Result::Stored);
    EXPECT_EQ(save(u"90.1"_s, u"数学"_s), Result::Stored);
    EXPECT_EQ(save(u"0"_s), Result::Stored);
    EXPECT_EQ(scores(), u"0|90.1 / 80|50 / 60|NULL"_s);
}

TEST_F(Corrections, TakeTheNumberAtTheHeadOfAText)
{
    for (const QString& text : {u"85分"_s, u" +8 5.0x"_s})
        EXPECT_EQ(save(text), Result::Stored);
    EXPECT_EQ(shown(place(u"1"_s, u"1"_s)), u"甲|85"_s);
    EXPECT_EQ(save(u".5"_s), Result::Stored);
    EXPECT_EQ(shown(place(u"1"_s, u"1"_s)), u"甲|0.5"_s);
}

TEST_F(Corrections, RefuseANegativeScore)
{
    EXPECT_EQ(save(u"-1"_s), Result::Refused);
    EXPECT_EQ(test.dialogs.shown,
              QStringList{u"成绩不能为负！\n\n输入的成绩不合适，请重新输入！"_s});
    EXPECT_EQ(scores(), before);
}

TEST_F(Corrections, RefuseMoreThanTheFullMarkOfTheStudentsStream)
{
    EXPECT_EQ(save(u"150.5"_s), Result::Refused);
    EXPECT_EQ(save(u"90.2"_s, u"数学"_s), Result::Refused);
    EXPECT_EQ(correction.save(place(u"3"_s, u"1"_s), u"101"_s), Result::Refused);
    const QString end = u"\n\n输入的成绩不合适，请重新输入！"_s;
    EXPECT_EQ(test.dialogs.shown, (QStringList{u"成绩不能超过语文满分 150 ！"_s + end,
                                               u"成绩不能超过数学满分 90.1 ！"_s + end,
                                               u"成绩不能超过语文满分 100 ！"_s + end}));
    EXPECT_EQ(test.dialogs.look(u"满分 100"_s).icon, runtime::Icon::Warning);
    EXPECT_EQ(scores(), before);
}

TEST_F(Corrections, OfASubjectWithoutAFullMarkTakeOnlyZero)
{
    EXPECT_EQ(correction.save(place(u"3"_s, u"1"_s, u"数学"_s), u"1"_s), Result::Refused);
    EXPECT_TRUE(test.dialogs.shown.first().startsWith(u"成绩不能超过数学满分 0 ！"_s));
    EXPECT_EQ(correction.save(place(u"3"_s, u"1"_s, u"数学"_s), u"0"_s), Result::Stored);
}

TEST_F(Corrections, OfAnUnknownClassAndNumberChangeNothingAndReportNothing)
{
    for (const QString& score : {u"50"_s, u"999"_s, u"abc"_s}) {
        EXPECT_EQ(correction.save(place(u"9"_s, u"9"_s), score), Result::NotFound);
        EXPECT_EQ(correction.save(place(u"1"_s, u"9"_s), score), Result::NotFound);
        EXPECT_EQ(correction.save(place(u""_s, u""_s), score), Result::NotFound);
    }
    EXPECT_EQ(test.dialogs.shown, QStringList());
    EXPECT_EQ(scores(), before);
}

TEST_F(Corrections, AskWhatATextWithoutANumberStandsFor)
{
    const QString question = u"“abc”不是分数。要怎样保存？"_s;
    test.dialogs.expect(question, u"取消"_s);
    EXPECT_EQ(save(u"abc"_s), Result::Refused);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"提示: "_s + question});
    EXPECT_EQ(test.dialogs.safeOf(question), u"取消"_s);
    EXPECT_EQ(scores(), before);
    test.dialogs.expect(question, u"存为 0 分"_s);
    EXPECT_EQ(save(u"abc"_s), Result::Stored);
    EXPECT_EQ(shown(place(u"1"_s, u"1"_s)), u"甲|0"_s);
    test.dialogs.expect(u"“缺考”不是分数。"_s, u"存为缺考"_s);
    EXPECT_EQ(save(u"缺考"_s), Result::Stored);
    EXPECT_EQ(shown(place(u"1"_s, u"1"_s)), u"甲|-1"_s);
    test.dialogs.expect(u"没有填写成绩。要怎样保存？"_s, u"取消"_s);
    EXPECT_EQ(save(u""_s), Result::Refused);
    test.dialogs.expect(u"不是分数"_s, u"取消"_s);
    save(QString(10'000, u'x'));
    EXPECT_LT(test.dialogs.questions.last().size(), 100);
}

TEST_F(Corrections, OfAStudentWhoseClassHasNobodyLeftGoByTheOtherStream)
{
    test.execute(u"delete from 信息表 where 班级=3"_s);
    EXPECT_EQ(correction.save(place(u"3"_s, u"1"_s), u"120"_s), Result::Stored);
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(u" - Function GetBJKL/Mdl_MDB"_s));
}

TEST_F(Corrections, OfALibraryThatCannotBeWrittenSayNoSuccess)
{
    support::OtherProgram other(test.scores.LibPath);
    other.run("begin immediate");
    EXPECT_EQ(save(u"90"_s), Result::Failed);
    other.run("rollback");
    ASSERT_EQ(test.dialogs.shown.size(), 1);
    EXPECT_TRUE(test.dialogs.shown[0].endsWith(u" - Private Sub TextCJ_KeyUp/FormXiuGaiChengJi"_s));
    EXPECT_EQ(scores(), before);
}

TEST_F(Corrections, OfASubjectWhoseColumnIsGoneAreToldAndNotSaid)
{
    test.execute(u"ALTER TABLE 成绩表 DROP COLUMN 语文"_s);
    EXPECT_EQ(shown(place(u"1"_s, u"1"_s)), u"甲|"_s);
    EXPECT_EQ(save(u"90"_s), Result::Failed);
    EXPECT_EQ(
        test.dialogs.shown,
        (QStringList{u"没有名为“语文”的列。 - Sub ShowCJ/FormXiuGaiChengJi"_s,
                     u"没有名为“语文”的列。 - Private Sub TextCJ_KeyUp/FormXiuGaiChengJi"_s}));
}

TEST_F(Corrections, AreComputedAnewOnlyIfTheUserWantsIt)
{
    const QString question = u"已修改成绩，是否重新计算总分？"_s;
    runtime::NoProgress progress;
    const auto ranks = [this] {
        return test.rows(
            u"select 总分, 总分年名, 总分班名, 语文班名 from 成绩表 where 科类='文'"_s);
    };
    test.dialogs.expect(question, runtime::Answer::Ok);
    EXPECT_TRUE(correction.finish(u"期中"_s, progress));
    EXPECT_EQ(ranks(), u"130.5|1|1|2 / 130|2|2|1"_s);
    EXPECT_EQ(save(u"69"_s), Result::Stored);
    EXPECT_EQ(ranks(), u"130.5|1|1|2 / 130|2|2|1"_s) << "stale until the next run";
    test.dialogs.expect(question, runtime::Answer::Cancel);
    EXPECT_FALSE(correction.finish(u"期中"_s, progress));
    EXPECT_EQ(test.dialogs.look(question),
              (support::BoxLook{u"提示"_s, runtime::Buttons::OkCancel, runtime::Icon::Question}));
    EXPECT_EQ(ranks(), u"130.5|1|1|2 / 130|2|2|1"_s);
    test.dialogs.expect(question, runtime::Answer::Ok);
    EXPECT_TRUE(correction.finish(u"期中"_s, progress));
    EXPECT_EQ(ranks(), u"129.5|2|2|2 / 130|1|1|1"_s);
}

TEST_F(Corrections, OfOtherExamsStayUncomputed)
{
    test.addExam(u"期末"_s, u"文"_s, 2, {{u"语文"_s, 150}, {u"总分"_s, u"语文"_s}});
    test.addScores(u"期末"_s, 1, 1, {{u"语文"_s, 10}});
    correction.save(place(u"1"_s, u"1"_s, u"语文"_s, u"期末"_s), u"99"_s);
    test.dialogs.expect(u"是否重新计算总分"_s, runtime::Answer::Ok);
    runtime::NoProgress progress;
    EXPECT_TRUE(correction.finish(u"期中"_s, progress));
    EXPECT_EQ(test.rows(u"select 语文, 总分 from 成绩表 where 考试名称='期末'"_s), u"99|NULL"_s);
}

/// 取消 pressed at once.
class Cancelling : public runtime::NoProgress
{
public:
    bool cancelled() const override { return true; }
};

TEST_F(Corrections, WhoseComputingIsCancelledLeaveTheExam)
{
    test.dialogs.expect(u"是否重新计算总分"_s, runtime::Answer::Ok);
    Cancelling progress;
    EXPECT_FALSE(correction.finish(u"期中"_s, progress));
    EXPECT_EQ(test.rows(u"select distinct 总分 from 成绩表"_s), u"NULL"_s);
}

} // namespace
