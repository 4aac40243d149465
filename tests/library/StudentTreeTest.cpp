#include "library/StudentTree.h"

#include <gtest/gtest.h>

#include "library/StudentFinder.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using library::StudentFinder;
using library::StudentTree;
using support::TestLibrary;

/// "1班: 1=2王芳 / 2班: …", each student's ID ahead of his text.
QString treeText(const StudentTree& tree)
{
    QStringList classes;
    for (const library::ClassNode& one : tree) {
        QStringList students;
        for (const library::StudentNode& student : one.students)
            students.append(QString::number(student.id) + u'=' + student.text());
        classes.append(one.text + u": "_s + students.join(u' '));
    }
    return classes.join(u" / "_s);
}

class StudentTrees : public testing::Test
{
protected:
    QString tree() { return treeText(library::readStudentTree(test.scores.Conn)); }

    TestLibrary test{{u"语文"_s}};
};

TEST_F(StudentTrees, ClassesAscendAndStudentsStandInTheOrderOfTheTable)
{
    test.addStudent(10, 2, u"丁"_s, u"理"_s);
    test.addStudent(2, 9, u"乙"_s, u"理"_s);
    test.addStudent(10, 1, u"丙"_s, u"文"_s);
    test.addStudent(2, 1, u"甲"_s, u"理"_s);
    EXPECT_EQ(tree(), u"2班: 2=9乙 4=1甲 / 10班: 1=2丁 3=1丙"_s);
}

TEST_F(StudentTrees, ALibraryWithoutStudentsHasNoClass)
{
    EXPECT_EQ(tree(), u""_s);
}

TEST_F(StudentTrees, OddClassesNumbersAndNamesAreShownAsTheyAre)
{
    test.addStudent(1.5, 20210301, u"O'Neil -- \n"_s, u"理"_s);
    test.execute(u"insert into 信息表(班级,学号,姓名) values(3,null,null)"_s);
    test.execute(u"insert into 信息表(学号,姓名) values(7,'无班')"_s);
    EXPECT_EQ(tree(), u"班:  / 1.5班: 1=20210301O'Neil -- \n / 3班: 2="_s);
}

TEST_F(StudentTrees, AnAbsentTableIsAnError)
{
    test.execute(u"drop table 信息表"_s);
    EXPECT_ANY_THROW(library::readStudentTree(test.scores.Conn));
}

StudentTree sample()
{
    return {{u"1班"_s, {{11, u"1"_s, u"曾国藩"_s}, {12, u"15"_s, u"单雄信"_s}}},
            {u"2班"_s, {}},
            {u"3班"_s, {{31, u"5"_s, u"王芳"_s}, {32, u"6"_s, u"Ann O'Neil"_s}}}};
}

struct Search
{
    const char16_t* typed;
    int from;
    int next;
    int previous;
};

TEST(StudentFinding, TakesNumberNameAndPinyinFromTheNextStudentOn)
{
    const Search searches[] = {
        {u"5", -1, 2, 2},      {u"15", -1, 1, 1},   {u"1", 0, 1, 1},    {u"1", 1, 0, 0},
        {u"5王", -1, 2, 2},    {u"国", -1, 0, 0},   {u"zgf", -1, 0, 0}, {u"ZG", 2, 0, 0},
        {u"zeng", -1, 0, 0},   {u"sxx", -1, 1, 1},  {u"wang", 0, 2, 2}, {u"wf", 2, 2, 2},
        {u"  wf  ", -1, 2, 2}, {u"ann", 0, 3, 3},   {u"O'", 0, 3, 3},   {u"gf", -1, -1, -1},
        {u"x", -1, -1, -1},    {u"李", -1, -1, -1}, {u"", -1, -1, -1},  {u"   ", 0, -1, -1},
        {u"'; --", 0, -1, -1}, {u"\n", 0, -1, -1},  {u"99", 3, -1, -1}};
    StudentFinder finder(sample());
    for (const Search& search : searches) {
        const QString typed = QString::fromUtf16(search.typed);
        SCOPED_TRACE(typed.toStdString() + " from " + std::to_string(search.from));
        EXPECT_EQ(finder.next(typed, search.from), search.next);
        EXPECT_EQ(finder.previous(typed, search.from), search.previous);
    }
    EXPECT_EQ(finder.student(2).id, 31);
}

TEST(StudentFinding, GoesBothWaysAroundTheEnd)
{
    StudentFinder finder(
        {{u"1班"_s, {{1, u"1"_s, u"王甲"_s}, {2, u"2"_s, u"李乙"_s}, {3, u"3"_s, u"王丙"_s}}}});
    EXPECT_EQ(finder.next(u"王"_s, 0), 2);
    EXPECT_EQ(finder.next(u"王"_s, 2), 0);
    EXPECT_EQ(finder.previous(u"王"_s, 0), 2);
    EXPECT_EQ(finder.previous(u"王"_s, -1), 2);
}

TEST(StudentFinding, AnEmptyTreeHasNobody)
{
    StudentFinder finder(StudentTree{});
    EXPECT_EQ(finder.next(u"王"_s, -1), -1);
    EXPECT_FALSE(finder.spellSome(5));
}

TEST(StudentFinding, NamesAreSpelledInSteps)
{
    StudentFinder finder(sample());
    EXPECT_TRUE(finder.spellSome(3));
    EXPECT_FALSE(finder.spellSome(3));
}

TEST(StudentFinding, AnEndlessTextFindsNobody)
{
    StudentFinder finder(sample());
    EXPECT_EQ(finder.next(QString(10000, u'z'), -1), -1);
}

} // namespace
