#include "maintenance/SubjectRemoval.h"

#include <QDir>

#include <gtest/gtest.h>

#include "platform/database/Statement.h"
#include "scoring/Scoring.h"
#include "support/FileBytes.h"
#include "support/NoRoom.h"
#include "support/OtherProgram.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using library::Backup;
using maintenance::SubjectRemoval;
using runtime::Answer;
using Result = SubjectRemoval::Result;

const QString question = u"确实要删除以下科目吗？删除后不可恢复，最好在删除前备份数据库。\n\n"_s;
const QString usesQuestion = u"要删除的科目还写在："_s;
const QString tag = u" - Private Sub Command1_Click/FormDelKM"_s;
const QString closing = u"删除完毕！"_s;

class SubjectRemovals : public testing::Test
{
protected:
    SubjectRemovals()
    {
        test.execute(u"delete from 总分公式"_s);
        test.addStudent(1, 1, u"甲"_s, u"理"_s);
        test.addStudent(1, 2, u"乙"_s, u"理"_s);
        test.addExam(u"期中"_s, u"理"_s, 1,
                     {{u"语文"_s, 150}, {u"数学"_s, 100}, {u"总分"_s, u"语文+数学"_s}});
        test.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 70}, {u"数学"_s, 60}, {u"物理"_s, 5}});
        test.addScores(u"期中"_s, 1, 2, {{u"语文"_s, 80}, {u"数学"_s, 70}});
        test.reload();
    }

    Result remove(const QStringList& subjects, Backup backup = Backup::SwitchedOff)
    {
        return removal.run(subjects, progress, backup);
    }

    /// Answers both questions so that the subjects go.
    Result removeForSure(const QStringList& subjects)
    {
        test.dialogs.always(question, Answer::Ok);
        test.dialogs.always(usesQuestion, u"仍然删除"_s);
        return remove(subjects);
    }

    QString columns(const QString& table)
    {
        QStringList names;
        for (const database::Column& column : test.scores.Conn.columns(table))
            names.append(column.name);
        return names.join(u' ');
    }

    QStringList copies() const
    {
        return QDir(test.folder.path()).entryList({u"*.bak"_s}, QDir::Files);
    }

    support::TestLibrary test{{u"语文"_s, u"数学"_s, u"物理"_s, u"总分"_s}};
    SubjectRemoval removal{test.scores};
    runtime::NoProgress progress;
};

TEST_F(SubjectRemovals, OfferTheSubjectsAndTotalsOfTheLibrary)
{
    EXPECT_EQ(removal.columns().join(u' '), u"语文 数学 物理 总分"_s);
}

TEST_F(SubjectRemovals, OfNothingSelectedAreRefused)
{
    EXPECT_EQ(remove({}), Result::Declined);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"请选择要删除的 科目！"_s});
}

TEST_F(SubjectRemovals, NameTheSubjectsFromTheLastToTheFirstAndStopOnCancel)
{
    const QByteArray before = support::read(test.scores.LibPath);
    test.dialogs.expect(question, Answer::Cancel);
    EXPECT_EQ(remove({u"语文"_s, u"总分"_s}, Backup::Make), Result::Declined);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"提示: "_s + question + u"总分\n语文\n"_s});
    EXPECT_EQ(test.dialogs.look(question).buttons, runtime::Buttons::OkCancel);
    EXPECT_EQ(support::read(test.scores.LibPath), before);
    EXPECT_EQ(copies(), QStringList());
}

TEST_F(SubjectRemovals, TakeAllColumnsOfASubjectAndNothingElse)
{
    test.dialogs.expect(question, Answer::Ok);
    EXPECT_EQ(remove({u"物理"_s}), Result::Done);
    EXPECT_EQ(test.dialogs.shown.last(), closing);
    EXPECT_EQ(test.dialogs.failures, QStringList());
    EXPECT_EQ(columns(u"成绩表"_s),
              u"id 考试编号 类别代码 班级 学号 姓名 科类 考试名称 语文 语文年名 语文班名 语文Z分 "
              "语文T分 数学 数学年名 数学班名 数学Z分 数学T分 总分 总分年名 总分班名 总分Z分 "
              "总分T分 总分T分年名 备注"_s);
    EXPECT_EQ(columns(u"考试名称表"_s), u"ID 考试名称 科类 考试编号 备注 语文 数学 总分"_s);
    EXPECT_EQ(columns(u"教师表"_s), u"考试名称 班级 语文 数学 总分"_s);
    EXPECT_EQ(test.rows(u"select 学号, 姓名, 语文, 数学, 总分 from 成绩表"_s),
              u"1|甲|70|60|NULL / 2|乙|80|70|NULL"_s);
    EXPECT_EQ(removal.columns().join(u' '), u"语文 数学 总分"_s);
}

