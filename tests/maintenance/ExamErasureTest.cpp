#include "maintenance/ExamErasure.h"

#include <QDir>

#include <gtest/gtest.h>

#include "library/CopyOccasion.h"
#include "maintenance/QuotedText.h"
#include "support/FileBytes.h"
#include "support/NoRoom.h"
#include "support/OtherProgram.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"
#include "support/WatchedProgress.h"

namespace {

using namespace Qt::StringLiterals;
using library::Backup;
using maintenance::ExamErasure;
using Result = ExamErasure::Result;

const QString question = u"要彻底删除这些考试吗？"_s;
const QString exams = u"select 考试名称, 科类 from 考试名称表 order by rowid"_s;
const QString scores = u"select 考试名称, 姓名, 语文 from 成绩表 order by rowid"_s;

class ExamErasures : public testing::Test
{
protected:
    ExamErasures()
    {
        test.addStudent(1, 1, u"甲"_s, u"理"_s);
        test.addStudent(1, 2, u"乙"_s, u"理"_s);
        test.addStudent(2, 1, u"丙"_s, u"文"_s);
        for (const QString& exam : {u"期中"_s, u"期末"_s}) {
            addExam(exam, u"理"_s);
            addExam(exam, u"文"_s);
            test.addScores(exam, 1, 1, {{u"语文"_s, 70}, {u"数学"_s, -1}, {u"总分"_s, 70}});
            test.addScores(exam, 1, 2, {{u"语文"_s, 80}});
            test.addScores(exam, 2, 1, {});
        }
        test.execute(u"insert into 教师表(考试名称, 班级, 语文) values('期中', 1, '王'), "
                     "('期中', 2, '王'), ('期末', 1, '李')"_s);
        test.reload();
    }

    void addExam(const QString& exam, const QString& stream)
    {
        test.addExam(exam, stream, 1, {{u"语文"_s, 100}, {u"数学"_s, 100}});
    }

    Result erase(const QStringList& names, Backup backup = Backup::SwitchedOff)
    {
        return erasure.run(names, progress, backup);
    }

    Result eraseForSure(const QStringList& names)
    {
        test.dialogs.expect(question, u"彻底删除"_s);
        return erase(names);
    }

    QStringList copies() const
    {
        return QDir(test.folder.path()).entryList({u"*.bak"_s}, QDir::Files);
    }

