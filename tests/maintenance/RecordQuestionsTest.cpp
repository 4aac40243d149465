#include "maintenance/RecordQuestions.h"

#include <gtest/gtest.h>

#include "maintenance/StudentRecord.h"
#include "support/FixedPhotoFiles.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using maintenance::RecordSave;
using maintenance::StudentRecord;

/// 甲 and 乙 of class 1 (文), 丙 of class 2 (理); 甲 has scores in two exams.
class RecordQuestions : public testing::Test
{
protected:
    RecordQuestions()
    {
        test.addStudent(1, 1, u"甲"_s, u"文"_s);
        test.addStudent(1, 2, u"乙"_s, u"文"_s);
        test.addStudent(2, 1, u"丙"_s, u"理"_s);
        test.addScores(u"期中"_s, 1, 1, {});
        test.addScores(u"期末"_s, 1, 1, {});
        test.addScores(u"期末"_s, 1, 2, {});
        test.reload();
        record.ShowGeRenXX(1);
    }

    RecordSave save(const QString& field, const QString& text)
    {
        record.MSFlexGrid1.setTextMatrix(int(StudentRecord::fields().indexOf(field)),
                                         StudentRecord::ValueCol, text);
        return record.Command1_Click();
    }

    QString student(qint64 id = 1)
    {
        return test.rows(u"select 班级,学号,姓名,科类 from 信息表 where ID=%1"_s.arg(id));
    }

    QString scoreNames() { return test.rows(u"select 姓名 from 成绩表"_s); }

    support::TestLibrary test{{u"语文"_s}};
    support::FixedPhotoFiles photos;
    StudentRecord record{test.scores, photos};
};

TEST_F(RecordQuestions, AThirdStreamIsAskedAboutWithItsCounts)
{
    const QString question =
        u"保存以后成绩库里有 3 个科类：文（1 人）、理（1 人）、艺（1 人）。\n"
        "成绩库最多两个科类，多了就读不出科类，浏览和统计都做不了，直到改回来。"_s;
    test.dialogs.expect(question, u"取消"_s);
    EXPECT_EQ(save(u"科类"_s, u"艺"_s), RecordSave::GivenUp);
    EXPECT_EQ(test.dialogs.safeOf(question), u"取消"_s);
    EXPECT_EQ(student(), u"1|1|甲|文"_s);
    test.dialogs.expect(question, u"仍然保存"_s);
    test.dialogs.shown.clear();
    EXPECT_EQ(save(u"科类"_s, u"艺"_s), RecordSave::Saved);
    EXPECT_EQ(student(), u"1|1|甲|艺"_s);
    EXPECT_EQ(test.dialogs.shown.last(), u"科类设置不正确，请重新设置科类。"_s);
}

TEST_F(RecordQuestions, StudentsWithoutAStreamCountAsOne)
{
    test.execute(u"update 信息表 set 科类=null where ID=2"_s);
    test.dialogs.expect(u"没有科类（1 人）、理（1 人）、艺（1 人）"_s, u"取消"_s);
    EXPECT_EQ(save(u"科类"_s, u"艺"_s), RecordSave::GivenUp);
}

TEST_F(RecordQuestions, AStreamThatOthersHaveOrThatTakesThePlaceOfOneIsNotAskedAbout)
{
    EXPECT_EQ(save(u"科类"_s, u"理"_s), RecordSave::Saved);
    record.ShowGeRenXX(2);
    // The last one of 文 becomes the first of 艺.
    EXPECT_EQ(save(u"科类"_s, u"艺"_s), RecordSave::Saved);
    EXPECT_TRUE(test.dialogs.questions.isEmpty());
}

