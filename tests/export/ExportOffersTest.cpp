#include "export/ExportOffers.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

using namespace Qt::StringLiterals;

namespace {

TEST(ClassesToExport, StandOnceByNumberWithoutThatOfAStudentWhoHasNone)
{
    support::TestLibrary test{{u"语文"_s}};
    for (const int classNumber : {10, 2, 1, 2})
        test.addStudent(classNumber, 1, u"甲"_s, u"理"_s);
    test.execute(u"update 信息表 set 班级=null where 班级=1"_s);
    EXPECT_EQ(exporting::classesToExport(test.scores), (QStringList{u"2"_s, u"10"_s}));
}

} // namespace
