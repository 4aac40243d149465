#include "import/StudentMatch.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using importing::NewStudents;
using importing::StudentMatch;
using runtime::Answer;

class StudentMatchTest : public testing::Test
{
protected:
    StudentMatchTest()
    {
        library.addStudent(1, 1, u"王芳"_s, u"文"_s);
        library.addStudent(2, 1, u"李强"_s, u"理"_s);
    }

    QString students() { return library.rows(u"select 班级,学号,姓名 from 信息表"_s); }

    support::TestLibrary library{{u"语文"_s}};
    support::ScriptedDialogs& dialogs = library.dialogs;
    importing::ClassAnswers classes{library.scores};
    importing::IntakeBatch batch{library.scores.Conn};
    importing::KnownStudents known{library.scores.Conn};
    StudentMatch match{library.scores, classes, known, batch};
};

TEST_F(StudentMatchTest, SameNameMatchesSilently)
{
    EXPECT_EQ(match.TestStuName(1, 1, u"王芳"_s, NewStudents::Ask), QString());
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(StudentMatchTest, AnotherNameGivesTheLibrarysName)
{
    EXPECT_EQ(match.TestStuName(1, 1, u"王芬"_s, NewStudents::Ask), u"王芳"_s);
}

TEST_F(StudentMatchTest, TheFirstOfTwoRecordsCounts)
{
    library.addStudent(1, 1, u"王二"_s, u"文"_s);
    EXPECT_EQ(match.TestStuName(1, 1, u"王二"_s, NewStudents::Ask), u"王芳"_s);
}

TEST_F(StudentMatchTest, NameOfNullReadsAsEmpty)
{
    library.execute(u"update 信息表 set 姓名=null where 班级=1"_s);
    EXPECT_EQ(match.TestStuName(1, 1, u"王芳"_s, NewStudents::Ask), QString());
}

TEST_F(StudentMatchTest, SameNumberInAnotherClassIsAnotherStudent)
{
    EXPECT_EQ(match.TestStuName(2, 1, u"李强"_s, NewStudents::Ask), QString());
    EXPECT_EQ(match.TestStuName(2, 1, u"王芳"_s, NewStudents::Ask), u"李强"_s);
}

TEST_F(StudentMatchTest, UnknownStudentIsAddedAfterTheQuestion)
{
    dialogs.expect(u"是否添加新学生： 1 班 2 号 ,张三"_s, Answer::Ok);
    EXPECT_EQ(match.TestStuName(1, 2, u"张三"_s, NewStudents::Ask), QString());
    EXPECT_EQ(dialogs.questions, QStringList{u"是否添加新学生： 1 班 2 号 ,张三"_s});
    EXPECT_EQ(dialogs.look(u"是否添加新学生"_s),
              (support::BoxLook{{}, runtime::Buttons::OkCancel, runtime::Icon::None}));
    EXPECT_EQ(library.rows(u"select 姓名,类别代码,科类 from 信息表 where 班级=1 and 学号=2"_s),
              u"张三|1|文"_s);
}

TEST_F(StudentMatchTest, RefusedStudentLooksLikeAMatch)
{
    dialogs.expect(u"是否添加新学生"_s, Answer::Cancel);
    EXPECT_EQ(match.TestStuName(1, 2, u"张三"_s, NewStudents::Ask), QString());
    EXPECT_EQ(students(), u"1|1|王芳 / 2|1|李强"_s);
}

TEST_F(StudentMatchTest, AutoAddAsksNothing)
{
    EXPECT_EQ(match.TestStuName(2, 7, u"赵六"_s, NewStudents::Add), QString());
    EXPECT_EQ(dialogs.shown, QStringList());
    EXPECT_EQ(library.rows(u"select 类别代码,科类 from 信息表 where 学号=7"_s), u"1|理"_s);
}

TEST_F(StudentMatchTest, FirstStudentOfAClassHasAnEmptyStream)
{
    match.TestStuName(9, 1, u"赵六"_s, NewStudents::Add);
    batch.commit();
    ASSERT_FALSE(dialogs.failures.isEmpty());
    for (const QString& failure : dialogs.failures)
        EXPECT_TRUE(failure.endsWith(u" - Function GetBJKL/Mdl_MDB"_s)) << failure.toStdString();
    EXPECT_EQ(library.rows(u"select 姓名 from 信息表 where 班级=9 and 科类=''"_s), u"赵六"_s);

    dialogs.failures.clear();
    match.TestStuName(9, 2, u"孙七"_s, NewStudents::Add);
    EXPECT_EQ(dialogs.failures, QStringList()) << "the class has a student by now";
}

TEST_F(StudentMatchTest, NameThatDoesNotFitCostsItsFieldAndOneMessage)
{
    match.TestStuName(1, 3, QString(300, u'名'), NewStudents::Add);
    batch.commit();
    ASSERT_EQ(dialogs.failures.size(), 1);
    EXPECT_TRUE(dialogs.failures[0].endsWith(u" - Function TestStuName/Mdl_MDB"_s));
    EXPECT_EQ(library.rows(u"select 姓名,科类 from 信息表 where 学号=3"_s), u"NULL|文"_s);
}

TEST_F(StudentMatchTest, WhatWasTakenInIsOnDiskBeforeAQuestion)
{
    match.TestStuName(1, 2, u"张三"_s, NewStudents::Add);
    class Looking : public runtime::Dialogs
    {
    public:
        explicit Looking(const QString& path) : m_path(path), m_installed(*this) {}
        qint64 seen = -1;

        Answer message(const QString&, const QString&, runtime::Buttons, runtime::Icon) override
        {
            database::Connection other;
            other.Open(m_path);
            database::Recordset rows;
            rows.Open(u"select * from 信息表"_s, other);
            seen = rows.RecordCount();
            other.Execute(u"update 信息表 set 备注='改'"_s);
            return Answer::Cancel;
        }
        void failure(const QString& text) override { ADD_FAILURE() << text.toStdString(); }

    private:
        QString m_path;
        runtime::InstalledDialogs m_installed;
    } looking(library.scores.LibPath);
    match.TestStuName(1, 3, u"李四"_s, NewStudents::Ask);
    EXPECT_EQ(looking.seen, 3);
}

TEST_F(StudentMatchTest, AddedStudentIsKnownFromThenOn)
{
    match.TestStuName(1, 2, u"张三"_s, NewStudents::Add);
    EXPECT_EQ(match.TestStuName(1, 2, u"李四"_s, NewStudents::Add), u"张三"_s);
    EXPECT_EQ(students(), u"1|1|王芳 / 2|1|李强 / 1|2|张三"_s);
}

TEST_F(StudentMatchTest, RenamedStudentIsKnownByTheNewName)
{
    EXPECT_EQ(match.TestStuName(1, 1, u"王芬"_s, NewStudents::Ask), u"王芳"_s);
    match.SetStuName(1, 1, u"王芬"_s);
    EXPECT_EQ(match.TestStuName(1, 1, u"王芬"_s, NewStudents::Ask), QString());
}

TEST_F(StudentMatchTest, WhatOthersWriteWhileAQuestionWaitsCounts)
{
    EXPECT_EQ(match.TestStuName(2, 1, u"李强"_s, NewStudents::Ask), QString());
    class Renaming : public runtime::Dialogs
    {
    public:
        explicit Renaming(const QString& path) : m_path(path), m_installed(*this) {}

        Answer message(const QString&, const QString&, runtime::Buttons, runtime::Icon) override
        {
            database::Connection other;
            other.Open(m_path);
            other.Execute(u"update 信息表 set 姓名='李刚' where 班级=2"_s);
            return Answer::Cancel;
        }
        void failure(const QString& text) override { ADD_FAILURE() << text.toStdString(); }

    private:
        QString m_path;
        runtime::InstalledDialogs m_installed;
    } renaming(library.scores.LibPath);
    match.TestStuName(1, 3, u"李四"_s, NewStudents::Ask);
    EXPECT_EQ(match.TestStuName(2, 1, u"李强"_s, NewStudents::Ask), u"李刚"_s);
}

TEST_F(StudentMatchTest, AStudentWhomAnotherProgramAddedMeanwhileIsNotAddedAgain)
{
    class Adding : public runtime::Dialogs
    {
    public:
        explicit Adding(const QString& path) : m_path(path), m_installed(*this) {}

        Answer message(const QString&, const QString&, runtime::Buttons, runtime::Icon) override
        {
            database::Connection other;
            other.Open(m_path);
            other.Execute(u"insert into 信息表(班级,学号,姓名) values(1,3,'李司')"_s);
            return Answer::Ok;
        }
        void failure(const QString& text) override { ADD_FAILURE() << text.toStdString(); }

    private:
        QString m_path;
        runtime::InstalledDialogs m_installed;
    } adding(library.scores.LibPath);
    EXPECT_EQ(match.TestStuName(1, 3, u"李四"_s, NewStudents::Ask), u"李司"_s);
    EXPECT_EQ(library.rows(u"select 姓名 from 信息表 where 学号=3"_s), u"李司"_s);
}

TEST_F(StudentMatchTest, RenamingReachesStudentAndAllExams)
{
    library.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 90}});
    library.addScores(u"期末"_s, 1, 1, {{u"语文"_s, 91}});
    library.addScores(u"期末"_s, 2, 1, {{u"语文"_s, 92}});
    match.SetStuName(1, 1, u"王小芳"_s);
    EXPECT_EQ(students(), u"1|1|王小芳 / 2|1|李强"_s);
    EXPECT_EQ(library.rows(u"select 姓名 from 成绩表"_s), u"王小芳 / 王小芳 / 李强"_s);
}

