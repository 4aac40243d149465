#include "maintenance/ClassStreams.h"

#include <QDir>

#include <gtest/gtest.h>

#include "platform/database/WriteBatch.h"
#include "support/NoRoom.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using library::Backup;

const QString tag = u" - Private Sub Command1_Click/FormSheZhiWenLi"_s;

/// A grade of three classes without streams; class 9 has left 信息表.
class ClassStreams : public testing::Test
{
protected:
    ClassStreams()
    {
        for (const int classNumber : {1, 2, 3, 9}) {
            test.addStudent(classNumber, 1, u"王芳"_s, u"理"_s);
            for (const QString& exam : {u"期中"_s, u"期末"_s})
                test.addScores(exam, classNumber, 1, {{u"语文"_s, 90}});
        }
        test.execute(u"delete from 信息表 where 班级=9"_s);
        test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 150}});
        test.reload();
        streams.load();
    }

    void set(const QStringList& science, Backup backup = Backup::SwitchedOff)
    {
        streams.set(science, progress, backup);
    }

    QString stored()
    {
        return test.rows(u"select 班级,科类 from 成绩表 where 考试名称='期末' order by 班级"_s);
    }

    qsizetype copies()
    {
        return QDir(test.folder.path()).entryList({u"*.bak"_s}, QDir::Files).size();
    }

    support::TestLibrary test{{u"语文"_s}};
    maintenance::ClassStreams streams{test.scores};
    runtime::NoProgress progress;
};

TEST_F(ClassStreams, ChosenClassesBecomeScienceAndTheOthersArts)
{
    set({u"1"_s, u"3"_s});
    EXPECT_EQ(stored(), u"1|理 / 2|文 / 3|理 / 9|理"_s);
    EXPECT_EQ(test.rows(u"select 科类 from 成绩表 where 班级=2"_s), u"文 / 文"_s)
        << "of every exam";
    EXPECT_EQ(test.dialogs.shown, QStringList{u"设置完毕！"_s});
}

TEST_F(ClassStreams, WithNoneChosenAllBecomeArts)
{
    set({});
    EXPECT_EQ(stored(), u"1|文 / 2|文 / 3|文 / 9|理"_s);
}

TEST_F(ClassStreams, WithAllChosenAllBecomeScience)
{
    set({});
    set({u"1"_s, u"2"_s, u"3"_s});
    EXPECT_EQ(stored(), u"1|理 / 2|理 / 3|理 / 9|理"_s);
}

TEST_F(ClassStreams, AClassThatHasLeftIsNotListedAndKeepsItsStream)
{
    EXPECT_EQ(streams.load(), (QStringList{u"1"_s, u"2"_s, u"3"_s}));
    set({u"9"_s});
    EXPECT_EQ(stored(), u"1|文 / 2|文 / 3|文 / 9|理"_s);
}

TEST_F(ClassStreams, StudentsAndExamsKeepTheirs)
{
    set({u"1"_s});
    EXPECT_EQ(test.rows(u"select distinct 科类 from 信息表"_s), u"理"_s);
    EXPECT_EQ(test.rows(u"select 科类 from 考试名称表"_s), u"理"_s);
}

TEST_F(ClassStreams, TheWorkbenchKeepsWhatIsChosenOnIt)
{
    int told = 0;
    QObject::connect(&test.scores, &library::ScoreLibrary::changed, [&told] { ++told; });
    set({u"1"_s});
    EXPECT_EQ(told, 0);
}

TEST_F(ClassStreams, StudentsWithoutAClassBreakTheirGroupAndNotTheOther)
{
    test.addStudent(4, 1, u"陈静"_s, u"理"_s);
    test.execute(u"update 信息表 set 班级=null where 班级=4"_s);
    EXPECT_EQ(streams.load(), (QStringList{u""_s, u"1"_s, u"2"_s, u"3"_s}));
    test.execute(u"update 成绩表 set 科类='无'"_s);
    set({u"1"_s});
    EXPECT_EQ(stored(), u"1|理 / 2|无 / 3|无 / 9|无"_s);
    EXPECT_EQ(test.dialogs.failures,
              QStringList{u"有学生没有班级，条件“班级=”后面缺少数字。"_s + tag});
    set({u""_s, u"1"_s});
    EXPECT_EQ(stored(), u"1|理 / 2|文 / 3|文 / 9|无"_s);
    EXPECT_EQ(test.dialogs.failures.size(), 2);
    EXPECT_EQ(test.dialogs.shown.count(u"设置完毕！"_s), 2);
}

