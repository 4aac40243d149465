#include <gtest/gtest.h>

#include <sqlite3.h>

#include "ExamImportFixture.h"
#include "platform/database/WriteBatch.h"
#include "platform/grid/GridText.h"
#include "platform/runtime/Numbers.h"

namespace {

using importing::ExamChoice;
using importing::ImportResult;
using importing::NewStudents;
using runtime::Answer;

class ExamImportTest : public ExamImportFixture
{
protected:
    /// One row for each score of student 1 of class 1 … n, in 语文 alone.
    void languageScores(const std::vector<runtime::Value>& scores)
    {
        Rows rows{heads({u"语文"_s})};
        int number = 0;
        database::WriteBatch batch(library.scores.Conn);
        for (const runtime::Value& score : scores) {
            library.addStudent(5, ++number, u"学生"_s, u"文"_s);
            rows.push_back({5, number, u"学生"_s, score});
        }
        batch.commit();
        sheet(rows);
    }

    /// Lets the library file grow by so many pages and no further, as a full disk does.
    void allowPages(int pages)
    {
        const int present = int(runtime::Val(library.rows(u"select * from pragma_page_count"_s)));
        const std::string limit = "pragma max_page_count=" + std::to_string(present + pages);
        sqlite3_exec(library.scores.Conn.handle(), limit.c_str(), nullptr, nullptr, nullptr);
    }

    QStringList reasons() const
    {
        QStringList list;
        for (int row = 1; row <= int(state.ErrorCount); ++row)
            list.append(state.errors.TextMatrix(row, 5));
        return list;
    }
};

TEST_F(ExamImportTest, WritesAnExamRowAndAScoreRowForEachStudent)
{
    sheet({heads({u"语文"_s, u"数学"_s}),
           {1, 1, u"王芳"_s, 120.5, u"缺考"_s},
           {1, 2, u" 陈静 "_s, u"95"_s, u"作弊"_s}});
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(dialogs.shown, QStringList{u"导入完成！"_s});
    EXPECT_EQ(library.rows(u"select 考试名称,科类,考试编号,语文,数学,总分 from 考试名称表"_s),
              u"期中|文|1|150|150|语文+数学"_s);
    EXPECT_EQ(scoreRows(u"班级,学号,姓名,类别代码,科类,考试名称,考试编号,语文,数学"_s),
              u"1|1|王芳|1|文|期中|1|120.5|-1 / 1|2|陈静|1|文|期中|1|95|0"_s);
    EXPECT_EQ(library.rows(u"select count(*) from 成绩表,信息表 where 成绩表.id=信息表.ID and "
                           "成绩表.姓名=信息表.姓名"_s),
              u"2"_s);
    EXPECT_EQ(library.scores.catalogue.ExamList, QStringList{u"期中"_s});
    EXPECT_EQ(changedSignals, 1);
}

TEST_F(ExamImportTest, EmptyNumberEndsTheSheet)
{
    sheet(
        {heads({u"语文"_s}), {1, 1, u"王芳"_s, 90}, {1, {}, u"陈静"_s, 80}, {2, 1, u"李强"_s, 70}});
    run();
    EXPECT_EQ(scoreRows(u"姓名"_s), u"王芳"_s);
}

TEST_F(ExamImportTest, RowsBelow65555AreNotLookedAt)
{
    Rows rows{heads({u"语文"_s})};
    rows.resize(65'554, {1, 1, u"王芳"_s, 90});
    rows.push_back({1, 2, u"陈静"_s, 80});
    rows.push_back({2, 1, u"李强"_s, 70});
    sheet(rows);
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(state.MFGData.Rows(), 65'555);
    EXPECT_EQ(scoreRows(u"count(*),max(语文),min(语文)"_s), u"65554|90|80"_s);
}

TEST_F(ExamImportTest, SheetWithoutRowsGivesAnExamWithoutScores)
{
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 90}});
    run();
    sheet({heads({u"语文"_s}), {1, {}}});
    request.examName = u"期末"_s;
    run();
    EXPECT_EQ(scoreRows(u"考试名称,姓名"_s), u"期中|王芳"_s)
        << "the staging grid holds nothing of the import before";
}