TEST_F(SubjectRemovals, TakeTheColumnsOfTotalsToo)
{
    EXPECT_EQ(removeForSure({u"总分"_s, u"语文"_s, u"数学"_s, u"物理"_s}), Result::Done);
    EXPECT_EQ(columns(u"成绩表"_s), u"id 考试编号 类别代码 班级 学号 姓名 科类 考试名称 备注"_s);
    EXPECT_EQ(columns(u"考试名称表"_s), u"ID 考试名称 科类 考试编号 备注"_s);
    EXPECT_EQ(columns(u"教师表"_s), u"考试名称 班级"_s);
}

TEST_F(SubjectRemovals, FindColumnsInWhateverCaseOfTheirLetters)
{
    test.execute(u"ALTER TABLE 成绩表 RENAME COLUMN 物理Z分 TO 物理z分"_s);
    test.dialogs.expect(question, Answer::Ok);
    EXPECT_EQ(remove({u"物理"_s}), Result::Done);
    EXPECT_FALSE(columns(u"成绩表"_s).contains(u"物理"_s)) << columns(u"成绩表"_s).toStdString();
}

TEST_F(SubjectRemovals, OfASubjectThatTheTeachersLackAreToldAndGoOn)
{
    test.execute(u"ALTER TABLE 教师表 DROP COLUMN 物理"_s);
    EXPECT_EQ(removeForSure({u"数学"_s, u"物理"_s}), Result::Done);
    EXPECT_EQ(test.dialogs.failures,
              QStringList{u"没有名为“物理”的列。（no such column: \"物理\"）"_s + tag});
    EXPECT_EQ(test.dialogs.shown.mid(test.dialogs.shown.size() - 2),
              (QStringList{test.dialogs.failures[0], closing}));
    EXPECT_EQ(columns(u"考试名称表"_s), u"ID 考试名称 科类 考试编号 备注 语文 总分"_s);
    EXPECT_FALSE(columns(u"成绩表"_s).contains(u"物理"_s));
}

TEST_F(SubjectRemovals, GoFromTheLastToTheFirst)
{
    for (const QString& subject : {u"数学"_s, u"物理"_s})
        test.execute(u"ALTER TABLE 教师表 DROP COLUMN "_s + subject);
    EXPECT_EQ(removeForSure({u"数学"_s, u"物理"_s}), Result::Done);
    ASSERT_EQ(test.dialogs.failures.size(), 2);
    EXPECT_TRUE(test.dialogs.failures[0].contains(u"“物理”"_s));
    EXPECT_TRUE(test.dialogs.failures[1].contains(u"“数学”"_s));
}

TEST_F(SubjectRemovals, OfAColumnThatOneTableLacksPassOverIt)
{
    test.execute(u"ALTER TABLE 成绩表 DROP COLUMN 物理Z分"_s);
    test.execute(u"ALTER TABLE 成绩表 DROP COLUMN 物理"_s);
    EXPECT_EQ(removeForSure({u"物理"_s}), Result::Done);
    EXPECT_EQ(test.dialogs.failures, QStringList());
    EXPECT_FALSE(QString(columns(u"成绩表"_s) + columns(u"考试名称表"_s)).contains(u"物理"_s));
}

