#include "individual/ChartRanks.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace individual {

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

const std::vector<TickedColumn> chinese{{u"语文"_s, 0}};

class RanksOfAChart : public testing::Test
{
protected:
    void SetUp() override
    {
        id = test.addStudent(1, 1, u"甲"_s, u"理"_s);
        test.addStudent(1, 2, u"乙"_s, u"理"_s);
        test.addStudent(2, 1, u"丙"_s, u"理"_s);
        test.addStudent(3, 1, u"丁"_s, u"文"_s);
    }

    void addRanks(const QString& exam, int number, int grade, int ofClass)
    {
        test.addScores(exam, 1, 1,
                       {{u"考试编号"_s, number},
                        {u"语文年名"_s, grade},
                        {u"语文班名"_s, ofClass},
                        {u"数学年名"_s, grade + 100}});
    }

    RankChartRequest read(const std::vector<TickedColumn>& ticked, RankKind kind = RankKind::Grade)
    {
        StudentExams student(test.scores);
        student.ShowGeRenCJ(id);
        return readRanks(test.scores, student, ticked, kind);
    }

    QStringList ranks() { return read(chinese).columns.front().ranks; }

    TestLibrary test{{u"语文"_s, u"数学"_s}};
    qint64 id = 0;
};

TEST_F(RanksOfAChart, AreThoseOfTheGradeAmongTheStream)
{
    addRanks(u"期中"_s, 1, 3, 2);
    addRanks(u"期末"_s, 2, 1, 1);
    const RankChartRequest request = read(chinese);
    EXPECT_EQ(request.columns.front().ranks, (QStringList{u"3"_s, u"1"_s}));
    EXPECT_EQ(request.headCount, 3);
    EXPECT_EQ(request.exams, (QStringList{u"期中"_s, u"期末"_s}));
    EXPECT_EQ(request.name, u"甲"_s);
}

TEST_F(RanksOfAChart, OfTheClassHaveItsHeadCount)
{
    addRanks(u"期中"_s, 1, 3, 2);
    const RankChartRequest request = read(chinese, RankKind::Class);
    EXPECT_EQ(request.columns.front().ranks, QStringList{u"2"_s});
    EXPECT_EQ(request.headCount, 2);
    EXPECT_EQ(request.kind, RankKind::Class);
}

TEST_F(RanksOfAChart, TheHeadCountIsThatOfTheClassAtTheEarliestExam)
{
    addRanks(u"期中"_s, 1, 3, 2);
    test.execute(u"update 信息表 set 班级=2 where 姓名='甲'"_s);
    EXPECT_EQ(read(chinese, RankKind::Class).headCount, 1);
}

TEST_F(RanksOfAChart, EachTickedColumnHasItsOwnInTheOrderGiven)
{
    addRanks(u"期中"_s, 1, 3, 2);
    const RankChartRequest request = read({{u"语文"_s, 5}, {u"数学"_s, 6}});
    ASSERT_EQ(request.columns.size(), 2u);
    EXPECT_EQ(request.columns[1].name, u"数学"_s);
    EXPECT_EQ(request.columns[1].colour, 6);
    EXPECT_EQ(request.columns[1].ranks, QStringList{u"103"_s});
}

TEST_F(RanksOfAChart, ARankThatIsNotThereIsEmpty)
{
    test.addScores(u"期中"_s, 1, 1, {{u"考试编号"_s, 1}});
    EXPECT_EQ(ranks(), QStringList{QString()});
}

TEST_F(RanksOfAChart, OfTwoRowsOfOneExamTheFirstOfTheTableCounts)
{
    addRanks(u"期中"_s, 9, 7, 1);
    addRanks(u"期中"_s, 1, 8, 1);
    addRanks(u"期末"_s, 2, 9, 1);
    EXPECT_EQ(ranks(), (QStringList{u"7"_s, u"9"_s, u"7"_s}));
}