TEST_F(StudentMatchTest, NameWithAnApostropheIsNotWrittenAnywhereAndIsReported)
{
    library.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 90}});
    for (const QString& name :
         {u"O'Neil"_s, u"王' --"_s, u"' or ''='"_s, u"'; drop table 成绩表"_s}) {
        dialogs.failures.clear();
        importing::IntakeBatch stretch(library.scores.Conn);
        match.SetStuName(1, 1, name);
        stretch.commit();
        batch.commit();
        EXPECT_EQ(dialogs.failures.size(), 2) << "one for each table";
        for (const QString& failure : dialogs.failures)
            EXPECT_TRUE(failure.endsWith(u" - Sub SetStuName/Mdl_MDB"_s)) << failure.toStdString();
        EXPECT_EQ(students(), u"1|1|王芳 / 2|1|李强"_s) << name.toStdString();
        EXPECT_EQ(library.rows(u"select 姓名 from 成绩表"_s), u"王芳"_s) << name.toStdString();
    }
}

TEST_F(StudentMatchTest, NameWithACommentSignIsWrittenToTheStudentAlone)
{
    match.SetStuName(1, 1, u"王芳--/*"_s);
    EXPECT_EQ(students(), u"1|1|王芳--/* / 2|1|李强"_s);
}

TEST_F(StudentMatchTest, TheMatchedStudentIsKnownByTheId)
{
    EXPECT_EQ(match.TestStuName(2, 1, u"李强"_s, NewStudents::Ask), QString());
    EXPECT_EQ(match.matchedId(), 2);
    EXPECT_EQ(match.TestStuName(2, 1, u"李刚"_s, NewStudents::Ask), u"李强"_s);
    EXPECT_EQ(match.matchedId(), 2);
    match.TestStuName(2, 2, u"赵六"_s, NewStudents::Add);
    EXPECT_EQ(match.matchedId(), 3);
    dialogs.expect(u"是否添加新学生"_s, Answer::Cancel);
    match.TestStuName(2, 3, u"孙七"_s, NewStudents::Ask);
    EXPECT_EQ(match.matchedId(), 0);
}

