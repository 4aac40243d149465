#include "maintenance/TeacherList.h"

#include <gtest/gtest.h>

#include "platform/database/WriteBatch.h"
#include "platform/grid/GridText.h"
#include "support/OtherProgram.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;

const QString saveTag = u" - Private Sub Command3_Click/FormJiaoShiMingDan"_s;
const QString listTag = u" - Sub LoadJSMD/FormJiaoShiMingDan"_s;

/// Classes 2 and 10, two subjects and a total; the list shown is that of 期中.
class TeacherList : public testing::Test
{
protected:
    TeacherList()
    {
        test.addStudent(10, 1, u"王芳"_s, u"理"_s);
        test.addStudent(2, 1, u"陈静"_s, u"文"_s);
        test.addExam(u"期中"_s, u"理"_s, 1, {});
        test.addExam(u"期末"_s, u"理"_s, 2, {});
        test.reload();
        list.load();
        list.show(u"期中"_s);
    }

    void type(int row, int col, const QString& text)
    {
        list.teachers.setTextMatrix(row, col, text);
    }

    /// The stored lists without what a statement says of types.
    QString stored() { return test.rows(u"select * from 教师表 order by 考试名称,班级"_s); }

    QString shown() { return grid::gridText(list.teachers); }

    support::TestLibrary test{{u"语文"_s, u"数学"_s, u"总分"_s}};
    maintenance::TeacherList list{test.scores};
};

TEST_F(TeacherList, HasARowForEachClassAndAColumnForEachSubjectAndTotal)
{
    EXPECT_EQ(shown(), u"班级\t语文\t数学\t总分\n2\t\t\t\n10\t\t\t\n"_s);
    EXPECT_EQ(list.teachers.ColWidth(1), 900);
    EXPECT_EQ(list.GetBJRow(u"10"_s), 2);
    EXPECT_EQ(list.GetBJRow(u"3"_s), 0);
}

TEST_F(TeacherList, SavesARowForEveryClassThatIsFoundAgain)
{
    type(1, 1, u"张三,李四"_s);
    type(2, 3, u"王五"_s);
    EXPECT_TRUE(list.save());
    EXPECT_EQ(stored(), u"期中|2|张三,李四|| / 期中|10|||王五"_s);
    list.show(u"期末"_s);
    EXPECT_EQ(shown(), u"班级\t语文\t数学\t总分\n2\t\t\t\n10\t\t\t\n"_s);
    list.show(u"期中"_s);
    EXPECT_EQ(shown(), u"班级\t语文\t数学\t总分\n2\t张三,李四\t\t\n10\t\t\t王五\n"_s);
    EXPECT_EQ(test.scores.teachers.GetJSMD(u"期中"_s, 2, u"语文"_s), u"张三,李四"_s);
}

TEST_F(TeacherList, ASecondSaveChangesTheRowsThatStand)
{
    type(1, 1, u"张三"_s);
    list.save();
    type(1, 1, u""_s);
    type(1, 2, u"李四"_s);
    list.save();
    EXPECT_EQ(stored(), u"期中|2||李四| / 期中|10|||"_s);
}

TEST_F(TeacherList, AnotherExamsListIsSavedForTheExamShown)
{
    type(2, 1, u"张三"_s);
    list.save();
    list.show(u"期末"_s);
    list.copyFrom(u"期中"_s);
    EXPECT_EQ(list.exam(), u"期末"_s);
    EXPECT_EQ(list.teachers.TextMatrix(2, 1), u"张三"_s);
    list.save();
    EXPECT_EQ(stored(), u"期中|2||| / 期中|10|张三|| / 期末|2||| / 期末|10|张三||"_s);
}

TEST_F(TeacherList, KnowsWhatIsNotSavedAndWhatWasEdited)
{
    EXPECT_FALSE(list.hasUnsaved());
    type(1, 1, u"张三"_s);
    EXPECT_TRUE(list.hasUnsaved());
    EXPECT_TRUE(list.wasEdited());
    list.save();
    EXPECT_FALSE(list.hasUnsaved());
    list.show(u"期末"_s);
    list.copyFrom(u"期中"_s);
    EXPECT_TRUE(list.hasUnsaved());
    EXPECT_FALSE(list.wasEdited()) << "a list that was copied can be taken from the library again";
}

TEST_F(TeacherList, RowsOfClassesThatHaveLeftAreNotShownAndStay)
{
    test.execute(u"insert into 教师表 (考试名称,班级,语文) values ('期中',7,'赵六')"_s);
    list.show(u"期中"_s);
    EXPECT_EQ(shown(), u"班级\t语文\t数学\t总分\n2\t\t\t\n10\t\t\t\n"_s);
    list.save();
    EXPECT_EQ(stored(), u"期中|2||| / 期中|7|赵六|NULL|NULL / 期中|10|||"_s);
}

