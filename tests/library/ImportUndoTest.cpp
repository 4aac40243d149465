#include <QFile>

#include "library/AskedRestore.h"
#include "library/LeftOvers.h"
#include "library/LibraryRestore.h"
#include "support/CopiedLibrary.h"
#include "support/FileBytes.h"

namespace {

using namespace Qt::StringLiterals;
using library::LibraryCopy;
using library::Occasion;

const QString imported = u"这次导入带来的，以及导入以后对这次考试和名单的改动：\n"_s;

const QString endOfTerm = u"撤消 2026-03-09 07:01:00 的“导入 期末”？"_s;

class Undo : public support::CopiedLibrary
{
protected:
    void expectUnknown(const QString& time, const QString& import)
    {
        EXPECT_FALSE(library::undoLastImport(test.scores, progress));
        EXPECT_EQ(test.dialogs.shown.last(),
                  u"没有可以撤消的导入：%1 的“%2”以后恢复过备份，不能确定那次导入还在不在成绩库里。"
                  "要回到别的时候，请用“恢复备份…”。"_s.arg(time, import));
    }
    void expectOffered(const QString& question, const QString& answer)
    {
        test.dialogs.expect(question, answer);
        EXPECT_EQ(library::undoLastImport(test.scores, progress), answer == u"撤消导入"_s);
        EXPECT_TRUE(test.dialogs.questions.last().startsWith(question));
    }
    void restore(const QString& taken)
    {
        library::restoreLibrary(test.scores, path, taken, Occasion::restoring(), progress);
    }
    void changeScores(int score) { test.execute(u"update 成绩表 set 语文=%1"_s.arg(score)); }
    void expectUndone(const QString& time, const QString& import)
    {
        EXPECT_FALSE(library::undoLastImport(test.scores, progress));
        EXPECT_EQ(test.dialogs.shown.last(),
                  u"没有可以撤消的导入：%1 的“%2”之前的备份已经恢复过。"
                  "要回到别的时候，请用“恢复备份…”。"_s.arg(time, import));
    }
};

TEST_F(Undo, OfTheLastImportTellsWhatElseHasChanged)
{
    test.execute(u"update 成绩表 set 语文=91 where 考试名称='期中'"_s);
    test.dialogs.expect(u"撤消"_s, u"撤消导入"_s);
    EXPECT_TRUE(library::undoLastImport(test.scores, progress));
    EXPECT_EQ(test.dialogs.questions.last(),
              u"撤消 2026-03-09 07:01:00 的“导入 期末”？"
              "成绩库恢复为那次导入之前的备份。\n\n"
              "这次导入带来的，以及导入以后对这次考试和名单的改动：\n"
              "备份以后增加、恢复后没有的考试：1 次（期末）\n"
              "备份以后增加、恢复后没有的学生：1 名（2 班 1 号 新生）\n\n"
              "除此以外，还有下列改动也会一起撤消：\n"
              "恢复后回到备份内容的考试：1 次，不同的成绩共 1 个（期中：成绩不同 1 个）\n\n"
              "现在的成绩库会先备份，以后可以再恢复回来。"_s);
    EXPECT_EQ(test.rows(u"select 语文 from 成绩表"_s), u"90"_s);
    EXPECT_EQ(newest().occasionText(), u"撤消 导入 期末"_s);
    expectUndone(u"2026-03-09 07:01:00"_s, u"导入 期末"_s);
}

TEST_F(Undo, OfTheLastImportCallsLaterWorkOnItsExamAndListIncluded)
{
    test.addScores(u"期末"_s, 2, 1, {{u"语文"_s, 99}});
    test.addStudent(3, 1, u"转来"_s, u"理"_s);
    test.execute(u"update 信息表 set 姓名='王方' where 姓名='王芳'"_s);
    test.dialogs.expect(u"撤消"_s, u"取消"_s);
    EXPECT_FALSE(library::undoLastImport(test.scores, progress));
    EXPECT_EQ(test.dialogs.questions.last(),
              u"撤消 2026-03-09 07:01:00 的“导入 期末”？"
              "成绩库恢复为那次导入之前的备份。\n\n"
              "这次导入带来的，以及导入以后对这次考试和名单的改动：\n"
              "备份以后增加、恢复后没有的考试：1 次（期末）\n"
              "备份以后增加、恢复后没有的学生：2 名（2 班 1 号 新生；3 班 1 号 转来）\n"
              "恢复后改回原来姓名的学生：1 名（1 班 1 号 王方，备份里的姓名是 王芳）\n\n"
              "成绩库的其他内容没有改动。\n\n"
              "现在的成绩库会先备份，以后可以再恢复回来。"_s);
    backUp(Occasion::studentImport(), 2);
    test.addStudent(4, 1, u"再来"_s, u"理"_s);
    test.dialogs.expect(u"这次导入带来的，以及导入以后增加的学生：\n"
                        "备份以后增加、恢复后没有的学生：1 名（4 班 1 号 再来）\n\n"
                        "成绩库的其他内容没有改动。"_s,
                        u"取消"_s);
    EXPECT_FALSE(library::undoLastImport(test.scores, progress));
}

TEST_F(Undo, OfTheLastImportNamesWhatLeftACopySince)
{
    backUp({u"学生调整 王芳"_s}, 2);
    backUp({u"甲\n乙 %1"_s}, 3);
    const QString told = u"导入以后，下列操作之前也留过备份："_s;
    test.dialogs.expect(told + u"甲 乙 %1；学生调整 王芳。\n\n"_s, u"取消"_s);
    EXPECT_FALSE(library::undoLastImport(test.scores, progress));
    for (int minute = 4; minute < 8; ++minute)
        backUp({u"第 %1 步"_s.arg(minute)}, minute);
    library::backUpLibrary(path, QDateTime::currentDateTime().addYears(1), {u"未来"_s}, progress);
    test.dialogs.expect(told + u"第 7 步；第 6 步；第 5 步；第 4 步；甲 乙 %1 等 6 项。\n\n"_s,
                        u"取消"_s);
    EXPECT_FALSE(library::undoLastImport(test.scores, progress));
}

TEST_F(Undo, OfAnImportIsNotOfferedAgainOverLaterWorkOnAnEarlierOneOfItsExam)
{
    const QString second = backUp(Occasion::examImport(u"期末"_s), 2);
    test.addScores(u"期末"_s, 2, 1, {{u"语文"_s, 70}});
    test.dialogs.expect(u"撤消 2026-03-09 07:02:00 的“导入 期末”？"_s, u"撤消导入"_s);
    EXPECT_TRUE(library::undoLastImport(test.scores, progress));
    test.execute(u"update 成绩表 set 语文=96 where 考试名称='期末'"_s);
    expectUndone(u"2026-03-09 07:02:00"_s, u"导入 期末"_s);
    EXPECT_EQ(test.rows(u"select 语文 from 成绩表 where 考试名称='期末'"_s), u"96"_s);

    // The earlier one was not undone with it.
    library::removeCopy(path, second);
    test.dialogs.expect(u"撤消 2026-03-09 07:01:00 的“导入 期末”？"_s, u"取消"_s);
    EXPECT_FALSE(library::undoLastImport(test.scores, progress));
}

TEST_F(Undo, OfAnImportIsNotOfferedOnceAnOlderCopyWasRestored)
{
    changeScores(80);
    const QString move = backUp({u"学生调整 王芳"_s}, 2);
    changeScores(81);
    backUp(Occasion::examImport(u"期末"_s), 3);
    changeScores(82);
    restore(move);
    changeScores(96);
    expectUndone(u"2026-03-09 07:03:00"_s, u"导入 期末"_s);
    EXPECT_EQ(test.dialogs.questions, QStringList());
}

TEST_F(Undo, OfAnImportIsPossibleAgainOnceItWasRestoredBack)
{
    expectOffered(endOfTerm, u"撤消导入"_s);
    expectUndone(u"2026-03-09 07:01:00"_s, u"导入 期末"_s);
    restore(newest().path);
    EXPECT_EQ(exams(), u"期中 / 期末"_s);
    changeScores(91);
    expectOffered(endOfTerm, u"撤消导入"_s);
    EXPECT_EQ(exams(), u"期中"_s);
    changeScores(92);
    expectUndone(u"2026-03-09 07:01:00"_s, u"导入 期末"_s);
}

TEST_F(Undo, OfAnImportStaysKnownWhenTheCopyOfItsRestoreIsRemoved)
{
    restore(copy);
    ASSERT_TRUE(library::removeCopy(path, newest().path));
    changeScores(91);
    expectUndone(u"2026-03-09 07:01:00"_s, u"导入 期末"_s);
}

TEST_F(Undo, OfAnImportStaysKnownWhenTheCopyOfItsRestoreGoesByOtherMeans)
{
    restore(copy);
    ASSERT_TRUE(QFile::remove(newest().path));
    library::removeLeftOvers(path, {});
    changeScores(91);
    expectUndone(u"2026-03-09 07:01:00"_s, u"导入 期末"_s);
}

TEST_F(Undo, OfAnImportKnowsTheRestoreOfALibraryThatWasGone)
{
    test.scores.Conn.Close();
    ASSERT_TRUE(QFile::remove(path));
    restore(copy);
    changeScores(91);
    expectUndone(u"2026-03-09 07:01:00"_s, u"导入 期末"_s);
}

TEST_F(Undo, OfAnImportNeverGuessesHowFarARestoreCameThatWasBrokenOff)
{
    const QDateTime now = QDateTime::currentDateTime();
    const QDateTime before = library::timeOfState(path, copy);
    EXPECT_EQ(before, QDateTime(QDate(2026, 3, 9), QTime(7, 1)));
    const QString further = library::backUpLibrary(path, now, Occasion::restoring(), progress);
    // Ahead of the note of what is restored, and behind it.
    expectOffered(endOfTerm, u"取消"_s);
    library::noteRestore(path, further, {now, before});
    expectOffered(endOfTerm, u"取消"_s);

    changeScores(91);
    expectUnknown(u"2026-03-09 07:01:00"_s, u"导入 期末"_s);
    test.scores.Conn.Close();
    support::write(path, support::read(copy));
    test.scores.OpenDB();
    expectUnknown(u"2026-03-09 07:01:00"_s, u"导入 期末"_s);
    library::noteRestore(path, further, {now, before, true});
    expectUndone(u"2026-03-09 07:01:00"_s, u"导入 期末"_s);
}

TEST_F(Undo, OfAnImportNeverGuessesOfWhichTimeACopyFromElsewhereIs)
{
    const QString elsewhere = test.file(u"副本.CJK"_s);
    ASSERT_TRUE(QFile::copy(path, elsewhere));
    changeScores(80);
    restore(elsewhere);
    expectUnknown(u"2026-03-09 07:01:00"_s, u"导入 期末"_s);
    library::backUpLibrary(path, QDateTime::currentDateTime(), Occasion::examImport(u"期中"_s),
                           progress);
    changeScores(81);
    test.dialogs.expect(u"“导入 期中”？"_s, u"取消"_s);
    EXPECT_FALSE(library::undoLastImport(test.scores, progress));
}

TEST_F(Undo, OfAnImportReadsTheNotesOfEarlierVersions)
{
    const auto note = [&](const QByteArray& undone) {
        support::write(library::occasionFile(copy),
                       "{\"occasions\":[{\"time\":\"2026-03-09T07:01:00.000\","
                       "\"what\":\"导入 期末\",\"kind\":\"exam-import\",\"exam\":\"期末\""
                           + undone + "}]}");
    };
    note({});
    expectOffered(endOfTerm, u"取消"_s);
    note(",\"undone\":true");
    expectUndone(u"2026-03-09 07:01:00"_s, u"导入 期末"_s);
    // They did not note what was restored.
    note({});
    backUp({u"恢复备份"_s}, 2);
    changeScores(80);
    expectUnknown(u"2026-03-09 07:01:00"_s, u"导入 期末"_s);
}

TEST_F(Undo, OfTheCopyBeforeAnImportUndoesIt)
{
    test.dialogs.expect(u"把成绩库恢复为这份备份？"_s, u"恢复"_s);
    EXPECT_TRUE(library::restoreAsked(test.scores, path, newest(), progress));
    test.execute(u"update 成绩表 set 语文=91"_s);
    expectUndone(u"2026-03-09 07:01:00"_s, u"导入 期末"_s);
}

TEST_F(Undo, OfTheLastImportSaysThatNothingElseHasChanged)
{
    test.dialogs.expect(u"成绩库的其他内容没有改动。"_s, u"取消"_s);
    EXPECT_FALSE(library::undoLastImport(test.scores, progress));
    test.execute(u"delete from 成绩表 where 考试名称='期末'"_s);
    test.execute(u"delete from 考试名称表 where 考试名称='期末'"_s);
    test.execute(u"delete from 信息表 where 姓名='新生'"_s);
    test.execute(u"update 信息表 set 备注='x'"_s);
    test.dialogs.expect(u"这次导入的内容已经不在成绩库里。"_s, u"取消"_s);
    EXPECT_FALSE(library::undoLastImport(test.scores, progress));
}

TEST_F(Undo, OfTheLastImportPassesOverOnesThatWereCancelled)
{
    backUp(Occasion::examImport(u"会考"_s), 2);
    test.addStudent(3, 1, u"后来"_s, u"理"_s);
    backUp(Occasion::studentImport(), 3);
    test.dialogs.expect(u"撤消 2026-03-09 07:01:00 的“导入 期末”？"_s, u"撤消导入"_s);
    EXPECT_TRUE(library::undoLastImport(test.scores, progress));
    EXPECT_EQ(exams(), u"期中"_s);
}

TEST_F(Undo, OfAnUndoneImportDoesNotGoOnToAnEarlierOne)
{
    backUp(Occasion::examImport(u"会考"_s), 2);
    test.addExam(u"会考"_s, u"理"_s, 3, {{u"语文"_s, 150}});
    test.dialogs.expect(u"“导入 会考”？"_s, u"撤消导入"_s);
    EXPECT_TRUE(library::undoLastImport(test.scores, progress));
    EXPECT_EQ(exams(), u"期中 / 期末"_s);
    expectUndone(u"2026-03-09 07:02:00"_s, u"导入 会考"_s);
    EXPECT_EQ(exams(), u"期中 / 期末"_s);
}

TEST_F(Undo, OfTheLastImportNeedsOneThatBroughtSomething)
{
    test.dialogs.always(u"把成绩库恢复为这份备份？"_s, u"恢复"_s);
    const LibraryCopy first = newest();
    EXPECT_TRUE(library::restoreAsked(test.scores, path, first, progress));
    const QDateTime now = QDateTime::currentDateTime();
    library::backUpLibrary(path, now, Occasion::examImport(u"会考"_s), progress);
    library::removeCopy(path, first.path);
    EXPECT_FALSE(library::undoLastImport(test.scores, progress));
    EXPECT_EQ(test.dialogs.shown.last(),
              u"没有可以撤消的导入：成绩库现在和 %1 的“导入 会考”之前的备份内容相同。"_s.arg(
                  library::timeText(now)));
}

TEST_F(Undo, OfTheLastImportTakesOneOfAClockThatWasAheadForAnEarlierOne)
{
    test.addStudent(3, 1, u"后来"_s, u"理"_s);
    library::backUpLibrary(path, QDateTime::currentDateTime().addYears(1),
                           Occasion::examImport(u"期中"_s), progress);
    test.execute(u"update 成绩表 set 语文=91 where 考试名称='期中'"_s);
    test.dialogs.expect(u"“导入 期末”？"_s, u"取消"_s);
    EXPECT_FALSE(library::undoLastImport(test.scores, progress));
    EXPECT_EQ(test.dialogs.questions.size(), 1);
}

TEST_F(Undo, OfTheLastImportIsPossibleAfterManyOtherChangesOfTheDay)
{
    backUp(Occasion::examImport(u"会考"_s), 2);
    test.addExam(u"会考"_s, u"理"_s, 3, {{u"语文"_s, 150}});
    for (int minute = 3; minute < 12; ++minute) {
        test.execute(u"update 成绩表 set 语文=语文+1 where 考试名称='期中'"_s);
        backUp({u"学生调整"_s}, minute);
    }
    test.dialogs.expect(u"“导入 会考”？"_s, u"撤消导入"_s);
    EXPECT_TRUE(library::undoLastImport(test.scores, progress));
}

TEST_F(Undo, OfTheLastImportKnowsItsExamByTheNameThatItGotSince)
{
    test.execute(u"update 成绩表 set 考试名称='高一期末' where 考试名称='期末'"_s);
    test.execute(u"update 考试名称表 set 考试名称='高一期末' where 考试名称='期末'"_s);
    library::renameInNotes(path, u"期末"_s, u"高一期末"_s);
    test.dialogs.expect(imported + u"备份以后增加、恢复后没有的考试：1 次（高一期末）"_s,
                        u"取消"_s);
    EXPECT_FALSE(library::undoLastImport(test.scores, progress));
    EXPECT_TRUE(test.dialogs.questions.last().contains(u"成绩库的其他内容没有改动。"_s));
    EXPECT_EQ(newest().occasionText(), u"导入 期末"_s);
}

TEST_F(Undo, OfTheLastImportKnowsItsExamByTheNameThatARestoreBroughtBack)
{
    backUp(Occasion::examImport(u"会考"_s), 2);
    test.addExam(u"会考"_s, u"理"_s, 3, {{u"语文"_s, 150}});
    const QString beforeRename = backUp({u"考试信息 会考"_s}, 3);
    test.execute(u"update 考试名称表 set 考试名称='高一会考' where 考试名称='会考'"_s);
    library::renameInNotes(path, u"会考"_s, u"高一会考"_s);
    library::restoreLibrary(test.scores, path, beforeRename, {u"恢复备份"_s}, progress);
    test.dialogs.expect(u"“导入 会考”？"_s, u"撤消导入"_s);
    EXPECT_TRUE(library::undoLastImport(test.scores, progress));
    EXPECT_TRUE(test.dialogs.questions.last().contains(
        imported + u"备份以后增加、恢复后没有的考试：1 次（会考）\n\n"_s));
    EXPECT_EQ(exams(), u"期中 / 期末"_s);
}

TEST_F(Undo, OfAnImportNeedsACopyOfOne)
{
    library::removeCopy(path, copy);
    backUp({u"重新分班"_s}, 2);
    EXPECT_FALSE(library::undoLastImport(test.scores, progress));
    EXPECT_EQ(test.dialogs.shown.last(), u"没有可以撤消的导入：成绩库旁边没有导入前的备份。"_s);
}

} // namespace
