#include "maintenance/StudentAddition.h"

#include <gtest/gtest.h>

#include "maintenance/TypedNumber.h"
#include "support/FileBytes.h"
#include "support/OtherProgram.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using maintenance::NewStudent;
using maintenance::StudentAddition;

const QString tag = u" - Sub AddStudent/StudentAddition"_s;
const QString everybody = u"select 班级, 学号, 姓名, 科类, 类别代码 from 信息表 order by ID"_s;

class StudentAdditions : public testing::Test
{
protected:
    StudentAdditions()
    {
        test.addStudent(2, 7, u"乙"_s, u"理"_s, 3);
        test.addStudent(1, 1, u"甲"_s, u"文"_s);
        test.addStudent(2, 3, u"丙"_s, u"文"_s, 2);
        test.reload();
    }

    void refuse(const NewStudent& student, const QString& message)
    {
        const QString before = test.rows(everybody);
        test.dialogs.shown.clear();
        EXPECT_FALSE(addition.add(student));
        EXPECT_EQ(test.dialogs.shown, QStringList{message});
        EXPECT_EQ(test.rows(everybody), before);
    }

    support::TestLibrary test{{u"语文"_s}};
    StudentAddition addition{test.scores};
};

TEST_F(StudentAdditions, KnowTheClassesAndWhatCanBeFilled)
{
    EXPECT_EQ(addition.classes(), (std::vector<double>{1, 2}));
    EXPECT_EQ(addition.streams(), (QStringList{u"文"_s, u"理"_s}));
    test.execute(u"ALTER TABLE 信息表 DROP COLUMN 民族"_s);
    test.execute(u"ALTER TABLE 信息表 ADD COLUMN [宿舍'] text(50)"_s);
    EXPECT_EQ(addition.details().join(u' '),
              u"类别 性别 出生时间 入学时间 学籍号 原毕业学校 身份证 籍贯 备注 宿舍'"_s);
}

TEST_F(StudentAdditions, OfferBothStreamsInALibraryThatHasFewer)
{
    test.execute(u"delete from 信息表 where 科类='理'"_s);
    test.reload();
    EXPECT_EQ(addition.streams(), (QStringList{u"文"_s, u"理"_s}));
    test.execute(u"delete from 信息表"_s);
    test.reload();
    EXPECT_EQ(addition.streams(), (QStringList{u"理"_s, u"文"_s}));
}

TEST_F(StudentAdditions, ShowAClassByNumberWithWhatItsFirstStudentSays)
{
    const auto roster = addition.roster(u" ２ "_s);
    ASSERT_TRUE(roster);
    EXPECT_EQ(roster->stream, u"理"_s);
    EXPECT_EQ(roster->category.text(), u"3"_s);
    EXPECT_EQ(roster->students.front().name, u"丙"_s);
    EXPECT_EQ(roster->freeNumber, 8);
    for (const QString& none : {u"9"_s, u""_s, u"x"_s, u"' or ''='"_s})
        EXPECT_TRUE(addition.roster(none)->isNew());
    EXPECT_EQ(addition.roster(u"9"_s)->freeNumber, 1);
}

TEST_F(StudentAdditions, OfferANumberThatNoLeaverHasInAnExam)
{
    for (const double number : {8.0, 9.0, 11.0, 4.0})
        test.execute(u"insert into 成绩表(考试名称, 班级, 学号, 姓名) "
                     "values('期中', 2, %1, '离校')"_s.arg(number));
    EXPECT_EQ(addition.roster(u"2"_s)->freeNumber, 10);
    EXPECT_EQ(addition.roster(u"1"_s)->freeNumber, 2) << "another class";
}