TEST_F(TeacherList, MoreThanFiftyCharactersAreRefusedAndTheOldNameStays)
{
    type(1, 1, u"张三"_s);
    list.save();
    type(1, 1, QString(51, u'长'));
    type(1, 2, QString(50, u'长'));
    type(2, 1, QString(10'000, u'长'));
    EXPECT_TRUE(list.save());
    EXPECT_EQ(stored(), u"期中|2|张三|"_s + QString(50, u'长') + u"| / 期中|10|||"_s);
    ASSERT_EQ(test.dialogs.failures.size(), 2);
    for (const QString& failure : test.dialogs.failures) {
        EXPECT_TRUE(failure.contains(u"超过 50 个字符"_s)) << failure.toStdString();
        EXPECT_TRUE(failure.endsWith(saveTag)) << failure.toStdString();
        EXPECT_LT(failure.size(), 200);
    }
}

TEST_F(TeacherList, HostileNamesOfTeachersAreKeptAsTheyStand)
{
    const QString hostile = u"O'Hara'); drop table 教师表 --\n\"x\""_s;
    type(1, 1, hostile);
    list.save();
    list.show(u"期中"_s);
    EXPECT_EQ(list.teachers.TextMatrix(1, 1), hostile);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(TeacherList, AnExamWithAnApostropheIsRefusedAndNothingIsWritten)
{
    list.show(u"期'中"_s);
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(listTag));
    type(1, 1, u"张三"_s);
    EXPECT_FALSE(list.save());
    EXPECT_TRUE(list.hasUnsaved());
    EXPECT_EQ(stored(), u""_s);
}

TEST_F(TeacherList, OneThatCouldNotBeReadDoesNotTakeThePlaceOfTheStoredOne)
{
    list.show(u"期末"_s);
    type(1, 1, u"张三"_s);
    ASSERT_TRUE(list.save());
    const QString before = stored();
    list.show(u"期中"_s);
    for (const bool copies : {false, true}) {
        {
            support::OtherProgram other(test.scores.Conn.path());
            other.run("begin exclusive");
            if (copies)
                list.copyFrom(u"期末"_s);
            else
                list.show(u"期末"_s);
        }
        EXPECT_FALSE(list.save());
        EXPECT_EQ(test.dialogs.shown.last(), u"教师名单没有读出来，没有保存。请重新选择考试。"_s);
        EXPECT_EQ(stored(), before);
        list.show(u"期末"_s);
    }
    EXPECT_TRUE(list.save());
    EXPECT_EQ(stored(), before);
}

TEST_F(TeacherList, ExamsWhoseNamesHoldSignsOfTheLanguageKeepTheirOwnLists)
{
    for (const QString& exam : {u"期中 -- x"_s, u"期中%"_s, u"期\n中"_s}) {
        list.show(exam);
        type(1, 1, exam.left(2));
        list.save();
        list.show(u"期中"_s);
        EXPECT_EQ(list.teachers.TextMatrix(1, 1), u""_s) << exam.toStdString();
        list.show(exam);
        EXPECT_EQ(list.teachers.TextMatrix(1, 1), exam.left(2)) << exam.toStdString();
    }
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(TeacherList, StudentsWithoutAClassCostAMessageAndNoOtherClass)
{
    test.execute(u"update 信息表 set 班级=null where 班级=2"_s);
    list.load();
    list.show(u"期中"_s);
    type(1, 1, u"张三"_s);
    type(2, 1, u"李四"_s);
    EXPECT_TRUE(list.save());
    EXPECT_EQ(stored(), u"期中|10|李四||"_s);
    EXPECT_EQ(test.dialogs.failures,
              QStringList{u"有学生没有班级，条件“班级=”后面缺少数字。"_s + saveTag});
}

TEST_F(TeacherList, AClassThatIsNoNumberIsToldAndIsNotClassNought)
{
    list.teachers.setTextMatrix(1, 0, u"高一"_s);
    EXPECT_TRUE(list.save());
    EXPECT_EQ(stored(), u"期中|10|||"_s);
    EXPECT_EQ(test.dialogs.failures, QStringList{u"班级“高一”不是数字。"_s + saveTag});
}

TEST_F(TeacherList, AColumnThatTheTableLacksIsToldAndTheOthersStand)
{
    test.execute(u"ALTER TABLE 教师表 DROP COLUMN 数学"_s);
    list.show(u"期中"_s);
    type(1, 1, u"张三"_s);
    type(1, 2, u"李四"_s);
    EXPECT_TRUE(list.save());
    EXPECT_EQ(stored(), u"期中|2|张三| / 期中|10||"_s);
    ASSERT_EQ(test.dialogs.failures.size(), 2) << "for each class";
    list.show(u"期中"_s);
    EXPECT_EQ(list.teachers.TextMatrix(1, 1), u"张三"_s);
    EXPECT_EQ(list.teachers.TextMatrix(1, 2), u""_s);
    EXPECT_EQ(test.dialogs.failures.size(), 4);
}

TEST_F(TeacherList, WithoutAnExamNothingIsSaved)
{
    list.show(u""_s);
    type(1, 1, u"张三"_s);
    EXPECT_FALSE(list.save());
    EXPECT_EQ(stored(), u""_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"成绩库里还没有考试，教师名单没有保存。"_s});
}

TEST_F(TeacherList, AFileThatSomeoneElseHoldsKeepsTheChangesUnsaved)
{
    database::Connection other;
    other.Open(test.scores.LibPath);
    type(1, 1, u"张三"_s);
    {
        const database::WriteBatch held(other);
        other.Execute(u"update 信息表 set 学号=2"_s);
        EXPECT_FALSE(list.save());
    }
    EXPECT_TRUE(list.hasUnsaved());
    EXPECT_EQ(stored(), u""_s);
    EXPECT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(list.save()) << "the next time";
}

TEST_F(TeacherList, ALibraryWithoutStudentsOrColumnsHasAnEmptyList)
{
    support::TestLibrary empty({});
    maintenance::TeacherList none(empty.scores);
    none.load();
    none.show(u"期中"_s);
    EXPECT_EQ(grid::gridText(none.teachers), u"班级\n"_s);
    EXPECT_TRUE(none.save());
}

} // namespace