    support::TestLibrary test{{u"语文"_s, u"数学"_s, u"总分"_s}};
    ExamErasure erasure{test.scores};
    runtime::NoProgress progress;
};

TEST_F(ExamErasures, OfNoExamAreRefused)
{
    EXPECT_EQ(erase({}), Result::Declined);
    EXPECT_EQ(test.dialogs.shown,
              QStringList{u"没有选择考试，请先在考试列表里选择要删除的考试。"_s});
}

TEST_F(ExamErasures, AskOnceWithTheCountsAndStopOnTheSafeAnswer)
{
    test.execute(u"update 设置表 set 设置='期末,期中,月考' where 名称='进行对比分析的考试'"_s);
    const QByteArray before = support::read(test.scores.LibPath);
    test.dialogs.expect(question, u"取消"_s);
    EXPECT_EQ(erase({u"期中"_s}, Backup::Make), Result::Declined);
    EXPECT_EQ(test.dialogs.questions,
              QStringList{u"要彻底删除这些考试吗？\n\n"
                          "期中（文）：0 人有成绩，共 0 个成绩\n"
                          "期中（理）：2 人有成绩，共 2 个成绩，另有 1 个缺考\n\n"
                          "一共删去：成绩表 3 行，考试名称表 2 行，教师名单 2 行。\n"
                          "分析设置“进行对比分析的考试”里写着其中 1 次考试，这项设置保持原样。\n\n"
                          "删除前会在成绩库旁边留一份备份。"_s});
    EXPECT_EQ(test.dialogs.safeOf(question), u"取消"_s);
    EXPECT_EQ(support::read(test.scores.LibPath), before);
    EXPECT_EQ(copies(), QStringList());
}

TEST_F(ExamErasures, CountNoScoreOfWhoWasAbsentFromAll)
{
    test.execute(u"update 成绩表 set 语文=-1 where 考试名称='期中' and 学号=2"_s);
    test.dialogs.expect(u"期中（理）：1 人有成绩，共 1 个成绩，另有 2 个缺考\n"_s, u"取消"_s);
    EXPECT_EQ(erase({u"期中"_s}), Result::Declined);
}

TEST_F(ExamErasures, SayThatNoCopyIsMade)
{
    test.dialogs.expect(u"这次不留备份，删除后不可恢复。"_s, u"取消"_s);
    EXPECT_EQ(erase({u"期中"_s}), Result::Declined);
}

TEST_F(ExamErasures, TakeTheRowsOfTheExamInAllTablesAndNothingElse)
{
    EXPECT_EQ(eraseForSure({u"期中"_s}), Result::Done);
    EXPECT_EQ(test.dialogs.shown.last(),
              u"已经彻底删除 1 次考试：成绩表 3 行，考试名称表 2 行，教师名单 2 行。"_s);
    EXPECT_EQ(test.rows(exams), u"期末|理 / 期末|文"_s);
    EXPECT_EQ(test.rows(scores), u"期末|甲|70 / 期末|乙|80 / 期末|丙|NULL"_s);
    EXPECT_EQ(test.rows(u"select 考试名称, 班级, 语文 from 教师表"_s), u"期末|1|李"_s);
    EXPECT_EQ(test.rows(u"select count(*) from 信息表"_s), u"3"_s);
    EXPECT_EQ(test.scores.catalogue.ExamList, QStringList{u"期末"_s});
}

TEST_F(ExamErasures, TellTheFollowersOnceWithTheListsRenewed)
{
    QStringList seen;
    QObject::connect(&test.scores, &library::ScoreLibrary::changed, &test.scores,
                     [&] { seen.append(test.scores.catalogue.ExamList.join(u' ')); });
    EXPECT_EQ(eraseForSure({u"期末"_s, u"期中"_s}), Result::Done);
    EXPECT_EQ(seen, QStringList{u""_s});
}

TEST_F(ExamErasures, MakeACopyBeforeThatSaysWhatItIsFor)
{
    const QByteArray before = support::read(test.scores.LibPath);
    test.dialogs.expect(question, u"彻底删除"_s);
    EXPECT_EQ(erase({u"期中"_s, u"期末"_s}, Backup::Make), Result::Done);
    ASSERT_EQ(copies().size(), 1);
    EXPECT_EQ(support::read(test.file(copies()[0])), before);
    const std::vector<library::NotedOccasion> noted =
        library::notedOccasions(test.file(copies()[0]));
    ASSERT_EQ(noted.size(), 1u);
    EXPECT_EQ(noted[0].occasion.text, u"删除考试 期中、期末"_s);
}

TEST_F(ExamErasures, TakeAnExamWhateverItsNameHoldsAndNoOther)
{
    const QString before = test.rows(scores);
    for (const QString& name :
         {u"2024--2025"_s, u"' or ''='"_s, u"'期中"_s, u"期中'--"_s, u"/*"_s, u"a\nb"_s, u"甲,乙"_s,
          u""_s, u"?1"_s, u"'';delete from 成绩表 where 班级='"_s, u"期"_s, u"%"_s,
          QString(10'000, u'长')}) {
        test.execute(u"insert into 考试名称表(考试名称, 科类) values('%1', '理')"_s.arg(
            QString(name).replace(u'\'', u"''"_s)));
        test.execute(u"insert into 成绩表(考试名称, 科类, id, 语文) values('%1', '理', 1, 5)"_s.arg(
            QString(name).replace(u'\'', u"''"_s)));
        EXPECT_EQ(eraseForSure({name}), Result::Done) << name.left(40).toStdString();
        EXPECT_TRUE(test.dialogs.questions.last().contains(u"成绩表 1 行，考试名称表 1 行"_s));
        EXPECT_EQ(test.rows(exams), u"期中|理 / 期中|文 / 期末|理 / 期末|文"_s);
        EXPECT_EQ(test.rows(scores), before) << name.left(40).toStdString();
    }
    EXPECT_EQ(test.dialogs.failures, QStringList());
}

TEST_F(ExamErasures, TakeNothingIfRowsCameWhileTheQuestionWaited)
{
    const QString came = u"insert into 成绩表(考试名称, 科类, 姓名) values('期中', '理', '抢先')"_s;
    test.dialogs.expect(question, u"彻底删除"_s);
    const runtime::BeforeDialogs meanwhile([&] { test.execute(came); });
    EXPECT_EQ(erase({u"期中"_s}), Result::Stopped);
    EXPECT_EQ(test.dialogs.shown.last(),
              u"回答问题期间别的程序改动了这些考试，什么也没有删除。请再看一遍要删除的内容。"_s);
    EXPECT_TRUE(test.rows(u"select count(*) from 成绩表 where 考试名称='期中'"_s).toInt() > 3);
    EXPECT_EQ(test.dialogs.failures, QStringList());
}

TEST_F(ExamErasures, ShowLongAndBrokenNamesOnAShortLine)
{
    EXPECT_EQ(maintenance::shownName(QString(10'000, u'长')), QString(60, u'长') + u'…');
    EXPECT_EQ(maintenance::shownName(u"高一\n期中"_s), u"高一 期中"_s);
}

TEST_F(ExamErasures, LeaveAnExamThatDiffersInCaseOnly)
{
    addExam(u"Test"_s, u"理"_s);
    addExam(u"test"_s, u"理"_s);
    EXPECT_EQ(eraseForSure({u"Test"_s}), Result::Done);
    EXPECT_TRUE(test.rows(exams).endsWith(u"/ test|理"_s));
}

TEST_F(ExamErasures, NameTwelveLinesAndCountTheRest)
{
    QStringList names;
    for (int i = 0; i < 14; ++i) {
        names.append(u"月考%1"_s.arg(i));
        addExam(names.last(), u"理"_s);
    }
    test.dialogs.expect(
        u"月考11（理）：0 人有成绩，共 0 个成绩\n……（连同没有列出的，一共 14 项）\n"_s, u"取消"_s);
    EXPECT_EQ(erase(names), Result::Declined);
    EXPECT_FALSE(test.dialogs.questions.last().contains(u"月考12"_s));
}

TEST_F(ExamErasures, CountAStudentOnceAndRowsWithoutAnIdByThemselves)
{
    test.execute(u"insert into 成绩表(考试名称, 科类, id, 语文) values('期中', '理', 1, 9), "
                 "('期中', '理', null, 9), ('期中', '理', 0, 9), ('期中', null, 3, 9)"_s);
    const maintenance::ErasureCounts counts = maintenance::countErasure(test.scores, {u"期中"_s});
    EXPECT_TRUE(counts.text().startsWith(u"期中（没有科类）：1 人有成绩，共 1 个成绩\n"
                                         "期中（文）：0 人有成绩，共 0 个成绩\n"
                                         "期中（理）：4 人有成绩，共 5 个成绩，另有 1 个缺考\n"_s))
        << counts.text().toStdString();
    EXPECT_EQ(counts.scoreRows(), 7);
}

TEST_F(ExamErasures, WorkWhereTheTableOfTeachersIsMissing)
{
    test.execute(u"drop table 教师表"_s);
    EXPECT_EQ(eraseForSure({u"期中"_s}), Result::Done);
    EXPECT_TRUE(test.dialogs.shown.last().endsWith(u"教师名单 0 行。"_s));
}

TEST_F(ExamErasures, ThatAreCancelledLeaveTheLibraryAndSayNothing)
{
    const QByteArray before = support::read(test.scores.LibPath);
    support::WatchedProgress watched;
    watched.onReport = [&](int done) { watched.isStopped = done > 0; };
    test.dialogs.expect(question, u"彻底删除"_s);
    EXPECT_EQ(erasure.run({u"期中"_s, u"期末"_s}, watched, Backup::SwitchedOff), Result::Stopped);
    EXPECT_EQ(watched.texts, (QStringList{u"删除考试：期中..."_s, u"删除考试：期末..."_s}));
    EXPECT_EQ(watched.counts, (std::vector<std::pair<int, int>>{{0, 6}, {3, 6}}));
    EXPECT_EQ(watched.finished, 1);
    EXPECT_EQ(test.dialogs.shown.size(), 1) << "the question alone";
    EXPECT_EQ(support::read(test.scores.LibPath), before);
    EXPECT_EQ(eraseForSure({u"期中"_s}), Result::Done) << "and can be run again";
}

TEST_F(ExamErasures, OfALibraryThatIsLockedSayNoSuccess)
{
    support::OtherProgram other(test.scores.LibPath);
    other.run("begin immediate");
    EXPECT_EQ(eraseForSure({u"期中"_s}), Result::Stopped);
    other.run("rollback");
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(u" - Sub EraseExams/Maintenance"_s));
    EXPECT_EQ(test.rows(u"select count(*) from 成绩表"_s), u"6"_s);
}

TEST_F(ExamErasures, KnowAnExamThatIsNotListed)
{
    addExam(u"高一期中"_s, u"理"_s);
    EXPECT_TRUE(maintenance::isExamStored(test.scores.Conn, u"期中"_s));
    EXPECT_FALSE(maintenance::isExamStored(test.scores.Conn, u"期"_s));
    test.execute(u"delete from 考试名称表"_s);
    EXPECT_TRUE(maintenance::isExamStored(test.scores.Conn, u"期中"_s)) << "by its scores alone";
}

TEST_F(ExamErasures, ACopyThatDoesNotFitIsToldBeforeTheQuestion)
{
    support::outgrowDisk(test);
    EXPECT_EQ(erase({u"期中"_s}, Backup::Make), Result::Stopped);
    support::expectOnlyNoRoomTold(test.dialogs.shown);
}

} // namespace