TEST_F(ExamImportTest, ScoreEqualToTheFullMarkPassesAndAboveItIsBad)
{
    languageScores({100, 100.5, 99.9});
    questions.fullMark = 100;
    run();
    EXPECT_EQ(state.ErrorCount, 1.0F);
    EXPECT_EQ(grid::gridText(state.errors).section(u'\n', 1, 1),
              u"5\t2\t学生\t语文\t100.5\t超过总分\t"_s);
}

TEST_F(ExamImportTest, ScoresAreComparedWithTheFullMarkAsFloats)
{
    languageScores({100.1});
    questions.fullMark = 100.1F;
    run();
    EXPECT_EQ(state.ErrorCount, 0.0F);
    EXPECT_EQ(questions.errorLists, 0);
}

TEST_F(ExamImportTest, EachBadScoreHasItsReason)
{
    languageScores({151,
                    -0.5,
                    {},
                    u""_s,
                    runtime::Value::error(u"#N/A"_s),
                    u"缺考"_s,
                    u"作弊"_s,
                    u"abc"_s,
                    u" 缺考"_s});
    dialogs.expect(u"既不是缺考也不是作弊"_s, u"继续"_s);
    run();
    EXPECT_EQ(reasons(), (QStringList{u"超过总分"_s, u"分值不能为负"_s, u"分值不能为空"_s,
                                      u"分值不能为空"_s, u"分值不能为空"_s}));
    EXPECT_EQ(questions.errorLists, 1);
    EXPECT_EQ(questions.countTexts, QStringList{u"共发现 5 处成绩有问题！"_s});
}

TEST_F(ExamImportTest, WithoutAFullMarkEveryScoreAboveZeroIsBadAndStoredAllTheSame)
{
    languageScores({60, 0.5, 0, u"缺考"_s});
    questions.fullMark = 0;
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(reasons(), (QStringList{u"超过总分"_s, u"超过总分"_s}));
    EXPECT_EQ(scoreRows(u"语文"_s), u"60 / 0.5 / 0 / -1"_s);
    EXPECT_EQ(library.rows(u"select 语文 from 考试名称表"_s), u"0"_s);
}

TEST_F(ExamImportTest, OnlyTheExactWordIsAbsentAndOtherTextIsZero)
{
    languageScores({u"缺考"_s, u"作弊"_s, u"abc"_s, u" 缺考"_s, u"缺考 "_s, u"87分"_s});
    dialogs.expect(u"既不是缺考也不是作弊"_s, u"继续"_s);
    run();
    EXPECT_EQ(scoreRows(u"语文"_s), u"-1 / 0 / 0 / 0 / 0 / 87"_s);
}

TEST_F(ExamImportTest, BadScoreIsStoredAsItStandsOnTheSheetWhateverWasAnswered)
{
    languageScores({160, {}, -3, runtime::Value::error(u"#N/A"_s)});
    questions.correctTo = u"99"_s;
    run();
    EXPECT_EQ(scoreRows(u"姓名,语文"_s), u"学生|160 / 99|0 / 学生|-3 / 学生|0"_s)
        << "every answer goes to one fixed cell, which with one subject is a name";
}

TEST_F(ExamImportTest, AStudentWhomAnotherProgramChangedMeanwhileIsReadAnew)
{
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 160}});
    questions.meanwhile = [this] {
        database::Connection other;
        other.Open(library.scores.Conn.path());
        other.Execute(u"update 信息表 set ID=77 where 姓名='王芳'"_s);
    };
    run();
    EXPECT_EQ(scoreRows(u"id,语文"_s), u"77|160"_s);
}

TEST_F(ExamImportTest, ScoreThatDoesNotFitCostsItsFieldAndOneMessage)
{
    sheet({heads({u"语文"_s, u"数学"_s}), {1, 1, u"王芳"_s, u"1e300"_s, 90}});
    run();
    ASSERT_EQ(dialogs.failures.size(), 1);
    EXPECT_TRUE(dialogs.failures[0].endsWith(u" - Private Sub Command1_Click/FormDaoRu"_s));
    EXPECT_EQ(scoreRows(u"语文,数学"_s), u"NULL|90"_s);
}