TEST_F(StudentMatchTest, AClassWithoutStudentsTakesTheStreamThatItWasGiven)
{
    classes.giveStream({9, 2}, u"文"_s);
    match.TestStuName(9, 1, u"赵六"_s, NewStudents::Add);
    match.TestStuName(2, 2, u"孙七"_s, NewStudents::Add);
    batch.commit();
    EXPECT_EQ(dialogs.shown, QStringList());
    EXPECT_EQ(library.rows(u"select 姓名,科类 from 信息表 where ID>2"_s), u"赵六|文 / 孙七|理"_s)
        << "a class that has students keeps theirs";
}

TEST_F(StudentMatchTest, TheMismatchQuestionReadsAsDesigned)
{
    dialogs.expect(u"二者不一致"_s, Answer::No);
    EXPECT_EQ(match.askNameMismatch(3, 12, u"王芬"_s, u"王芳"_s), Answer::No);
    EXPECT_EQ(dialogs.shown,
              QStringList{u"数据错误: "
                          "Excel表格中学生的学号和姓名： [王芬] 与数据库中记录的不一致！\n\n"
                          "Excel表格中：3班12号 姓名为：[王芬]\n"
                          "数据库中记录：3班12号 姓名为：[王芳]，二者不一致！\n\n"
                          "[是]用现有姓名替换掉数据库中记录的姓名\n"
                          "[否]保留数据库中记录的姓名,继续录入,即将[王芬]和[王芳]认为是同一人\n"
                          "[取消]终止当前导入\n"_s});
    EXPECT_EQ(
        dialogs.look(u"二者不一致"_s),
        (support::BoxLook{u"数据错误"_s, runtime::Buttons::YesNoCancel, runtime::Icon::None}));
}

} // namespace
