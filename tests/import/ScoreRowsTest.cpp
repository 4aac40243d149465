#include "import/ScoreRows.h"

#include <gtest/gtest.h>

#include "platform/runtime/Error.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using importing::ExamScoreRows;
using importing::firstRowOf;
using importing::RowName;
using importing::ScoredStudent;

/// Rows 1 to 3 of the exam 期中, and row 4 of 期末.
class ScoreRows : public testing::Test
{
protected:
    ScoreRows()
    {
        row(u"期中"_s, 1, 1, u"Wang"_s, u"7"_s);
        row(u"期中"_s, 1, 2, u"陈静"_s, u"NULL"_s);
        row(u"期中"_s, 1, 2, u"陈'静"_s, u"9"_s);
        row(u"期末"_s, 1, 3, u"李强"_s, u"11"_s);
    }

    void row(const QString& exam, int classNumber, int number, QString name, const QString& id)
    {
        library.execute(
            u"insert into 成绩表(考试名称,班级,学号,姓名,id) values('%1',%2,%3,'%4',%5)"_s.arg(exam)
                .arg(classNumber)
                .arg(number)
                .arg(name.replace(u'\'', u"''"_s), id));
    }

    support::TestLibrary library{{u"语文"_s}};
    database::Connection& connection = library.scores.Conn;
    ExamScoreRows rows{connection, u"期中"_s};
};

TEST_F(ScoreRows, OfAnExamAreFoundByTheStudentsIdWhateverElseTheyBear)
{
    EXPECT_EQ(rows.find({5, 5, u"别人"_s, 7}), 1);
    EXPECT_EQ(rows.find({5, 5, u"别人"_s, 11}), 0) << "a row of another exam";
}

TEST_F(ScoreRows, OfAnExamAreFoundByNumberWithoutAnIdOrByTheName)
{
    EXPECT_EQ(rows.find({1, 2, u"谁"_s, 0}), 2) << "one without an ID";
    EXPECT_EQ(rows.find({1, 2, u"谁"_s, 8}), 2);
    EXPECT_EQ(rows.find({1, 1, u"WANG"_s, 8}), 1) << "names ignore the case of letters";
    EXPECT_EQ(rows.find({1, 1, u"王"_s, 8}), 0) << "another student's";
    EXPECT_EQ(rows.find({1, 1, u"王"_s, 0}), 0);
}

TEST_F(ScoreRows, WithoutAnIdComeAheadOfThoseWhoseIdIsZero)
{
    row(u"期中"_s, 2, 1, u"甲"_s, u"0"_s);
    row(u"期中"_s, 2, 1, u"乙"_s, u"NULL"_s);
    EXPECT_EQ(rows.find({2, 1, u"谁"_s, 0}), 6);
    EXPECT_EQ(rows.find({2, 1, u"谁"_s, 8}), 5) << "to a known student both are nobody's";
    rows.set(6, {2, 2, u"乙"_s, 0});
    EXPECT_EQ(rows.find({2, 1, u"谁"_s, 0}), 5);
    rows.set(5, {2, 2, u"甲"_s, 0});
    EXPECT_EQ(rows.find({2, 2, u"谁"_s, 0}), 5) << "written without an ID";
}

TEST_F(ScoreRows, OfAnExamBelongToWhomTheyWereWrittenFor)
{
    rows.set(9, {3, 3, u"新"_s, 20});
    EXPECT_EQ(rows.find({3, 3, u"新"_s, 20}), 9) << "a row that was added";
    rows.set(1, {3, 4, u"王芳"_s, 7});
    EXPECT_EQ(rows.find({1, 1, u"Wang"_s, 0}), 0) << "the number that the row had";
    EXPECT_EQ(rows.find({3, 4, u"王芳"_s, 0}), 1);
}

TEST_F(ScoreRows, OfAllExamsTheFirstIsFoundByItsNameOrAnyName)
{
    row(u"期末"_s, 1, 1, u"Wang"_s, u"7"_s);
    const ScoredStudent student{1, 1, u"wang"_s};
    const auto first = firstRowOf(connection, u"期末"_s, student, RowName::Written);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->row, 1);
    EXPECT_EQ(first->exam, u"期中"_s);
    EXPECT_FALSE(first->isOfThisExam);
    EXPECT_FALSE(firstRowOf(connection, u"期末"_s, {1, 1, u"王"_s}, RowName::OnTheSheet));
    EXPECT_TRUE(firstRowOf(connection, u"期末"_s, {1, 1, u"王"_s}, RowName::Any));
    EXPECT_TRUE(
        firstRowOf(connection, u"期末"_s, {1, 3, u"李强"_s}, RowName::Written)->isOfThisExam);
}

TEST_F(ScoreRows, AreNotLookedForByANameWithAnApostropheWhenTheyAreWritten)
{
    const ScoredStudent student{1, 2, u"陈'静"_s};
    EXPECT_THROW(firstRowOf(connection, u"期中"_s, student, RowName::Written), runtime::Error);
    EXPECT_EQ(firstRowOf(connection, u"期中"_s, student, RowName::OnTheSheet)->row, 3);
}

} // namespace