/// Gives the first subject the full mark 100, the next 110 and so on.
class RisingMarks : public EnteredAnswers
{
public:
    void fullMarks(importing::ImportState& given, const QString&) override
    {
        float mark = 90;
        for (importing::ImportSubject& subject : given.KMImport) {
            mark += 10;
            subject.KMFull = mark;
            asked.append(subject.KMName);
        }
    }

    QStringList asked;
};

TEST_F(ExamImportTest, OfAHeadingThatStandsTwiceBothAreAskedForAndTheLaterOneWins)
{
    sheet({heads({u"语文"_s, u"数学"_s, u"语文"_s}), {1, 1, u"王芳"_s, 60, 70, 115}});
    RisingMarks rising;
    EXPECT_EQ(importing::ExamImport(library.scores, intake, state, rising, progress).run(request),
              ImportResult::Finished);
    EXPECT_EQ(rising.asked, (QStringList{u"语文"_s, u"数学"_s, u"语文"_s}));
    EXPECT_EQ(library.rows(u"select 语文,数学 from 考试名称表"_s), u"120|110"_s);
    EXPECT_EQ(scoreRows(u"语文,数学"_s), u"115|70"_s);
    EXPECT_EQ(dialogs.shown, QStringList{u"导入完成！"_s});
}

TEST_F(ExamImportTest, ColumnMissingInTheScoreTableCostsAMessageOnEachRow)
{
    library.execute(u"ALTER TABLE 成绩表 DROP COLUMN 数学"_s);
    const Rows rows{
        heads({u"数学"_s, u"语文"_s}), {1, 1, u"王芳"_s, 80, 90}, {1, 2, u"陈静"_s, 81, 91}};
    for (const ExamChoice choice : {ExamChoice::Typed, ExamChoice::PickedFromList}) {
        sheet(rows);
        request.examChoice = choice;
        if (choice == ExamChoice::PickedFromList)
            pick();
        dialogs.failures.clear();
        EXPECT_EQ(run(), ImportResult::Finished);
        const QString message = u"没有名为“数学”的列。 - Private Sub Command1_Click/FormDaoRu"_s;
        EXPECT_EQ(dialogs.failures, (QStringList{message, message}));
        EXPECT_EQ(scoreRows(u"姓名,语文"_s), u"王芳|90 / 陈静|91"_s);
    }
}

TEST_F(ExamImportTest, TotalWithoutAFormulaIsReported)
{
    library.execute(u"delete * from 总分公式"_s);
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 90}});
    dialogs.failures.clear();
    run();
    ASSERT_EQ(dialogs.failures.size(), 1);
    EXPECT_TRUE(dialogs.failures[0].endsWith(u" - Private Sub Command1_Click/FormDaoRu"_s));
    EXPECT_EQ(library.rows(u"select 语文,总分 from 考试名称表"_s), u"150|NULL"_s);
}

TEST_F(ExamImportTest, TypedNameOfAnExamGetsASecondRowWithTheSameNumber)
{
    library.addExam(u"期初"_s, u"理"_s, 4, {});
    library.addExam(u"期中"_s, u"理"_s, 7, {{u"语文"_s, 100}});
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 90}});
    run();
    EXPECT_EQ(library.rows(u"select 考试名称,科类,考试编号,语文 from 考试名称表"_s),
              u"期初|理|4|NULL / 期中|理|7|100 / 期中|文|7|150"_s);
    EXPECT_EQ(scoreRows(u"考试编号"_s), u"7"_s);
}

TEST_F(ExamImportTest, NewExamGetsTheNextNumber)
{
    library.addExam(u"期初"_s, u"理"_s, 4, {});
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 90}});
    run();
    EXPECT_EQ(library.rows(u"select 考试编号 from 考试名称表 where 考试名称='期中'"_s), u"5"_s);
}

