#include "maintenance/SchoolClasses.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;

TEST(SchoolClasses, ClassesComeOnceInTheOrderOfTheirNumbers)
{
    support::TestLibrary test({u"语文"_s});
    for (const int classNumber : {10, 2, 10, 1})
        test.addStudent(classNumber, 1, u"王芳"_s, u"理"_s);
    EXPECT_EQ(maintenance::classesOfStudents(test.scores.Conn),
              (QStringList{u"1"_s, u"2"_s, u"10"_s}));
}

TEST(SchoolClasses, ALibraryWithoutStudentsHasNone)
{
    support::TestLibrary test({u"语文"_s});
    EXPECT_TRUE(maintenance::classesOfStudents(test.scores.Conn).isEmpty());
}

} // namespace
