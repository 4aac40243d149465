#include <gtest/gtest.h>

#include "GuardedImportFixture.h"
#include "import/ImportGuards.h"

namespace {

using importing::ImportResult;
using runtime::Answer;

/// The exams 期初 and 期中; 王芳 and 陈静 sat both, and 陈静's first row is of 期中.
class OverwrittenExam : public GuardedImport
{
protected:
    OverwrittenExam()
    {
        library.addExam(u"期初"_s, u"文"_s, 1, {{u"语文"_s, 100}});
        library.addExam(u"期中"_s, u"理"_s, 2, {{u"语文"_s, 100}});
        library.addScores(u"期初"_s, 1, 1, {{u"考试编号"_s, 1}, {u"语文"_s, 60}});
        library.addScores(u"期中"_s, 1, 1, {{u"考试编号"_s, 2}, {u"语文"_s, 61}});
        library.addScores(u"期中"_s, 1, 2, {{u"考试编号"_s, 2}, {u"语文"_s, 62}});
        library.addScores(u"期初"_s, 1, 2, {{u"考试编号"_s, 1}, {u"语文"_s, 63}});
        library.reload();
        sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 91}, {1, 2, u"陈静"_s, 92}});
    }

    const QString columns = u"姓名,考试名称,考试编号,语文"_s;
    const QString question = u"将覆盖 1 名学生其他考试（期初）的成绩"_s;
};

TEST_F(OverwrittenExam, CancelLeavesAllAsItWas)
{
    pick();
    dialogs.expect(question, u"取消"_s);
    expectRefused();
    EXPECT_EQ(dialogs.safeOf(question), u"取消"_s);
}

TEST_F(OverwrittenExam, TheOriginalRuleOverwritesFirstRows)
{
    pick();
    dialogs.expect(question, u"按原规则导入"_s);
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(scoreRows(columns),
              u"王芳|期中|2|91 / 王芳|期中|2|61 / 陈静|期中|2|92 / 陈静|期初|1|63"_s);
    EXPECT_EQ(exams(), u"期初|文|1|100 / 期中|理|2|150"_s);
}

TEST_F(OverwrittenExam, ThisExamAloneGetsItsRowsAndTheRowOfItsStream)
{
    sheet(
        {heads({u"语文"_s}), {1, 1, u"王芳"_s, 91}, {1, 2, u"陈静"_s, 92}, {2, 1, u"李强"_s, 93}});
    pick();
    dialogs.expect(question, u"只更新本考试"_s);
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(scoreRows(columns), u"王芳|期初|1|60 / 王芳|期中|2|91 / 陈静|期中|2|92 / "
                                  "陈静|期初|1|63 / 李强|期中|2|93"_s);
    EXPECT_EQ(scoreRows(u"count(id)"_s), u"5"_s);
    EXPECT_EQ(library.rows(u"select 考试名称,科类,考试编号,语文,总分 from 考试名称表"_s),
              u"期初|文|1|100|NULL / 期中|理|2|100|NULL / 期中|文|2|150|语文+数学"_s);

    pick();
    dialogs.expect(question, u"只更新本考试"_s);
    questions.fullMark = 120;
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(exams(), u"期初|文|1|100 / 期中|理|2|100 / 期中|文|2|120"_s)
        << "the row of the stream is there by now";
    EXPECT_EQ(scoreRows(u"count(*)"_s), u"5"_s);
}

TEST_F(OverwrittenExam, AStudentWhoMayBeRenamedOnTheWayCounts)
{
    sheet({heads({u"语文"_s}), {1, 1, u"王芬"_s, 91}});
    pick();
    dialogs.expect(question, u"取消"_s);
    expectRefused();
}

TEST_F(OverwrittenExam, WithoutRowsOfOtherExamsNothingIsAsked)
{
    sheet({heads({u"语文"_s}), {2, 1, u"李强"_s, 93}, {1, 2, u"陈静"_s, 92}});
    pick();
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(dialogs.questions.size(), 1);
}

TEST_F(OverwrittenExam, FirstRowsWithoutAnExamsNameAreToldSo)
{
    const struct
    {
        QString exams;
        QString listed;
    } libraries[] = {{u"where 考试名称='期初'"_s, u"没有名称的考试"_s},
                     {u"where 考试名称='期初' and 学号=2"_s, u"期初"_s},
                     {u"where 班级=1"_s, u"没有名称的考试"_s}};
    for (const QString& name : {u"NULL"_s, u"''"_s}) {
        for (const auto& tried : libraries) {
            library.execute(u"update 成绩表 set 考试名称='期初' where 语文 in (60,63)"_s);
            library.execute(u"update 成绩表 set 考试名称='期中' where 语文 in (61,62)"_s);
            library.execute(u"update 成绩表 set 考试名称=%1 "_s.arg(name) + tried.exams);
            pick();
            dialogs.expect(u"其他考试（%1）的成绩。"_s.arg(tried.listed), u"取消"_s);
            expectRefused();
        }
    }
}