TEST_F(ExamImportTest, PickedExamKeepsTheMarksOfSubjectsThatAreNotOnTheSheet)
{
    library.addExam(u"期中"_s, u"理"_s, 2, {{u"语文"_s, 90}, {u"数学"_s, 100}});
    library.addExam(u"期中"_s, u"文"_s, 1, {{u"语文"_s, 80}});
    sheet({heads({u"语文"_s}), {2, 1, u"李强"_s, 70}});
    pick();
    dialogs.expect(u"会写到“文”科的考试行"_s, u"按原规则导入"_s);
    run();
    EXPECT_EQ(library.rows(u"select 科类,考试编号,语文,数学 from 考试名称表"_s),
              u"理|2|90|100 / 文|1|150|NULL"_s)
        << "the row of the lowest number is taken, whichever stream the sheet holds";
}

TEST_F(ExamImportTest, PickedExamGetsTheFormulasAnewInItsFirstRow)
{
    library.addExam(u"期中"_s, u"理"_s, 2, {{u"总分"_s, u"语文"_s}});
    library.addExam(u"期中"_s, u"文"_s, 1, {{u"总分"_s, u"语文"_s}});
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 70}});
    pick();
    run();
    EXPECT_EQ(library.rows(u"select 科类,总分 from 考试名称表"_s), u"理|语文 / 文|语文+数学"_s);
}

TEST_F(ExamImportTest, PickedExamOverwritesTheStudentsFirstRowFromAnyExam)
{
    library.addExam(u"期初"_s, u"文"_s, 1, {});
    library.addExam(u"期中"_s, u"文"_s, 2, {});
    library.addScores(u"期初"_s, 1, 1, {{u"考试编号"_s, 1}, {u"语文"_s, 60}, {u"数学"_s, 61}});
    library.addScores(u"期中"_s, 1, 1, {{u"考试编号"_s, 2}, {u"语文"_s, 70}});
    library.addScores(u"期中"_s, 1, 2, {{u"考试编号"_s, 2}, {u"语文"_s, 50}});
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 90}, {2, 1, u"李强"_s, 80}});
    pick();
    dialogs.expect(u"将覆盖 1 名学生其他考试（期初）的成绩"_s, u"按原规则导入"_s);
    run();
    EXPECT_EQ(scoreRows(u"姓名,考试名称,考试编号,语文,数学"_s),
              u"王芳|期中|2|90|61 / 王芳|期中|2|70|NULL / 陈静|期中|2|50|NULL / "
              "李强|期中|2|80|NULL"_s)
        << "a student who is missing on the sheet keeps the row, one without a row gets one";
    EXPECT_EQ(library.rows(u"select count(*) from 成绩表 where id is null"_s), u"0"_s);
}

TEST_F(ExamImportTest, ARowOfAPickedExamKeepsTheStudentThatItHas)
{
    library.addExam(u"期中"_s, u"文"_s, 1, {});
    library.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 60}});
    library.execute(u"update 成绩表 set id=77"_s);
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 90}});
    pick();
    run();
    EXPECT_EQ(scoreRows(u"id,姓名,语文"_s), u"77|王芳|90"_s);
}

TEST_F(ExamImportTest, NameWithAnApostropheCannotBeFoundForAPickedExam)
{
    library.addStudent(1, 3, u"O'Neil"_s, u"文"_s);
    library.addExam(u"期中"_s, u"文"_s, 1, {});
    sheet({heads({u"语文"_s}), {1, 3, u"O'Neil"_s, 90}, {1, 1, u"王芳"_s, 80}});
    pick();
    run();
    ASSERT_EQ(dialogs.failures.size(), 1);
    EXPECT_TRUE(dialogs.failures[0].endsWith(u" - Private Sub Command1_Click/FormDaoRu"_s));
    EXPECT_EQ(scoreRows(u"姓名,语文"_s), u"王芳|80"_s);
}

TEST_F(ExamImportTest, StreamAndCategoryAreThoseOfTheClasssFirstStudent)
{
    library.addStudent(3, 1, u"甲"_s, u"理"_s, 4);
    library.addStudent(3, 2, u"乙"_s, u"文"_s, 2);
    sheet({heads({u"语文"_s}), {3, 2, u"乙"_s, 90}});
    run();
    EXPECT_EQ(scoreRows(u"科类,类别代码"_s), u"理|4"_s);
}

