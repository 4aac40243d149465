#include "shell/NextStep.h"

#include <gtest/gtest.h>

#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using shell::nextStep;
using shell::Step;

class NextStep : public testing::Test
{
protected:
    void addExam(const QString& exam)
    {
        test.addExam(exam, u"理"_s, 1, {{u"语文"_s, 100}});
        test.addScores(exam, 1, 1, {{u"语文"_s, 60}});
        test.reload();
    }

    support::TestLibrary test{{u"语文"_s, u"数学"_s}};
};

TEST_F(NextStep, WithoutALibraryIsANewOne)
{
    test.scores.Conn.Close();
    EXPECT_EQ(nextStep(test.scores), Step::NewLibrary);
}

TEST_F(NextStep, FollowsWhatTheLibraryHolds)
{
    EXPECT_EQ(nextStep(test.scores), Step::Students);
    test.addStudent(1, 1, u"甲"_s, u"理"_s);
    EXPECT_EQ(nextStep(test.scores), Step::Exam);
    addExam(u"期中"_s);
    EXPECT_EQ(nextStep(test.scores), Step::Totals);
    test.execute(u"update 成绩表 set 语文年名=1"_s);
    EXPECT_EQ(nextStep(test.scores), Step::Done);
}

/// Students come with the exam where nobody imported them before.
TEST_F(NextStep, AnExamWithoutStudentsIsToBeScored)
{
    test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 100}});
    test.reload();
    EXPECT_EQ(nextStep(test.scores), Step::Totals);
}

TEST_F(NextStep, SeveralExamsWaitUntilOneOfThemIsScored)
{
    test.addStudent(1, 1, u"甲"_s, u"理"_s);
    addExam(u"期中"_s);
    addExam(u"期末"_s);
    EXPECT_EQ(nextStep(test.scores), Step::Totals);
    test.execute(u"update 成绩表 set 数学年名=1 where 考试名称='期末'"_s);
    EXPECT_EQ(nextStep(test.scores), Step::Done);
}

TEST_F(NextStep, AnExamMayBeCalledAnything)
{
    test.addStudent(1, 1, u"甲"_s, u"理"_s);
    addExam(u"' or ''='"_s);
    EXPECT_EQ(nextStep(test.scores), Step::Totals);
}

TEST_F(NextStep, ALibraryThatCannotBeAskedIsLeftAlone)
{
    test.addStudent(1, 1, u"甲"_s, u"理"_s);
    addExam(u"期中"_s);
    test.execute(u"alter table 成绩表 rename to 旧表"_s);
    EXPECT_EQ(nextStep(test.scores), Step::Done);
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

} // namespace