TEST_F(SubjectRemovals, OfANameThatNoStatementTakesAreRefusedAndTheRestGoes)
{
    for (const QString& name : {u"语 文"_s, u"a;b"_s, u"x--y"_s}) {
        for (const char* table : {"成绩表", "考试名称表", "教师表"})
            test.execute(
                u"ALTER TABLE %1 add COLUMN [%2] Single"_s.arg(QString::fromUtf8(table), name));
        test.reload();
        test.dialogs.failures.clear();
        EXPECT_EQ(removeForSure({name, u"物理"_s}), Result::Done);
        const QString refused = u"“"_s + name + u"”不能作为列名用在语句里。"_s + tag;
        EXPECT_EQ(test.dialogs.failures.count(refused), 3) << "in each table";
        EXPECT_TRUE(columns(u"成绩表"_s).contains(name));
        EXPECT_TRUE(columns(u"教师表"_s).contains(name));
    }
    EXPECT_FALSE(columns(u"成绩表"_s).contains(u"物理"_s));
}

TEST_F(SubjectRemovals, OfASubjectThatFormulasAndSettingsNameAskWithCounts)
{
    test.addExam(u"期中"_s, u"文"_s, 1, {{u"总分"_s, u"数学+语文"_s}});
    test.addExam(u"期末"_s, u"理"_s, 2, {{u"总分"_s, u"数学"_s}});
    test.execute(u"insert into 总分公式 values('总分','英语+语文'),('文科总分','语文综合')"_s);
    test.execute(u"insert into 详细设置表(设置名称,科类,科目) values('各科优秀率','理','语文'),"
                 "('各科优秀率','文','语文'),('各科优秀率','理','数学')"_s);
    test.execute(u"insert into 自定义显示表 values('Z分全','姓名,语文Z分'),('T分全','姓名,语文x'),"
                 "('原始分和名次全','语文')"_s);
    test.dialogs.expect(question, Answer::Ok);
    test.dialogs.expect(usesQuestion, u"取消"_s);
    EXPECT_EQ(remove({u"语文"_s}, Backup::Make), Result::Declined);
    EXPECT_EQ(test.dialogs.questions.last(),
              u"要删除的科目还写在：\n\n各次考试的总分公式：2 个\n总分公式的默认值：1 个\n"
              "各科条件：2 条\n自定义显示：2 项\n\n这些公式和设置保持原样。公式里的科目没有了，"
              "计算总分时会提示，总分里也不再有它的分。"_s);
    EXPECT_EQ(test.dialogs.safeOf(usesQuestion), u"取消"_s);
    EXPECT_TRUE(columns(u"成绩表"_s).contains(u"语文"_s));
    EXPECT_EQ(copies(), QStringList());
}

TEST_F(SubjectRemovals, DoNotCountTheFormulaOfATotalThatGoesToo)
{
    test.execute(u"insert into 总分公式 values('总分','语文')"_s);
    test.execute(u"delete from 设置表"_s);
    test.dialogs.expect(question, Answer::Ok);
    EXPECT_EQ(remove({u"语文"_s, u"总分"_s}), Result::Done);
    EXPECT_EQ(test.dialogs.questions.size(), 1);
}

TEST_F(SubjectRemovals, OfTheGrandTotalAskForTheSettingsWhoseReportsCountByIt)
{
    test.dialogs.expect(question, Answer::Ok);
    test.dialogs.expect(usesQuestion, u"取消"_s);
    EXPECT_EQ(remove({u"总分"_s}), Result::Declined);
    EXPECT_TRUE(test.dialogs.questions.last().startsWith(
        u"要删除的科目还写在：\n\n按总分上线的分析设置：2 项\n\n这些公式和设置保持原样。"_s))
        << test.dialogs.questions.last().toStdString();
    test.execute(u"delete from 设置表 where 名称='历次总分上线人数'"_s);
    test.dialogs.expect(question, Answer::Ok);
    test.dialogs.expect(u"按总分上线的分析设置：1 项\n"_s, u"取消"_s);
    EXPECT_EQ(remove({u"总分"_s}), Result::Declined);
}

TEST_F(SubjectRemovals, LeaveTheFormulasAndScoringMeetsAnUnknownColumn)
{
    EXPECT_EQ(removeForSure({u"语文"_s}), Result::Done);
    EXPECT_EQ(test.rows(u"select 总分 from 考试名称表"_s), u"语文+数学"_s);
    scoring::Scoring(test.scores).score(u"期中"_s, progress);
    EXPECT_TRUE(test.dialogs.failures.join(u'\n').contains(u"没有名为“语文”的列。"_s));
    EXPECT_EQ(test.rows(u"select 总分, 总分班名 from 成绩表"_s), u"60|2 / 70|1"_s);
}