TEST_F(ExamImportTest, SecondRunAsksTheClassesAnew)
{
    importing::ExamImport import(library.scores, intake, state, questions, progress);
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 90}});
    import.run(request);
    library.execute(u"update 信息表 set 科类='理',类别代码=3 where 班级=1"_s);
    request.examName = u"期末"_s;
    import.run(request);
    EXPECT_EQ(scoreRows(u"考试名称,科类,类别代码"_s), u"期中|文|1 / 期末|理|3"_s);
}

TEST_F(ExamImportTest, RefusedStudentStillGetsAScoreRowWithoutId)
{
    sheet({heads({u"语文"_s}), {1, 7, u"赵六"_s, 90}});
    request.newStudents = NewStudents::Ask;
    dialogs.expect(u"是否添加新学生： 1 班 7 号 ,赵六"_s, Answer::Cancel);
    run();
    EXPECT_EQ(library.rows(u"select 姓名 from 信息表 where 学号=7"_s), QString());
    EXPECT_EQ(scoreRows(u"id,姓名,语文"_s), u"NULL|赵六|90"_s);

    pick();
    dialogs.expect(u"是否添加新学生"_s, Answer::Ok);
    run();
    EXPECT_EQ(library.rows(u"select count(*) from 成绩表,信息表 where 成绩表.id=信息表.ID"_s),
              u"1"_s)
        << "once the student is known the row comes to hold the ID";
}

TEST_F(ExamImportTest, ClassOfRefusedStudentsCostsItsMessagesOnEachRow)
{
    sheet({heads({u"语文"_s}), {9, 1, u"甲"_s, 90}, {9, 2, u"乙"_s, 91}});
    request.newStudents = NewStudents::Ask;
    dialogs.expect(u"班级 9 还没有学生"_s, u"留空"_s);
    dialogs.always(u"是否添加新学生"_s, Answer::Cancel);
    run();
    const auto streamFailures = dialogs.failures.filter(u" - Function GetBJKL/Mdl_MDB"_s).size();
    const auto categoryFailures =
        dialogs.failures.filter(u" - Function GetLeiBie/Mdl_MDB"_s).size();
    ASSERT_GT(categoryFailures, 0);
    EXPECT_EQ(categoryFailures % 2, 0);
    EXPECT_EQ(streamFailures * 2, categoryFailures * 3) << "and once more for the whole sheet";
    EXPECT_EQ(scoreRows(u"科类,类别代码"_s), u"1|1 / 1|1"_s);
}

TEST_F(ExamImportTest, AnotherNameIsTakenOverOrNot)
{
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        sheet({heads({u"语文"_s}), {1, 1, u"王芬"_s, 90}});
        request.examName = answer == Answer::No ? u"期中"_s : u"期末"_s;
        dialogs.expect(u"[王芬] 与数据库中记录的不一致"_s, answer);
        EXPECT_EQ(run(), ImportResult::Finished);
        EXPECT_EQ(library.rows(u"select 姓名 from 信息表 where 班级=1 and 学号=1"_s),
                  answer == Answer::Yes ? u"王芬"_s : u"王芳"_s);
    }
}

TEST_F(ExamImportTest, CancelAtTheNameQuestionKeepsStudentsAndNamesAndNothingElse)
{
    sheet({heads({u"语文"_s}),
           {1, 9, u"新生"_s, 88},
           {1, 1, u"王芬"_s, 90},
           {1, 2, u"陈晶"_s, 90},
           {1, 8, u"后来"_s, 90}});
    dialogs.expect(u"[王芬]"_s, Answer::Yes);
    dialogs.expect(u"[陈晶]"_s, Answer::Cancel);
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(library.rows(u"select 学号,姓名 from 信息表 where 班级=1"_s),
              u"1|王芬 / 2|陈静 / 9|新生"_s);
    EXPECT_EQ(scoreRows(u"*"_s), QString());
    EXPECT_EQ(library.rows(u"select * from 考试名称表"_s), QString());
    EXPECT_FALSE(dialogs.shown.contains(u"导入完成！"_s));
}