TEST_F(StudentAdditions, TakeStreamAndCategoryOfTheClass)
{
    int told = 0;
    QObject::connect(&test.scores, &library::ScoreLibrary::changed, &test.scores, [&] { ++told; });
    const auto id =
        addition.add({u"2"_s, u"8"_s, u" 丁 "_s, u"文"_s, {{u"性别"_s, u"女"_s}, {u"籍贯"_s, {}}}});
    ASSERT_TRUE(id);
    EXPECT_EQ(test.rows(everybody), u"2|7|乙|理|3 / 1|1|甲|文|1 / 2|3|丙|文|2 / 2|8|丁|理|3"_s);
    EXPECT_EQ(test.rows(u"select 性别, 籍贯 from 信息表 where ID=%1"_s.arg(*id)), u"女|NULL"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList());
    EXPECT_EQ(told, 1);
    EXPECT_EQ(test.scores.catalogue.ClassTable[1].front().students, 3);
}

TEST_F(StudentAdditions, OfANewClassTakeTheStreamThatWasChosen)
{
    refuse({u"5"_s, u"1"_s, u"戊"_s, {}, {}}, u"这是新的班级，请选择它的科类。"_s);
    refuse({u"5"_s, u"1"_s, u"戊"_s, u"艺"_s, {}},
           u"成绩库里已有科类“文”、“理”，最多两个，新的班级不能是“艺”。"_s);
    EXPECT_TRUE(addition.add({u"5"_s, u"1"_s, u"戊"_s, u"理"_s, {}}));
    EXPECT_EQ(test.rows(u"select 科类, 类别代码 from 信息表 where 班级=5"_s), u"理|1"_s);
    EXPECT_EQ(test.scores.catalogue.ClassTable[1].size(), 2U);
}

TEST_F(StudentAdditions, OfANewClassTakeTheCategoryThatIsTyped)
{
    refuse({u"5"_s, u"1"_s, u"戊"_s, u"理"_s, {}, u"艺"_s},
           u"类别代码“艺”不是大于 0、最多 15 位的整数。"_s);
    EXPECT_TRUE(addition.add({u"5"_s, u"1"_s, u"戊"_s, u"理"_s, {}, u" ３ "_s}));
    EXPECT_TRUE(addition.add({u"5"_s, u"2"_s, u"己"_s, u"理"_s, {}, u"4"_s}));
    EXPECT_EQ(test.rows(u"select 类别代码 from 信息表 where 班级=5"_s), u"3 / 3"_s)
        << "a class that has students gives its own";
}

TEST_F(StudentAdditions, NameWhoHasTheNumber)
{
    refuse({u"2"_s, u"7"_s, u"丁"_s, {}, {}}, u"2 班 7 号已经是乙了，请换一个学号。"_s);
    test.addStudent(2, 7, u"己"_s, u"理"_s);
    refuse({u"２"_s, u"７"_s, u"丁"_s, {}, {}}, u"2 班 7 号已经是乙、己了，请换一个学号。"_s);
}

TEST_F(StudentAdditions, AskAboutANameThatTheClassHas)
{
    const QString question =
        u"2 班已经有叫“乙”的学生（7 号）。\n是另一个同名的学生，才需要添加。"_s;
    test.dialogs.expect(question, u"取消"_s);
    EXPECT_FALSE(addition.add({u"2"_s, u"8"_s, u"乙 "_s, {}, {}}));
    EXPECT_EQ(test.dialogs.questions, QStringList{question});
    EXPECT_EQ(test.dialogs.safeOf(question), u"取消"_s);
    test.dialogs.expect(question, u"仍然添加"_s);
    EXPECT_TRUE(addition.add({u"2"_s, u"8"_s, u"乙"_s, {}, {}}));
    EXPECT_TRUE(addition.add({u"1"_s, u"2"_s, u"乙"_s, {}, {}}))
        << "another class has no such name";
}