TEST_F(RanksOfAChart, ExamNamesAreComparedWithoutCase)
{
    addRanks(u"Test"_s, 1, 7, 1);
    addRanks(u"TEST"_s, 2, 8, 1);
    EXPECT_EQ(ranks(), (QStringList{u"7"_s, u"7"_s}));
}

TEST_F(RanksOfAChart, AreWhatTheSingleQuestionsAnswer)
{
    addRanks(u"期中"_s, 1, 3, 2);
    addRanks(u"É"_s, 2, 4, 2);
    addRanks(u"é"_s, 3, 5, 2);
    addRanks(u" 期中"_s, 4, 6, 2);
    addRanks(u"--"_s, 5, 7, 2);
    addRanks(u"a\nb"_s, 6, 8, 2);
    addRanks(QString(50, u'长'), 7, 9, 2);
    addRanks(QString(), 8, 10, 2);
    const RankChartRequest request = read(chinese);
    ASSERT_EQ(request.exams.size(), 8);
    for (int i = 0; i < request.exams.size(); ++i)
        EXPECT_EQ(request.columns.front().ranks[i],
                  test.scores.students.GetMC(request.exams[i], u"语文年名"_s, id))
            << request.exams[i].left(20).toStdString();
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(RanksOfAChart, AnExamWithAnApostropheFailsAtEachOfItsPoints)
{
    addRanks(u"O'Neil"_s, 1, 7, 1);
    addRanks(u"期末"_s, 2, 8, 1);
    const RankChartRequest request = read({{u"语文"_s, 0}, {u"数学"_s, 0}});
    EXPECT_EQ(request.columns.front().ranks, (QStringList{QString(), u"8"_s}));
    ASSERT_EQ(test.dialogs.failures.size(), 2);
    EXPECT_TRUE(test.dialogs.failures.front().endsWith(u" - Function GetMC/Mdl_MDB"_s))
        << test.dialogs.failures.front().toStdString();
}

TEST_F(RanksOfAChart, AStreamWithAnApostropheFailsAtEachPointAndCountsNobody)
{
    addRanks(u"期中"_s, 1, 7, 1);
    addRanks(u"期末"_s, 2, 8, 1);
    test.execute(u"update 成绩表 set 科类='理''科'"_s);
    EXPECT_EQ(read(chinese).headCount, 0);
    ASSERT_EQ(test.dialogs.failures.size(), 2);
    EXPECT_TRUE(test.dialogs.failures.front().endsWith(u" - Function GetZRS/Mdl_MDB"_s))
        << test.dialogs.failures.front().toStdString();
}

TEST_F(RanksOfAChart, AColumnThatIsGoneFailsAtEachPointAndTheOthersStand)
{
    addRanks(u"期中"_s, 1, 7, 1);
    addRanks(u"期末"_s, 2, 8, 1);
    test.execute(u"ALTER TABLE 成绩表 DROP COLUMN 语文班名"_s);
    StudentExams student(test.scores);
    student.ShowGeRenCJ(id);
    const RankChartRequest request =
        readRanks(test.scores, student, {{u"语文"_s, 0}}, RankKind::Class);
    EXPECT_EQ(request.columns.front().ranks, (QStringList{QString(), QString()}));
    const QString message = u"没有名为“语文班名”的列。 - Function GetMC/Mdl_MDB"_s;
    EXPECT_EQ(test.dialogs.failures, (QStringList{message, message}));
}

TEST_F(RanksOfAChart, BeforeAChoiceNobodyIsCounted)
{
    test.addExam(u"期中"_s, u"理"_s, 1, {});
    test.reload();
    const StudentExams nobody(test.scores);
    const RankChartRequest request = readRanks(test.scores, nobody, chinese, RankKind::Class);
    EXPECT_EQ(request.exams, QStringList{QString()});
    EXPECT_EQ(request.columns.front().ranks, QStringList{QString()});
    EXPECT_EQ(request.headCount, 0);
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

} // namespace

} // namespace individual
