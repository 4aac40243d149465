#include "maintenance/StudentMoves.h"

#include <limits>

#include <QDir>

#include <gtest/gtest.h>

#include "library/CopyOccasion.h"
#include "platform/grid/GridText.h"
#include "platform/runtime/Error.h"
#include "support/ErrorOf.h"
#include "support/FileBytes.h"
#include "support/NoRoom.h"
#include "support/OtherProgram.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"
#include "support/WatchedProgress.h"

namespace {

using namespace Qt::StringLiterals;
using library::Backup;
using maintenance::EarlierScores;
using maintenance::MovePlan;
using maintenance::StreamAfter;
using maintenance::StudentMove;
using maintenance::StudentMoves;
using Kind = StudentMove::Kind;
using Result = StudentMoves::Result;

const QString question = u"要执行这些调整吗？"_s;
const QString scoreQuestion = u"现在重新计算吗？"_s;
const QString studentRows = u"select 班级, 学号, 姓名, 科类 from 信息表 order by ID"_s;
const QString scoreRows = u"select 考试名称, 班级, 学号, 姓名, 科类 from 成绩表 order by rowid"_s;

/// Classes 1 and 2 of 理 and 5 of 文, with two exams.
class MovesOfStudents : public testing::Test
{
protected:
    MovesOfStudents()
    {
        jia = test.addStudent(1, 1, u"甲"_s, u"理"_s);
        yi = test.addStudent(1, 2, u"乙"_s, u"理"_s);
        bing = test.addStudent(2, 1, u"丙"_s, u"理"_s);
        ding = test.addStudent(5, 7, u"丁"_s, u"文"_s);
        int number = 0;
        for (const QString& exam : {u"期中"_s, u"期末"_s}) {
            ++number;
            for (const QString& stream : {u"理"_s, u"文"_s})
                test.addExam(exam, stream, number, {{u"语文"_s, 100}});
            test.addScores(exam, 1, 1, {{u"语文"_s, 70}});
            test.addScores(exam, 2, 1, {{u"语文"_s, 60}});
        }
        test.addScores(u"期中"_s, 1, 2, {{u"语文"_s, 80}});
        test.reload();
        studentsBefore = test.rows(studentRows);
        scoresBefore = test.rows(scoreRows);
    }

    static StudentMove to(qint64 id, double classNumber, double number,
                          EarlierScores scores = EarlierScores::Stay)
    {
        return {.id = id, .to = {classNumber, number}, .scores = scores};
    }

    static StudentMove swap(qint64 id, qint64 other, EarlierScores scores = EarlierScores::Stay)
    {
        return {.kind = Kind::Swap, .id = id, .other = other, .scores = scores};
    }

    static StudentMove removal(qint64 id, EarlierScores scores)
    {
        return {.kind = Kind::Remove, .id = id, .scores = scores};
    }

    Result run(const std::vector<StudentMove>& wanted, Backup backup = Backup::SwitchedOff)
    {
        for (const StudentMove& move : wanted)
            moves.add(move);
        return moves.run(progress, backup);
    }

    Result runForSure(const std::vector<StudentMove>& wanted)
    {
        test.dialogs.always(question, u"执行"_s);
        test.dialogs.always(scoreQuestion, u"以后再算"_s);
        return run(wanted);
    }

    QString planText(const std::vector<StudentMove>& wanted)
    {
        return grid::gridText(
                   maintenance::planGrid(maintenance::planMoves(test.scores.Conn, wanted)))
            .replace(u'\t', u'|');
    }

    void expectNothingChanged()
    {
        EXPECT_EQ(test.rows(studentRows), studentsBefore);
        EXPECT_EQ(test.rows(scoreRows), scoresBefore);
    }