TEST_F(StudentAdditions, RefuseWhatIsNoNumberAndNoName)
{
    refuse({{}, u"1"_s, u"丁"_s, {}, {}}, u"请输入班级。"_s);
    refuse({u"1"_s, u" "_s, u"丁"_s, {}, {}}, u"请输入学号。"_s);
    refuse({u"1"_s, u"2"_s, u" "_s, {}, {}}, u"请输入姓名。"_s);
    for (const QString& bad :
         {u"0"_s, u"-1"_s, u"1.5"_s, u"1班"_s, u"' or ''='"_s, u"1234567890123456"_s, u"1e3"_s})
        refuse({u"1"_s, bad, u"丁"_s, {}, {}},
               u"学号“%1”不是大于 0、最多 15 位的整数。"_s.arg(bad));
    refuse({u"一"_s, u"2"_s, u"丁"_s, {}, {}}, u"班级“一”不是大于 0、最多 15 位的整数。"_s);
    refuse({u"1"_s, u"2"_s, QString(10'000, u'长'), {}, {}},
           u"姓名最多 50 个字，现在有 10000 个字。"_s);
    refuse({u"1"_s, u"2"_s, u"甲\n乙"_s, {}, {}}, u"姓名里不能有换行、制表符等控制字符。"_s);
}

TEST_F(StudentAdditions, StoreHostileTextsAsTheyAre)
{
    const QString hostile = u"' or ''='; drop table 信息表; -- ]\""_s;
    ASSERT_TRUE(addition.add({u"1"_s,
                              u"2"_s,
                              hostile,
                              {},
                              {{u"籍贯"_s, hostile}, {u"备注"_s, QString(10'000, u'注')}}}));
    EXPECT_EQ(test.rows(u"select 姓名=籍贯, length(备注) from 信息表 where 学号=2"_s),
              u"1|10000"_s);
}

TEST_F(StudentAdditions, ThatOneColumnRefusesAddNobody)
{
    const QString before = test.rows(everybody);
    EXPECT_FALSE(addition.add({u"1"_s, u"2"_s, u"丁"_s, {}, {{u"性别"_s, QString(51, u'女')}}}));
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].contains(u"性别"_s))
        << test.dialogs.failures[0].toStdString();
    test.execute(u"ALTER TABLE 信息表 DROP COLUMN 籍贯"_s);
    EXPECT_FALSE(addition.add({u"1"_s, u"2"_s, u"丁"_s, {}, {{u"籍贯"_s, u"沪"_s}}}));
    EXPECT_EQ(test.dialogs.failures.size(), 2);
    EXPECT_EQ(test.rows(everybody), before);
}

TEST_F(StudentAdditions, LookAgainAfterTheQuestion)
{
    support::OtherProgram other(test.scores.LibPath);
    class Slow : public support::ScriptedDialogs
    {
    public:
        explicit Slow(support::OtherProgram& writer) : m_writer(writer) {}
        int choose(const runtime::Choice&) override
        {
            m_writer.run("insert into 信息表(班级, 学号, 姓名, 科类) values(2, 8, '抢先', '理')");
            return 0;
        }

    private:
        support::OtherProgram& m_writer;
    } slow(other);
    EXPECT_FALSE(addition.add({u"2"_s, u"8"_s, u"乙"_s, {}, {}}));
    EXPECT_EQ(slow.failures, QStringList()) << "it is no failure";
    EXPECT_EQ(slow.shown, QStringList{u"2 班 8 号已经是抢先了，请换一个学号。"_s});
}

TEST_F(StudentAdditions, ToALibraryThatIsLockedAddNobody)
{
    const QByteArray before = support::read(test.scores.LibPath);
    support::OtherProgram other(test.scores.LibPath);
    other.run("begin immediate");
    EXPECT_FALSE(addition.add({u"1"_s, u"2"_s, u"丁"_s, {}, {}}));
    other.run("rollback");
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(tag));
    EXPECT_EQ(support::read(test.scores.LibPath), before);
    EXPECT_TRUE(addition.add({u"1"_s, u"2"_s, u"丁"_s, {}, {}}));
}

} // namespace