TEST_F(RecordQuestions, ANumberThatAnotherStudentHasIsAskedAbout)
{
    const QString question =
        u"1 班 2 号已经有 1 人：乙。\n保存以后几个人同号，导入成绩时只认得其中一人。"_s;
    test.dialogs.expect(question, u"取消"_s);
    EXPECT_EQ(save(u"学号"_s, u"2"_s), RecordSave::GivenUp);
    EXPECT_EQ(test.dialogs.safeOf(question), u"取消"_s);
    EXPECT_EQ(student(), u"1|1|甲|文"_s);
    test.dialogs.expect(question, u"仍然保存"_s);
    EXPECT_EQ(save(u"学号"_s, u"2.0"_s), RecordSave::Saved);
    EXPECT_EQ(student(), u"1|2|甲|文"_s);
    // Once it is so, other changes are saved without the question.
    EXPECT_EQ(save(u"民族"_s, u"汉"_s), RecordSave::Saved);
}

TEST_F(RecordQuestions, OfManyOnOneNumberThreeAreNamed)
{
    for (const QString& name : {u"丁"_s, u"戊"_s, u"己"_s, u"庚"_s})
        test.addStudent(3, 1, name, u"理"_s);
    test.dialogs.expect(u"3 班 1 号已经有 4 人：丁、戊、己 等。"_s, u"取消"_s);
    EXPECT_EQ(save(u"班级"_s, u"3"_s), RecordSave::GivenUp);
}

TEST_F(RecordQuestions, ATextThatWillBeRefusedRaisesNoQuestion)
{
    EXPECT_EQ(save(u"学号"_s, u"2号"_s), RecordSave::Saved);
    EXPECT_TRUE(test.dialogs.questions.isEmpty());
    EXPECT_EQ(test.dialogs.failures.size(), 1);
}

TEST_F(RecordQuestions, ANewNameGoesIntoEarlierScoresOrNot)
{
    const QString question = u"“甲”改名为“申”。以前的 2 条成绩里还是原来的姓名，要一起改吗？"_s;
    test.dialogs.expect(question, u"取消"_s);
    EXPECT_EQ(save(u"姓名"_s, u"申"_s), RecordSave::GivenUp);
    EXPECT_EQ(student(), u"1|1|甲|文"_s);
    EXPECT_EQ(test.dialogs.safeOf(question), u"只改这里"_s);
    test.dialogs.expect(question, u"只改这里"_s);
    EXPECT_EQ(save(u"姓名"_s, u"申"_s), RecordSave::Saved);
    EXPECT_EQ(student(), u"1|1|申|文"_s);
    EXPECT_EQ(scoreNames(), u"甲 / 甲 / 乙"_s);
    test.dialogs.expect(u"“申”改名为“由”。以前的 2 条成绩"_s, u"以前的成绩也改"_s);
    EXPECT_EQ(save(u"姓名"_s, u"由"_s), RecordSave::Saved);
    EXPECT_EQ(scoreNames(), u"由 / 由 / 乙"_s);
}

TEST_F(RecordQuestions, ANameWithoutEarlierScoresOrThatTheyHaveAlreadyRaisesNone)
{
    test.execute(u"update 成绩表 set 姓名='申' where id=1"_s);
    EXPECT_EQ(save(u"姓名"_s, u"申"_s), RecordSave::Saved);
    record.ShowGeRenXX(3);
    EXPECT_EQ(save(u"姓名"_s, u"丁"_s), RecordSave::Saved);
    EXPECT_TRUE(test.dialogs.questions.isEmpty());
}

TEST_F(RecordQuestions, ANameThatDiffersInCaseOnlyIsANewOne)
{
    test.execute(u"update 信息表 set 姓名='anna' where ID=1"_s);
    test.execute(u"update 成绩表 set 姓名='anna' where id=1"_s);
    record.ShowGeRenXX(1);
    test.dialogs.expect(u"“anna”改名为“Anna”"_s, u"以前的成绩也改"_s);
    EXPECT_EQ(save(u"姓名"_s, u"Anna"_s), RecordSave::Saved);
    EXPECT_EQ(scoreNames(), u"Anna / Anna / 乙"_s);
}

} // namespace
