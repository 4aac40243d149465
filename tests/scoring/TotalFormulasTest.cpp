#include "scoring/TotalFormulas.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

const QString saveTag = u" - Private Sub Command1_Click/FormZFGS"_s;

/// Two exams, the second of both streams.
class TotalFormulasTest : public testing::Test
{
protected:
    TotalFormulasTest()
    {
        test.addExam(u"期末"_s, u"文"_s, 2, {{u"语文"_s, 150}, {u"文科总分"_s, u"语文"_s}});
        test.addExam(u"期末"_s, u"理"_s, 2, {{u"语文"_s, 150}, {u"文科总分"_s, u"数学"_s}});
        test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 150}});
        test.reload();
        formulas.load();
    }

    QString stored()
    {
        return test.rows(u"select 考试名称,科类,文科总分,理科总分 from 考试名称表"_s);
    }

    TestLibrary test{{u"语文"_s, u"文科总分"_s, u"数学"_s, u"理科总分"_s}};
    scoring::TotalFormulas formulas{test.scores};
};

TEST_F(TotalFormulasTest, AnExamOfTwoStreamsStandsTwice)
{
    EXPECT_EQ(formulas.exams, (QStringList{u"期中"_s, u"期末"_s, u"期末"_s}));
    EXPECT_EQ(formulas.totals, (QStringList{u"文科总分"_s, u"理科总分"_s}));
    EXPECT_EQ(formulas.subjects, (QStringList{u"语文"_s, u"数学"_s}));
}

TEST_F(TotalFormulasTest, TheFormulaShownIsThatOfTheFirstRow)
{
    EXPECT_EQ(formulas.ShowGS(u"期末"_s, u"文科总分"_s), u"语文"_s);
    EXPECT_EQ(formulas.ShowGS(u"期中"_s, u"文科总分"_s), u""_s) << "NULL is an empty text";
}

TEST_F(TotalFormulasTest, AnExamThatWentAwayGivesNoFormulaAndTheTag)
{
    EXPECT_EQ(formulas.ShowGS(u"会考"_s, u"文科总分"_s), std::nullopt);
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(u" - Sub ShowGS/FormZFGS"_s));
}

TEST_F(TotalFormulasTest, WithoutTheTableOfExamsTheOtherListsAreFilledAfterAMessage)
{
    test.execute(u"drop table 考试名称表"_s);
    formulas.load();
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(u" - Private Sub Form_Load/FormZFGS"_s));
    EXPECT_EQ(formulas.exams, QStringList());
    EXPECT_EQ(formulas.subjects, (QStringList{u"语文"_s, u"数学"_s}));
}

TEST_F(TotalFormulasTest, AFormulaGoesIntoEveryRowOfTheExams)
{
    formulas.save({u"期末"_s}, u"理科总分"_s, u"语文+数学"_s);
    EXPECT_EQ(stored(), u"期末|文|语文|语文+数学 / 期末|理|数学|语文+数学 / 期中|理|NULL|NULL"_s);
    formulas.save({u"期中"_s, u"期末"_s, u"期末"_s}, u"文科总分"_s, u"数学"_s);
    EXPECT_EQ(stored(), u"期末|文|数学|语文+数学 / 期末|理|数学|语文+数学 / 期中|理|数学|NULL"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(TotalFormulasTest, ATermThatIsNoColumnIsRefusedAndNothingSaved)
{
    const QString before = stored();
    const std::pair<QString, QString> wrong[] = {{u"语文+物理+化学"_s, u"物理"_s},
                                                 {u"语文+ 数学"_s, u" 数学"_s},
                                                 {u"语文+"_s, u""_s},
                                                 {u"语文*2"_s, u"语文*2"_s}};
    for (const auto& [formula, term] : wrong) {
        test.dialogs.shown.clear();
        formulas.save({u"期末"_s}, u"文科总分"_s, formula);
        EXPECT_EQ(test.dialogs.shown, QStringList{u"总分公式中添加的科目： "_s + term
                                                  + u" 无效！只能添加现有科目。"_s});
    }
    EXPECT_EQ(stored(), before);
}

TEST_F(TotalFormulasTest, ATotalIsAColumnAndCanBeATerm)
{
    formulas.save({u"期中"_s}, u"理科总分"_s, u"文科总分+数学"_s);
    EXPECT_EQ(formulas.ShowGS(u"期中"_s, u"理科总分"_s), u"文科总分+数学"_s);
}

TEST_F(TotalFormulasTest, AnEmptyFormulaHasNoTermToRefuse)
{
    formulas.save({u"期末"_s}, u"文科总分"_s, u""_s);
    EXPECT_EQ(stored(), u"期末|文||NULL / 期末|理||NULL / 期中|理|NULL|NULL"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(TotalFormulasTest, WithoutAnExamTheEngineRefusesTheStatement)
{
    const QString before = stored();
    formulas.save({}, u"文科总分"_s, u"语文"_s);
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(saveTag));
    EXPECT_EQ(stored(), before);
}

TEST_F(TotalFormulasTest, WithoutATotalEachRowIsAFailure)
{
    const QString before = stored();
    formulas.save({u"期末"_s}, u""_s, u"语文"_s);
    EXPECT_EQ(test.dialogs.failures.size(), 2);
    EXPECT_EQ(stored(), before);
}

TEST_F(TotalFormulasTest, AFormulaThatTheColumnCannotHoldLeavesTheFormerOne)
{
    const QString before = stored();
    const QString formula = QStringList(17, u"语文"_s).join(u'+') + u"+数学"_s;
    formulas.save({u"期中"_s}, u"文科总分"_s, formula);
    EXPECT_EQ(
        test.dialogs.failures,
        QStringList{u"“"_s + formula + u"”不能存入列“文科总分”：文字超过 50 个字符。"_s + saveTag});
    EXPECT_EQ(stored(), before);
}

TEST_F(TotalFormulasTest, FiftyCharactersFit)
{
    const QString formula = QStringList(16, u"语文"_s).join(u'+') + u"+数学"_s;
    ASSERT_EQ(formula.size(), 50);
    formulas.save({u"期中"_s}, u"文科总分"_s, formula);
    EXPECT_EQ(formulas.ShowGS(u"期中"_s, u"文科总分"_s), formula);
    EXPECT_EQ(test.dialogs.failures, QStringList());
}

TEST_F(TotalFormulasTest, SavingComputesNothing)
{
    test.addStudent(1, 1, u"王芳"_s, u"理"_s);
    test.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 100}, {u"文科总分"_s, 7}});
    formulas.save({u"期中"_s}, u"文科总分"_s, u"语文"_s);
    EXPECT_EQ(test.rows(u"select 文科总分 from 成绩表"_s), u"7"_s);
}

} // namespace
