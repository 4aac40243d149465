#include "maintenance/MissingPhotos.h"

#include <gtest/gtest.h>

#include "support/ErrorOf.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;

QString namesWithoutPhoto(support::TestLibrary& test)
{
    QStringList names;
    for (const maintenance::StudentWithoutPhoto& student :
         maintenance::studentsWithoutPhoto(test.scores.Conn))
        names.append(u"%1 %2-%3 %4"_s.arg(student.id)
                         .arg(student.classNumber.text(), student.number.text(), student.name));
    return names.join(u" / "_s);
}

TEST(StudentsWithoutPhoto, AreThoseWhosePhotoHasNoName)
{
    support::TestLibrary test({u"语文"_s});
    test.addStudent(2, 7, u"null"_s, u"理"_s);
    test.addStudent(1, 1, u"empty"_s, u"理"_s);
    test.addStudent(1, 2, u"blank"_s, u"理"_s);
    test.addStudent(1, 3, u"王芳"_s, u"理"_s);
    test.execute(u"update 信息表 set 照片名='' where 姓名='empty'"_s);
    test.execute(u"update 信息表 set 照片名=' ' where 姓名='blank'"_s);
    test.execute(u"update 信息表 set 照片名='3.jpg' where 姓名='王芳'"_s);
    EXPECT_EQ(namesWithoutPhoto(test), u"1 2-7 null / 2 1-1 empty"_s);
}

TEST(StudentsWithoutPhoto, AreNoneWhereAllHaveOne)
{
    support::TestLibrary test({u"语文"_s});
    test.addStudent(1, 1, u"王芳"_s, u"理"_s);
    test.execute(u"update 信息表 set 照片名='1.jpg'"_s);
    EXPECT_EQ(namesWithoutPhoto(test), QString());
}

TEST(StudentsWithoutPhoto, AreAnErrorWhereTheTableIsGone)
{
    support::TestLibrary test({u"语文"_s});
    test.execute(u"drop table 信息表"_s);
    EXPECT_FALSE(
        support::errorOf([&] { maintenance::studentsWithoutPhoto(test.scores.Conn); }).isEmpty());
}

} // namespace