    support::TestLibrary test{{u"语文"_s, u"总分"_s}};
    StudentMoves moves{test.scores};
    runtime::NoProgress progress;
    qint64 jia = 0;
    qint64 yi = 0;
    qint64 bing = 0;
    qint64 ding = 0;
    QString studentsBefore;
    QString scoresBefore;
};

TEST_F(MovesOfStudents, ToAnotherClassLeaveEarlierScoresWhereTheyWere)
{
    EXPECT_EQ(runForSure({to(jia, 2, 9)}), Result::Done);
    EXPECT_EQ(test.rows(studentRows), u"2|9|甲|理 / 1|2|乙|理 / 2|1|丙|理 / 5|7|丁|文"_s);
    EXPECT_EQ(test.rows(scoreRows), scoresBefore);
    EXPECT_EQ(test.dialogs.questions,
              QStringList{u"要执行这些调整吗？\n\n改班级或学号：1 人\n不改动的以前的成绩：2 条\n\n"
                          "这次不留备份，执行后不可恢复。"_s});
    EXPECT_EQ(test.dialogs.safeOf(question), u"取消"_s);
    EXPECT_EQ(test.dialogs.shown.last(),
              u"调整完毕。\n\n改班级或学号：1 人\n不改动的以前的成绩：2 条"_s);
    EXPECT_TRUE(moves.gathered().empty());
}

TEST_F(MovesOfStudents, TakeEarlierScoresAlongIfTheyAreToAndNameTheExamsToScore)
{
    EXPECT_EQ(runForSure({to(jia, 2, 9, EarlierScores::GoAlong)}), Result::Done);
    EXPECT_EQ(test.rows(scoreRows), u"期中|2|9|甲|理 / 期中|2|1|丙|理 / 期末|2|9|甲|理 / "
                                    "期末|2|1|丙|理 / 期中|1|2|乙|理"_s);
    EXPECT_EQ(test.dialogs.questions.last(),
              u"调整完毕。\n\n改班级或学号：1 人\n一起改的以前的成绩：2 条\n\n"
              "这些考试的名次和总分还是调整以前算的：期中、期末。\n现在重新计算吗？"_s);
    EXPECT_EQ(test.dialogs.safeOf(scoreQuestion), u"以后再算"_s);
}

TEST_F(MovesOfStudents, ScoreTheExamsAnewIfThatIsWanted)
{
    test.dialogs.expect(question, u"执行"_s);
    test.dialogs.expect(scoreQuestion, u"现在计算"_s);
    EXPECT_EQ(run({to(jia, 2, 9, EarlierScores::GoAlong)}), Result::Done);
    EXPECT_EQ(test.rows(u"select 考试名称, 姓名, 语文年名, 语文班名 from 成绩表 order by rowid"_s),
              u"期中|甲|2|1 / 期中|丙|3|2 / 期末|甲|1|1 / 期末|丙|2|2 / 期中|乙|1|1"_s);
}

TEST_F(MovesOfStudents, ANewNumberInTheSameClassMakesNoExamStale)
{
    EXPECT_EQ(runForSure({to(jia, 1, 9, EarlierScores::GoAlong)}), Result::Done);
    EXPECT_TRUE(test.rows(scoreRows).startsWith(u"期中|1|9|甲|理 / 期中|2|1|丙"_s));
    EXPECT_EQ(test.dialogs.questions.size(), 1);
}

TEST_F(MovesOfStudents, SwapBothWithTheirScores)
{
    EXPECT_EQ(runForSure({swap(jia, bing, EarlierScores::GoAlong)}), Result::Done);
    EXPECT_EQ(test.rows(studentRows), u"2|1|甲|理 / 1|2|乙|理 / 1|1|丙|理 / 5|7|丁|文"_s);
    EXPECT_EQ(test.rows(scoreRows), u"期中|2|1|甲|理 / 期中|1|1|丙|理 / 期末|2|1|甲|理 / "
                                    "期末|1|1|丙|理 / 期中|1|2|乙|理"_s);
}

TEST_F(MovesOfStudents, SwapThoseWhoseScoresHaveNoIdToo)
{
    test.execute(u"update 成绩表 set id=null"_s);
    test.execute(u"insert into 成绩表(考试名称, 班级, 学号, 姓名, 科类) "
                 "values('入学', 1, 1, '别人', '理')"_s);
    EXPECT_EQ(runForSure({swap(jia, bing, EarlierScores::GoAlong)}), Result::Done);
    EXPECT_EQ(test.rows(scoreRows),
              u"期中|2|1|甲|理 / 期中|1|1|丙|理 / 期末|2|1|甲|理 / 期末|1|1|丙|理 / "
              "期中|1|2|乙|理 / 入学|1|1|别人|理"_s);
}

TEST_F(MovesOfStudents, RemoveAStudentAndLeaveHisScores)
{
    EXPECT_EQ(runForSure({removal(jia, EarlierScores::Stay)}), Result::Done);
    EXPECT_EQ(test.rows(studentRows), u"1|2|乙|理 / 2|1|丙|理 / 5|7|丁|文"_s);
    EXPECT_EQ(test.rows(scoreRows), scoresBefore);
    EXPECT_EQ(test.dialogs.shown.last(),
              u"调整完毕。\n\n从学生名单里删除：1 人\n不改动的以前的成绩：2 条"_s);
}

TEST_F(MovesOfStudents, RemoveAStudentWithHisScores)
{
    EXPECT_EQ(runForSure({removal(jia, EarlierScores::GoAlong)}), Result::Done);
    EXPECT_EQ(test.rows(scoreRows), u"期中|2|1|丙|理 / 期末|2|1|丙|理 / 期中|1|2|乙|理"_s);
    EXPECT_TRUE(test.dialogs.questions.last().contains(
        u"从学生名单里删除：1 人\n一起删去的以前的成绩：2 条\n\n"
        "这些考试的名次和总分还是调整以前算的：期中、期末。"_s));
}

TEST_F(MovesOfStudents, TakePlaceAllAtOnceSoThatAPlaceThatIsLeftIsFree)
{
    EXPECT_EQ(runForSure({to(jia, 1, 2), to(yi, 2, 1), removal(bing, EarlierScores::Stay)}),
              Result::Done);
    EXPECT_EQ(test.rows(studentRows), u"1|2|甲|理 / 2|1|乙|理 / 5|7|丁|文"_s);
}

TEST_F(MovesOfStudents, ToATakenPlaceAreShownAndRefused)
{
    EXPECT_EQ(
        planText({to(jia, 1, 2), to(bing, 9, 9), to(ding, 9, 9)}),
        u"学生|现在|调整为|科类|以前的成绩|说明\n"
        "甲|1 班 1 号|1 班 2 号|理|2 条，不改动|1 班 2 号 已经是“乙”。\n"
        "丙|2 班 1 号|9 班 9 号|理|2 条，不改动|“丁”也要到 9 班 9 号。 成绩库里还没有 9 班。\n"
        "丁|5 班 7 号|9 班 9 号|文|没有|“丙”也要到 9 班 9 号。 成绩库里还没有 9 班。\n"_s);
    EXPECT_EQ(run({to(jia, 1, 2), to(bing, 9, 9)}), Result::Declined);
    EXPECT_EQ(test.dialogs.shown.last(),
              u"这些调整还不能执行：\n\n甲（1 班 1 号）：1 班 2 号 已经是“乙”。"_s);
    expectNothingChanged();
    EXPECT_EQ(moves.gathered().size(), 2u) << "to be mended";
}

TEST_F(MovesOfStudents, WithScoresToAPlaceThatALeaverHasInAnExamAreRefused)
{
    test.execute(u"update 成绩表 set 学号=9 where 班级=2 and 考试名称='期末'"_s);
    test.execute(u"delete from 信息表 where 姓名='丙'"_s);
    test.addStudent(2, 3, u"戊"_s, u"理"_s);
    EXPECT_TRUE(planText({to(jia, 2, 9, EarlierScores::GoAlong)})
                    .contains(u"|2 班 9 号 在 期末 里已经有别人的成绩，"
                              "他的成绩不能一起改过去，请换一个学号。\n"_s));
    scoresBefore = test.rows(scoreRows);
    studentsBefore = test.rows(studentRows);
    EXPECT_EQ(run({to(jia, 2, 9, EarlierScores::GoAlong)}), Result::Declined);
    expectNothingChanged();
    moves.takeBack(0);
    EXPECT_TRUE(planText({to(jia, 2, 9)}).endsWith(u"|2 条，不改动|\n"_s));
    EXPECT_TRUE(planText({to(yi, 2, 9, EarlierScores::GoAlong)}).endsWith(u"|1 条，一起改|\n"_s))
        << "he did not sit 期末";
}

TEST_F(MovesOfStudents, ToWhereTheyAreAreRefusedUnlessScoresGoAlong)
{
    EXPECT_TRUE(planText({to(jia, 1, 1)}).contains(u"他现在就在 1 班 1 号。"_s));
    test.execute(u"update 成绩表 set 班级=8, 学号=8 where 姓名='甲'"_s);
    EXPECT_EQ(runForSure({to(jia, 1, 1, EarlierScores::GoAlong)}), Result::Done);
    EXPECT_EQ(test.rows(scoreRows), scoresBefore);
}

TEST_F(MovesOfStudents, IntoAClassOfAnotherStreamTakeItOnUnlessItIsKept)
{
    EXPECT_EQ(planText({to(jia, 5, 8, EarlierScores::GoAlong)}),
              u"学生|现在|调整为|科类|以前的成绩|说明\n"
              "甲|1 班 1 号|5 班 8 号|理 → 文|2 条，一起改|科类由“理”改为“文”。 "
              "以前的成绩里有 2 条不是科类“文”的，按班统计时不在新班里。\n"_s);
    StudentMove kept = to(bing, 5, 9);
    kept.stream = StreamAfter::Kept;
    EXPECT_TRUE(planText({kept}).contains(u"|理|2 条，不改动|5 班的科类是“文”，他仍是“理”。"_s));
    EXPECT_EQ(runForSure({to(jia, 5, 8, EarlierScores::GoAlong), kept}), Result::Done);
    EXPECT_EQ(test.rows(studentRows), u"5|8|甲|文 / 1|2|乙|理 / 5|9|丙|理 / 5|7|丁|文"_s);
    EXPECT_TRUE(test.rows(scoreRows).startsWith(u"期中|5|8|甲|理 / "_s))
        << "a score keeps its stream";
}

TEST_F(MovesOfStudents, IntoAClassOfAnotherCategoryTakeItOnUnlessItIsKept)
{
    test.execute(u"update 信息表 set 类别代码=3 where 班级=2"_s);
    EXPECT_TRUE(planText({to(yi, 2, 8)}).contains(u"|类别代码由“1”改为“3”。\n"_s));
    StudentMove kept = to(jia, 2, 9);
    kept.stream = StreamAfter::Kept;
    EXPECT_TRUE(planText({kept}).contains(
        u"|2 班的类别代码是“3”，他仍是“1”。 2 班名单里的第一名学生将是“甲”，"
        "以后导入时 2 班的类别代码由“3”变为“1”。\n"_s));
    EXPECT_EQ(runForSure({to(yi, 2, 8), kept}), Result::Done);
    EXPECT_EQ(test.rows(u"select 姓名, 类别代码 from 信息表 order by ID"_s),
              u"甲|1 / 乙|3 / 丙|3 / 丁|1"_s);
}

TEST_F(MovesOfStudents, ThatGiveAClassAFirstStudentOfAnotherKindSaySo)
{
    test.execute(u"update 信息表 set 科类='文', 类别代码=2 where 姓名='乙'"_s);
    const QString changed =
        u"1 班名单里的第一名学生将是“乙”，以后导入时 1 班的科类由“理”变为“文”。 "
        "1 班名单里的第一名学生将是“乙”，以后导入时 1 班的类别代码由“1”变为“2”。\n"_s;
    EXPECT_TRUE(planText({removal(jia, EarlierScores::GoAlong)}).endsWith(changed));
    EXPECT_TRUE(planText({to(jia, 2, 9)}).endsWith(changed));
    EXPECT_FALSE(planText({removal(yi, EarlierScores::Stay)}).contains(u"第一名"_s));
    EXPECT_FALSE(planText({removal(jia, EarlierScores::Stay), removal(yi, EarlierScores::Stay)})
                     .contains(u"第一名"_s))
        << "a class that is left by all has none";
}

TEST_F(MovesOfStudents, ToANewNumberInTheirClassKeepTheirStreamAndCategory)
{
    test.execute(u"update 信息表 set 科类='文', 类别代码=2 where 姓名='乙'"_s);
    EXPECT_TRUE(planText({to(yi, 1, 9)}).contains(u"|文|1 条，不改动|\n"_s));
    EXPECT_EQ(runForSure({to(yi, 1, 9)}), Result::Done);
    EXPECT_EQ(test.rows(u"select 学号, 科类, 类别代码 from 信息表 where 姓名='乙'"_s), u"9|文|2"_s);
}

TEST_F(MovesOfStudents, OfStudentsWhoAreGoneAreRefused)
{
    EXPECT_EQ(run({removal(4711, EarlierScores::Stay)}), Result::Declined);
    EXPECT_TRUE(test.dialogs.shown.last().endsWith(u"成绩库里已经没有这名学生了。"_s));
    moves.takeBack(0);
    test.execute(u"update 信息表 set 学号=null where 姓名='乙'"_s);
    EXPECT_EQ(run({swap(jia, yi)}), Result::Declined);
    EXPECT_TRUE(
        test.dialogs.shown.last().contains(u"甲（1 班 1 号）：两人都要有班级和学号才能交换。"_s));
    EXPECT_TRUE(planText({swap(jia, yi)}).contains(u"甲|1 班 1 号|不能交换|"_s));
    moves.takeBack(0);
    EXPECT_EQ(runForSure({to(yi, 1, 3)}), Result::Done) << "he can be given a number";
}

TEST_F(MovesOfStudents, OfAStudentWhoIsPartOfOneAreNotGathered)
{
    const QString already = u"这名学生已经有一项调整了，请先撤回那一项。"_s;
    moves.add(swap(jia, yi));
    EXPECT_EQ(support::errorOf([&] { moves.add(to(yi, 3, 3)); }), already);
    EXPECT_EQ(support::errorOf([&] { moves.add(swap(bing, jia)); }), already);
    EXPECT_EQ(support::errorOf([&] { moves.add(swap(bing, bing)); }),
              u"请选择另一名学生来交换。"_s);
    for (const double number : {0.0, -1.0, 1.5, 1e300, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(support::errorOf([&] { moves.add(to(bing, 1, number)); }),
                  u"班级和学号要是从 1 起的整数。"_s)
            << number;
    moves.takeBack(0);
    moves.add(to(yi, 3, 3));
    EXPECT_EQ(moves.gathered().size(), 1u);
}

TEST_F(MovesOfStudents, OfferTheNumberBehindTheLastOfTheClass)
{
    EXPECT_EQ(moves.freeNumber(1), 3);
    EXPECT_EQ(moves.freeNumber(5), 8);
    EXPECT_EQ(moves.freeNumber(77), 1);
    moves.add(to(bing, 5, 8));
    EXPECT_EQ(moves.freeNumber(5), 9) << "with what is gathered";
    EXPECT_EQ(moves.freeNumber(2), 2) << "behind the scores that he leaves";
    test.execute(u"delete from 成绩表 where 班级=2"_s);
    EXPECT_EQ(moves.freeNumber(2), 1) << "without him who leaves";
}

TEST_F(MovesOfStudents, OfferNoNumberThatALeaverHasInAnExam)
{
    test.execute(u"update 成绩表 set 学号=3 where 姓名='乙'"_s);
    EXPECT_EQ(moves.freeNumber(1), 4);
}

TEST_F(MovesOfStudents, NobodyAskedForAreTold)
{
    EXPECT_EQ(run({}), Result::Declined);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"还没有要执行的调整。"_s});
}

TEST_F(MovesOfStudents, StopOnTheSafeAnswer)
{
    test.dialogs.expect(question, u"取消"_s);
    EXPECT_EQ(run({to(jia, 2, 9)}, Backup::Make), Result::Declined);
    expectNothingChanged();
    EXPECT_EQ(QDir(test.folder.path()).entryList({u"*.bak"_s}).size(), 0);
}

TEST_F(MovesOfStudents, MakeACopyBeforeThatSaysWhatItIsFor)
{
    const QByteArray before = support::read(test.scores.LibPath);
    test.dialogs.expect(u"执行前会在成绩库旁边留一份备份。"_s, u"执行"_s);
    EXPECT_EQ(run({to(jia, 2, 9)}, Backup::Make), Result::Done);
    const QStringList copies = QDir(test.folder.path()).entryList({u"*.bak"_s});
    ASSERT_EQ(copies.size(), 1);
    EXPECT_EQ(support::read(test.file(copies[0])), before);
    EXPECT_EQ(library::notedOccasions(test.file(copies[0])).at(0).occasion.text, u"学生调整 甲"_s);
}

TEST_F(MovesOfStudents, OfSeveralNoteTheFirstAndHowManyThereAre)
{
    test.execute(u"update 信息表 set 姓名='郭'||char(10)||'一瑶' where 姓名='甲'"_s);
    test.dialogs.expect(question, u"执行"_s);
    EXPECT_EQ(run({to(jia, 2, 9), swap(yi, bing, EarlierScores::Stay)}, Backup::Make),
              Result::Done);
    const QString copy = QDir(test.folder.path()).entryList({u"*.bak"_s}).value(0);
    EXPECT_EQ(library::notedOccasions(test.file(copy)).at(0).occasion.text,
              u"学生调整 郭 一瑶等 3 人"_s);
}

TEST_F(MovesOfStudents, WriteNothingIfTheLibraryChangesWhileTheQuestionWaits)
{
    moves.add(to(jia, 2, 9));
    support::WatchedProgress watched;
    test.dialogs.expect(question, u"执行"_s);
    const runtime::BeforeDialogs meanwhile([this] {
        test.execute(u"insert into 信息表(班级, 学号, 姓名, 科类) values(2, 9, '戊', '理')"_s);
    });
    EXPECT_EQ(moves.run(watched, Backup::SwitchedOff), Result::Stopped);
    EXPECT_EQ(test.dialogs.failures, QStringList()) << "it is no failure";
    EXPECT_EQ(test.dialogs.shown.last(),
              u"回答问题期间成绩库有改动，什么也没有写入。请再看一遍调整。"_s);
    EXPECT_TRUE(test.rows(studentRows).startsWith(studentsBefore));
    EXPECT_EQ(moves.gathered().size(), 1u);
}

TEST_F(MovesOfStudents, ThatAreCancelledLeaveTheLibrary)
{
    support::WatchedProgress watched;
    watched.onReport = [&](int done) { watched.isStopped = done > 0; };
    test.dialogs.expect(question, u"执行"_s);
    moves.add(to(jia, 2, 9, EarlierScores::GoAlong));
    moves.add(removal(bing, EarlierScores::GoAlong));
    EXPECT_EQ(moves.run(watched, Backup::SwitchedOff), Result::Stopped);
    EXPECT_EQ(watched.texts, QStringList(2, u"学生调整..."_s));
    expectNothingChanged();
    EXPECT_EQ(test.dialogs.shown.size(), 1);
}

TEST_F(MovesOfStudents, TellTheFollowersOnceWithTheListsRenewed)
{
    int told = 0;
    QObject::connect(&test.scores, &library::ScoreLibrary::changed, &test.scores, [&] {
        ++told;
        EXPECT_EQ(test.scores.catalogue.ClassTable.at(1).size(), 3u);
    });
    runForSure({to(jia, 9, 1)});
    EXPECT_EQ(told, 1);
}

TEST_F(MovesOfStudents, GoByIdWhateverNamesHold)
{
    for (const QString& name : {u"' or ''='"_s, u"王--"_s, u"a\nb"_s, QString(10'000, u'长')}) {
        test.execute(u"update 信息表 set 姓名='%1' where ID=%2"_s.arg(
            QString(name).replace(u'\'', u"''"_s), QString::number(jia)));
        const MovePlan plan = maintenance::planMoves(test.scores.Conn, {to(jia, 2, 9)});
        EXPECT_LE(plan.students.at(0).student.text().size(), 80);
        EXPECT_EQ(runForSure({to(jia, 2, 9)}), Result::Done);
        EXPECT_EQ(runForSure({to(jia, 1, 1)}), Result::Done);
    }
    EXPECT_EQ(test.rows(u"select 班级, 学号 from 信息表 order by ID"_s),
              u"1|1 / 1|2 / 2|1 / 5|7"_s);
}

TEST_F(MovesOfStudents, ACopyThatDoesNotFitIsToldBeforeTheQuestion)
{
    moves.add(to(jia, 2, 9));
    support::outgrowDisk(test);
    EXPECT_EQ(moves.run(progress, Backup::Make), Result::Stopped);
    support::expectOnlyNoRoomTold(test.dialogs.shown);
}

} // namespace