TEST_F(OverwrittenExam, AStudentWhoseNameIsKeptInTheLibraryGetsNoSecondRow)
{
    const QString ids[] = {u"(select ID from 信息表 where 学号=1 and 班级=1)"_s, u"NULL"_s, u"0"_s};
    for (const QString& id : ids) {
        library.execute(u"update 成绩表 set 姓名='王芳', 语文=61, id=%1 "
                        "where 考试名称='期中' and 学号=1"_s.arg(id));
        sheet({heads({u"语文"_s}), {1, 1, u"王芬"_s, 91}});
        pick();
        dialogs.expect(question, u"只更新本考试"_s);
        dialogs.expect(u"不一致"_s, Answer::No);
        EXPECT_EQ(run(), ImportResult::Finished);
        EXPECT_EQ(scoreRows(u"考试名称,语文"_s), u"期初|60 / 期中|91 / 期中|62 / 期初|63"_s);
        EXPECT_EQ(library.rows(u"select 姓名 from 信息表 where 班级=1"_s), u"王芳 / 陈静"_s);
    }
}

TEST_F(OverwrittenExam, ARowThatNamesAStudentWhoIsGoneIsFoundByTheName)
{
    library.execute(u"update 成绩表 set id=77"_s);
    pick();
    dialogs.expect(question, u"只更新本考试"_s);
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(scoreRows(u"id,考试名称,语文"_s),
              u"77|期初|60 / 77|期中|91 / 77|期中|92 / 77|期初|63"_s);
}

TEST_F(OverwrittenExam, ARowOfAnotherStudentIsNotTakenForOneWhoWasRefused)
{
    library.addScores(u"期中"_s, 3, 41, {{u"id"_s, 77}, {u"姓名"_s, u"乙"_s}, {u"语文"_s, 64}});
    library.addStudent(3, 1, u"丙"_s, u"文"_s);
    library.reload();
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 91}, {3, 41, u"甲"_s, 92}});
    pick();
    request.newStudents = importing::NewStudents::Ask;
    dialogs.expect(question, u"只更新本考试"_s);
    dialogs.expect(u"是否添加新学生"_s, runtime::Answer::Cancel);
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(library.rows(u"select 姓名, id, 语文 from 成绩表 where 学号=41"_s),
              u"乙|77|64 / 甲|NULL|92"_s);
}

TEST_F(OverwrittenExam, ANameWithAnApostropheIsFoundWhereThisExamAloneIsWritten)
{
    library.addStudent(1, 3, u"O'Neil"_s, u"文"_s);
    sheet({heads({u"语文"_s}), {1, 3, u"O'Neil"_s, 93}, {1, 1, u"王芳"_s, 91}});
    for (int time = 0; time < 2; ++time) {
        pick();
        dialogs.expect(question, u"只更新本考试"_s);
        EXPECT_EQ(run(), ImportResult::Finished);
        EXPECT_EQ(dialogs.failures, QStringList());
        EXPECT_EQ(library.rows(u"select 姓名,考试名称,语文 from 成绩表 where 学号=3"_s),
                  u"O'Neil|期中|93"_s);
    }
}

/// 期中 has a row of each stream, 文 first, and nobody's scores of another exam are in the way.
class ExamOfTwoStreams : public GuardedImport
{
protected:
    ExamOfTwoStreams()
    {
        library.addExam(u"期中"_s, u"理"_s, 2, {{u"语文"_s, 90}});
        library.addExam(u"期中"_s, u"文"_s, 1, {{u"语文"_s, 100}});
        library.reload();
        sheet({heads({u"语文"_s}), {2, 1, u"李强"_s, 80}});
        pick();
    }

    const QString question = u"满分和总分公式会写到“文”科的考试行，不是“理”科的。"_s;
};

TEST_F(ExamOfTwoStreams, TheSheetOfTheSecondStreamAsksWhereItsFullMarksGo)
{
    dialogs.expect(question, u"取消"_s);
    expectRefused();
    EXPECT_FALSE(dialogs.questions.last().contains(u"将覆盖"_s));
}

TEST_F(ExamOfTwoStreams, ByTheOriginalRuleTheyGoToTheFirstRow)
{
    dialogs.expect(question, u"按原规则导入"_s);
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(exams(), u"期中|理|2|90 / 期中|文|1|150"_s);
}

TEST_F(ExamOfTwoStreams, WhereThisExamAloneIsWrittenTheyGoToTheSheetsStream)
{
    dialogs.expect(question, u"只更新本考试"_s);
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(exams(), u"期中|理|2|150 / 期中|文|1|100"_s);
    EXPECT_EQ(scoreRows(u"姓名,语文"_s), u"李强|80"_s);
}

TEST_F(ExamOfTwoStreams, TheSheetOfTheFirstStreamIsNotAskedAbout)
{
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 80}});
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(dialogs.questions.size(), 1);
}

TEST_F(ExamOfTwoStreams, OverwrittenScoresAndTheExamsRowAreOneQuestion)
{
    library.addExam(u"期初"_s, u"理"_s, 3, {});
    library.addScores(u"期初"_s, 2, 1, {{u"语文"_s, 60}});
    dialogs.expect(u"将覆盖 1 名学生其他考试（期初）的成绩。\n"_s + question, u"取消"_s);
    expectRefused();
}

TEST_F(ExamOfTwoStreams, AFirstRowWithoutAStreamIsToldSo)
{
    library.execute(u"update 考试名称表 set 科类=NULL where 科类='文'"_s);
    dialogs.expect(u"会写到没有科类的考试行，不是“理”科的。"_s, u"取消"_s);
    expectRefused();
}

} // namespace
