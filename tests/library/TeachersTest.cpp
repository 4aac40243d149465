#include "library/Teachers.h"

#include <gtest/gtest.h>

#include "platform/database/OpenFile.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

class TeacherLists : public testing::Test
{
protected:
    library::Teachers& teachers() { return test.scores.teachers; }

    TestLibrary test{{u"语文"_s, u"数学"_s, u"总分"_s}};
};

TEST_F(TeacherLists, TheTeacherOfAClassAndSubject)
{
    test.execute(u"insert into 教师表(考试名称,班级,语文) values('期中',3,'安老师')"_s);
    EXPECT_EQ(teachers().GetJSMD(u"期中"_s, 3, u"语文"_s), u"安老师"_s);
    EXPECT_EQ(teachers().GetJSMD(u"期中"_s, 3, u"数学"_s), u""_s);
    EXPECT_EQ(teachers().GetJSMD(u"期中"_s, 4, u"语文"_s), u""_s);
}

TEST_F(TeacherLists, AMissingSubjectIsToldWhenTheFileIsFreeAgain)
{
    test.execute(u"insert into 教师表(考试名称,班级,语文) values('期中',3,'安老师')"_s);
    QList<bool> usedWhileToldOf;
    const runtime::BeforeDialogs whileWaiting(
        [&] { usedWhileToldOf.append(database::isInUse(test.scores.Conn.path())); });
    EXPECT_EQ(teachers().ofSubjects(u"期中"_s, 3, {u"物理"_s, u"语文"_s, u"化学"_s}),
              QStringList({QString(), u"安老师"_s, QString()}));
    EXPECT_EQ(test.dialogs.failures,
              QStringList({u"没有名为“物理”的列。 - Function GetJSMD/Mdl_MDB"_s,
                           u"没有名为“化学”的列。 - Function GetJSMD/Mdl_MDB"_s}));
    EXPECT_EQ(usedWhileToldOf, QList<bool>({false, false}));
    EXPECT_EQ(teachers().ofSubjects(u"期中"_s, 4, {u"物理"_s}), QStringList{QString()});
    EXPECT_EQ(test.dialogs.failures.size(), 2);
}

} // namespace