TEST_F(ClassStreams, AClassThatIsATextBecomesNoPartOfAStatement)
{
    test.execute(u"create table 别的 (班级, 学号, 姓名, 科类)"_s);
    test.execute(u"insert into 别的 values ('1 or 1=1', 1, '甲', '理')"_s);
    test.execute(u"drop table 信息表"_s);
    test.execute(u"alter table 别的 rename to 信息表"_s);
    ASSERT_EQ(streams.load(), QStringList{u"1 or 1=1"_s});
    set({});
    EXPECT_EQ(stored(), u"1|理 / 2|理 / 3|理 / 9|理"_s);
    EXPECT_EQ(test.dialogs.failures.value(0), u"班级“1 or 1=1”不是数字。"_s + tag);
}

TEST_F(ClassStreams, ALibraryWithoutStudentsIsToldAndListsNoClass)
{
    test.execute(u"drop table 信息表"_s);
    maintenance::ClassStreams unread(test.scores);
    EXPECT_EQ(unread.load(), QStringList());
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(u" - Private Sub Form_Load/FormSheZhiWenLi"_s));
}

TEST_F(ClassStreams, TheQuestionCountsClassesAndRowsOfEachStream)
{
    test.dialogs.expect(u"选中的"_s, u"设置"_s);
    EXPECT_TRUE(streams.confirmed({u"1"_s, u"3"_s}, library::Backup::SwitchedOff));
    EXPECT_EQ(test.dialogs.shown,
              QStringList{u"提示: 选中的 2 个班（4 条成绩）科类设为理，"
                          "没有选中的 1 个班（2 条成绩）设为文。\n"
                          "学生信息里的科类不变。设置以后，各次考试要重新计算总分和名次。"_s});
    EXPECT_EQ(test.dialogs.safeOf(u"选中的"_s), u"取消"_s);
    test.dialogs.expect(u"选中的 0 个班（0 条成绩）"_s, u"取消"_s);
    EXPECT_FALSE(streams.confirmed({}, library::Backup::SwitchedOff));
}

TEST_F(ClassStreams, TheQuestionTellsOfStudentsWithoutAClass)
{
    test.execute(u"update 信息表 set 班级=null where 班级=3"_s);
    test.execute(u"update 成绩表 set 班级=null where 班级=3"_s);
    streams.load();
    test.dialogs.always(u"选中的"_s, u"取消"_s);
    streams.confirmed({u"1"_s}, library::Backup::SwitchedOff);
    EXPECT_TRUE(test.dialogs.shown.last().contains(u"没有选中的 2 个班（2 条成绩）设为文。\n"
                                                   "有学生没有班级，设为文的语句会出错，"
                                                   "这些班的科类不变。\n"_s));
    streams.confirmed({u""_s}, library::Backup::SwitchedOff);
    EXPECT_TRUE(test.dialogs.shown.last().contains(u"设为理的语句会出错"_s));
}

TEST_F(ClassStreams, ADatedCopyIsMadeUnlessItIsSwitchedOff)
{
    set({u"1"_s});
    EXPECT_EQ(copies(), 0);
    set({u"2"_s}, Backup::Make);
    EXPECT_EQ(copies(), 1);
}

TEST_F(ClassStreams, AFileThatSomeoneElseHoldsStaysAsItWasAndNoSuccessIsTold)
{
    database::Connection other;
    other.Open(test.scores.LibPath);
    const QString before = stored();
    {
        const database::WriteBatch held(other);
        other.Execute(u"update 成绩表 set 学号=2"_s);
        set({});
    }
    EXPECT_EQ(stored(), before);
    ASSERT_EQ(test.dialogs.shown.size(), 1);
    EXPECT_TRUE(test.dialogs.failures.value(0).endsWith(tag));
}

TEST_F(ClassStreams, ACopyThatDoesNotFitIsToldBeforeTheQuestion)
{
    support::outgrowDisk(test);
    EXPECT_FALSE(streams.confirmed({u"1"_s}, library::Backup::Make));
    support::expectOnlyNoRoomTold(test.dialogs.shown);
}

} // namespace