TEST_F(SubjectRemovals, AreFollowedByWhoeverListensOnce)
{
    int told = 0;
    QStringList seen;
    QObject::connect(&test.scores, &library::ScoreLibrary::changed, &test.scores, [&] {
        ++told;
        seen = test.scores.catalogue.AllColumns;
    });
    removeForSure({u"语文"_s, u"物理"_s});
    EXPECT_EQ(told, 1);
    EXPECT_EQ(seen.join(u' '), u"数学 总分"_s);
}

TEST_F(SubjectRemovals, MakeOneCopyOfTheLibraryAsItWasUnlessSwitchedOff)
{
    test.dialogs.always(question, Answer::Ok);
    test.dialogs.always(usesQuestion, u"仍然删除"_s);
    const QByteArray before = support::read(test.scores.LibPath);
    EXPECT_EQ(remove({u"物理"_s, u"数学"_s}, Backup::Make), Result::Done);
    ASSERT_EQ(copies().size(), 1);
    EXPECT_EQ(support::read(test.file(copies()[0])), before);
    EXPECT_EQ(remove({u"语文"_s}, Backup::SwitchedOff), Result::Done);
    EXPECT_EQ(copies().size(), 1);
}

/// Cancels at a report of that number, counted from 0.
class CancelledAt : public runtime::NoProgress
{
public:
    explicit CancelledAt(int at) : m_left(at) {}
    void report(const QString& text, int, int) override
    {
        texts.append(text);
        --m_left;
    }
    bool cancelled() const override { return m_left < 0; }

    QStringList texts;

private:
    int m_left;
};

TEST_F(SubjectRemovals, ThatAreCancelledLeaveTheLibraryAndSayNothing)
{
    test.dialogs.expect(question, Answer::Ok);
    const QByteArray before = support::read(test.scores.LibPath);
    for (const int at : {0, 1}) {
        CancelledAt cancelled(at);
        test.dialogs.always(question, Answer::Ok);
        EXPECT_EQ(removal.run({u"物理"_s}, cancelled, Backup::SwitchedOff), Result::Stopped);
        EXPECT_EQ(cancelled.texts.last(), u"删除科目..."_s);
    }
    EXPECT_EQ(support::read(test.scores.LibPath), before);
    EXPECT_FALSE(test.dialogs.shown.contains(closing));
    EXPECT_EQ(removal.columns().size(), 4);
    EXPECT_EQ(removeForSure({u"物理"_s}), Result::Done) << "and can be run again";
    EXPECT_EQ(removal.columns().size(), 3);
}

TEST_F(SubjectRemovals, OfALibraryThatIsLockedSayNoSuccess)
{
    support::OtherProgram other(test.scores.LibPath);
    other.run("begin immediate");
    EXPECT_EQ(removeForSure({u"物理"_s}), Result::Stopped);
    other.run("rollback");
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(tag));
    EXPECT_FALSE(test.dialogs.shown.contains(closing));
    EXPECT_TRUE(columns(u"成绩表"_s).contains(u"物理"_s));
}

TEST_F(SubjectRemovals, KeepTheIndexesAndTheOrderOfTheRows)
{
    const QString indexes =
        u"select name, sql from sqlite_master where type='index' and sql is not null "
        "order by name"_s;
    test.execute(u"delete from 成绩表 where 学号=1"_s);
    test.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 1}});
    const QString before = test.rows(indexes);
    const QString ids = test.rows(u"select rowid, 学号 from 成绩表"_s);
    removeForSure({u"物理"_s, u"数学"_s});
    EXPECT_EQ(test.rows(indexes), before);
    EXPECT_EQ(test.rows(u"select rowid, 学号 from 成绩表"_s), ids);
    test.execute(u"ALTER TABLE 成绩表 add COLUMN 物理 Single"_s);
    EXPECT_TRUE(columns(u"成绩表"_s).endsWith(u" 物理"_s)) << "it can be added again";
}

TEST_F(SubjectRemovals, ACopyThatDoesNotFitIsToldBeforeTheQuestion)
{
    support::outgrowDisk(test);
    EXPECT_EQ(remove({u"物理"_s}, Backup::Make), Result::Declined);
    support::expectOnlyNoRoomTold(test.dialogs.shown);
}

} // namespace
