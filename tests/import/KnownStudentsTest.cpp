#include "import/KnownStudents.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using importing::KnownStudents;

class KnownStudentsTest : public testing::Test
{
protected:
    KnownStudentsTest() { library.addStudent(1, 1, u"甲"_s, u"理"_s); }

    /// The name at that place, or "-".
    QString name(double classNumber, double number)
    {
        const KnownStudents::Student* found = known.find(classNumber, number);
        return found ? found->name : u"-"_s;
    }

    support::TestLibrary library{{u"语文"_s}};
    KnownStudents known{library.scores.Conn};
};

TEST_F(KnownStudentsTest, OfTwoAtOnePlaceTheFirstIsFound)
{
    library.addStudent(1, 1, u"乙"_s, u"理"_s);
    EXPECT_EQ(name(1, 1), u"甲"_s);
    EXPECT_EQ(known.find(1, 1)->id, 1);
    EXPECT_EQ(name(1, 2), u"-"_s);
    EXPECT_EQ(name(2, 1), u"-"_s);
}

TEST_F(KnownStudentsTest, WhoWasWrittenMeanwhileIsFoundOnceTakenIn)
{
    EXPECT_EQ(name(1, 2), u"-"_s);
    const qint64 id = library.addStudent(1, 2, u"乙"_s, u"理"_s);
    EXPECT_EQ(name(1, 2), u"-"_s);
    known.add(id);
    EXPECT_EQ(name(1, 2), u"乙"_s);
}

TEST_F(KnownStudentsTest, WhatAnotherProgramWroteIsReadAnewAndNothingElse)
{
    EXPECT_EQ(name(1, 2), u"-"_s);
    library.addStudent(1, 2, u"乙"_s, u"理"_s);
    known.forgetIfOutdated();
    EXPECT_EQ(name(1, 2), u"-"_s) << "our own writes are taken in by add()";
    {
        database::Connection other;
        other.Open(library.scores.Conn.path());
        other.Execute(u"insert into 信息表(班级, 学号, 姓名) values(1, 3, '丙')"_s);
    }
    known.forgetIfOutdated();
    EXPECT_EQ(name(1, 3), u"丙"_s);
    EXPECT_EQ(name(1, 2), u"乙"_s);
}

TEST_F(KnownStudentsTest, AStudentWithoutClassOrNumberIsPassedOver)
{
    library.execute(u"insert into 信息表(班级, 姓名) values(1, '丙')"_s);
    library.execute(u"insert into 信息表(学号, 姓名) values(1, '丁')"_s);
    EXPECT_EQ(name(1, 0), u"-"_s);
    EXPECT_EQ(name(0, 1), u"-"_s);
}

TEST_F(KnownStudentsTest, NumbersCountWithTheirFifteenDigits)
{
    library.addStudent(2.000000000000004, 1234567890123456, u"乙"_s, u"理"_s);
    EXPECT_EQ(name(2, 1234567890123460), u"乙"_s);
}

TEST_F(KnownStudentsTest, AllAreReadAnewAfterTheTablesWereChanged)
{
    EXPECT_EQ(name(1, 1), u"甲"_s);
    library.execute(u"ALTER TABLE 成绩表 add COLUMN 体育 Single"_s);
    known.forget();
    EXPECT_EQ(name(1, 1), u"甲"_s);
}

} // namespace
