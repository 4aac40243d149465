#include "library/Students.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

class StudentLookups : public testing::Test
{
protected:
    library::Students& students() { return test.scores.students; }

    TestLibrary test{{u"语文"_s, u"数学"_s, u"总分"_s}};
};

TEST_F(StudentLookups, StreamAndCategoryOfAClassAreThoseOfItsFirstStudent)
{
    test.addStudent(3, 1, u"甲"_s, u"文"_s, 2);
    test.addStudent(3, 2, u"乙"_s, u"理"_s, 1);
    EXPECT_EQ(students().GetBJKL(3).text(), u"文"_s);
    EXPECT_EQ(students().GetLeiBie(3).text(), u"2"_s);
}

TEST_F(StudentLookups, AClassWithoutStudentsCostsAMessageAndAnswersOne)
{
    EXPECT_EQ(students().GetBJKL(3).text(), u"1"_s);
    EXPECT_EQ(students().GetLeiBie(3).text(), u"1"_s);
    EXPECT_EQ(test.dialogs.failures,
              (QStringList{u"没有当前记录。 - Function GetBJKL/Mdl_MDB"_s,
                           u"没有当前记录。 - Function GetLeiBie/Mdl_MDB"_s}));
}

TEST_F(StudentLookups, StudentsAreCountedByStreamAndByClass)
{
    test.addStudent(1, 1, u"甲"_s, u"理"_s);
    test.addStudent(1, 2, u"乙"_s, u"理"_s);
    test.addStudent(2, 1, u"丙"_s, u"理"_s);
    EXPECT_EQ(students().GetZRS(u"理"_s, 0), 3);
    EXPECT_EQ(students().GetZRS(u"理"_s, 1), 2);
    EXPECT_EQ(students().GetZRS(u"文"_s, 1), 0);
}

TEST_F(StudentLookups, AStudentsLineLeavesOutWhatIsEmpty)
{
    const qint64 id = test.addStudent(3, 12, u"王五"_s, u"理"_s);
    EXPECT_EQ(students().GetGRXX(id), u"王五 3 班 12 号 ，理"_s);
    test.execute(u"update 信息表 set 类别='体育'"_s);
    EXPECT_EQ(students().GetGRXX(id), u"王五 3 班 12 号 ，体育，理"_s);
}

TEST_F(StudentLookups, AStudentWhoIsGoneHasNoClass)
{
    const qint64 id = test.addStudent(3, 12, u"王五"_s, u"理"_s);
    EXPECT_EQ(students().classOf(id), runtime::Value(3.0));
    EXPECT_FALSE(students().classOf(id + 1).has_value());
    EXPECT_FALSE(students().classOf(0).has_value());
    test.execute(u"update 信息表 set 班级=null"_s);
    EXPECT_EQ(students().classOf(id), runtime::Value());
}

TEST_F(StudentLookups, ARankIsTextAndEmptyWhereThereIsNone)
{
    const qint64 id = test.addStudent(1, 1, u"甲"_s, u"理"_s);
    test.addScores(u"期中"_s, 1, 1, {{u"语文年名"_s, 5}});
    EXPECT_EQ(students().GetMC(u"期中"_s, u"语文年名"_s, id), u"5"_s);
    EXPECT_EQ(students().GetMC(u"期中"_s, u"数学年名"_s, id), u""_s);
    EXPECT_EQ(students().GetMC(u""_s, u"语文年名"_s, id), u""_s);
    EXPECT_EQ(students().GetMC(u"期中"_s, u""_s, id), u""_s);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
    EXPECT_EQ(students().GetMC(u"期末"_s, u"语文年名"_s, id), u""_s);
    EXPECT_EQ(test.dialogs.failures, QStringList{u"没有当前记录。 - Function GetMC/Mdl_MDB"_s});
}

} // namespace