TEST_F(ExamImportTest, CancelledProgressKeepsStudentsAndNothingElse)
{
    sheet({heads({u"语文"_s}), {1, 9, u"新生"_s, 88}, {1, 8, u"后来"_s, 90}});
    progress.cancelAfter = 1;
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(library.rows(u"select 学号,姓名 from 信息表 where 班级=1"_s),
              u"1|王芳 / 2|陈静 / 9|新生"_s);
    EXPECT_EQ(library.rows(u"select * from 考试名称表"_s), QString());
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(ExamImportTest, CancelledWhileScoresAreWrittenLeavesTheExamAsItWas)
{
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 88}, {1, 2, u"陈静"_s, 90}});
    progress.cancelAfter = 4;
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(library.rows(u"select * from 考试名称表"_s), QString());
    EXPECT_EQ(scoreRows(u"*"_s), QString());
}

TEST_F(ExamImportTest, StudentNamedMinusOneDropsTheNumberOfTheRow)
{
    library.addStudent(1, 3, u"-1"_s, u"文"_s);
    sheet({heads({u"语文"_s}), {1, 3, u"甲"_s, 88}});
    run();
    EXPECT_EQ(state.MFGData.TextMatrix(1, 1), QString());
    EXPECT_EQ(dialogs.questions, QStringList());
    ASSERT_EQ(dialogs.failures.size(), 1);
    EXPECT_TRUE(dialogs.failures[0].endsWith(u" - Private Sub Command1_Click/FormDaoRu"_s));
    EXPECT_EQ(scoreRows(u"id,班级,学号,姓名,语文"_s), u"NULL|1|NULL|甲|88"_s);
}

TEST_F(ExamImportTest, WithoutANumberTheRowOfAPickedExamCannotBeFound)
{
    library.addStudent(1, 3, u"-1"_s, u"文"_s);
    library.addExam(u"期中"_s, u"文"_s, 1, {});
    sheet({heads({u"语文"_s}), {1, 3, u"甲"_s, 88}});
    pick();
    EXPECT_EQ(run(), ImportResult::Finished);
    ASSERT_EQ(dialogs.failures.size(), 1);
    EXPECT_TRUE(dialogs.failures[0].endsWith(u" - Private Sub Command1_Click/FormDaoRu"_s));
    EXPECT_EQ(scoreRows(u"*"_s), QString());
}

TEST_F(ExamImportTest, TextsInClassAndNumberAreReadAsNumbers)
{
    sheet({heads({u"语文"_s}), {u"1班"_s, u"02"_s, u"陈静"_s, 88}});
    run();
    EXPECT_EQ(scoreRows(u"班级,学号,姓名"_s), u"1|2|陈静"_s);
}

TEST_F(ExamImportTest, FullDiskWhileNamesComeInCostsOneMessageAndLeavesNothing)
{
    Rows rows{heads({u"语文"_s})};
    for (int number = 10; number <= 3000; ++number)
        rows.push_back({1, number, u"学生"_s, 88});
    sheet(rows);
    allowPages(4);
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(dialogs.failures.size(), 1) << dialogs.failures.join(u'\n').toStdString();
    EXPECT_EQ(library.rows(u"select 姓名 from 信息表 where 班级=1"_s), u"王芳 / 陈静"_s);
    EXPECT_EQ(library.rows(u"select * from 考试名称表"_s), QString());
}

TEST_F(ExamImportTest, FullDiskWhileScoresAreWrittenCostsOneMessageAndKeepsTheNames)
{
    languageScores(std::vector<runtime::Value>(1000, 88));
    setCell(2, 3, u"新名"_s);
    dialogs.expect(u"[新名]"_s, Answer::Yes);
    allowPages(4);
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(dialogs.failures.size(), 1) << dialogs.failures.join(u'\n').toStdString();
    EXPECT_EQ(library.rows(u"select 姓名 from 信息表 where 班级=5 and 学号=1"_s), u"新名"_s);
    EXPECT_EQ(library.rows(u"select * from 考试名称表"_s), QString());
    EXPECT_EQ(scoreRows(u"*"_s), QString());
}

} // namespace
