#include "maintenance/PhotoFiles.h"

#include <gtest/gtest.h>

#include "support/FileBytes.h"
#include "support/FixedPhotoFiles.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace maintenance {

namespace {

using namespace Qt::StringLiterals;
using support::FixedPhotoFiles;

class APhotoOfOneStudent : public testing::Test
{
protected:
    bool set(PhotoBytes bytes)
    {
        database::Recordset student;
        student.Open(u"select *  from 信息表 where id=1"_s, test.scores.Conn);
        const bool isSet = setPhoto(test.scores, student, path, photos, bytes);
        student.Update();
        return isSet;
    }

    QString stored() { return test.rows(u"select 照片名,cast(照片 as text) from 信息表"_s); }

    support::TestLibrary test{{u"语文"_s}};
    qint64 id = test.addStudent(1, 1, u"王芳"_s, u"理"_s);
    FixedPhotoFiles photos;
    QString path = test.file(u"王芳.jpg"_s);
};

TEST_F(APhotoOfOneStudent, GoesInAsItIs)
{
    support::write(path, "bytes");
    EXPECT_EQ(chosenBytes(photos, path), PhotoBytes::Own);
    EXPECT_TRUE(set(PhotoBytes::Own));
    EXPECT_EQ(stored(), u"王芳.jpg|bytes"_s);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(APhotoOfOneStudent, AFileThatIsNoPictureIsRefusedWithItsName)
{
    photos.refused = {path};
    EXPECT_EQ(chosenBytes(photos, path), std::nullopt);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"照片文件“%1”不是图片，或已损坏。"_s.arg(path)});
    EXPECT_EQ(test.dialogs.look(path).icon, runtime::Icon::Warning);
}

TEST_F(APhotoOfOneStudent, ALargeOneIsOfferedSmallerAndGoesInAsItIsOtherwise)
{
    photos.large = {path};
    const QString question = u"照片“%1”很大（超过 5 MB 或 2000 像素），成绩库会因此变大。\n"
                             "可以改存一张高 600 像素的较小的图片，文件本身不变。"_s.arg(path);
    test.dialogs.expect(question, u"改存较小的图片"_s);
    EXPECT_EQ(chosenBytes(photos, path), PhotoBytes::Smaller);
    test.dialogs.expect(question, u"原样存入"_s);
    EXPECT_EQ(chosenBytes(photos, path), PhotoBytes::Own);
    EXPECT_EQ(test.dialogs.safeOf(u"很大"_s), u"原样存入"_s);
}

TEST_F(APhotoOfOneStudent, WithoutRoomForItsNameIsNotStored)
{
    support::write(path, "bytes");
    test.execute(u"ALTER TABLE 信息表 DROP COLUMN 照片名"_s);
    test.execute(u"ALTER TABLE 信息表 add COLUMN 照片名 text(3)"_s);
    database::Recordset student;
    student.Open(u"select *  from 信息表 where id=1"_s, test.scores.Conn);
    for (const PhotoBytes bytes : {PhotoBytes::Own, PhotoBytes::Smaller}) {
        EXPECT_THROW(setPhoto(test.scores, student, path, photos, bytes), runtime::Error);
        student.Update();
        EXPECT_EQ(stored(), u"NULL|NULL"_s);
    }
}

TEST_F(APhotoOfOneStudent, TheSmallerOneKeepsTheNameOfItsFile)
{
    support::write(path, "bytes");
    EXPECT_TRUE(set(PhotoBytes::Smaller));
    EXPECT_EQ(stored(), u"王芳.jpg|smaller 王芳.jpg"_s);
}

TEST_F(APhotoOfOneStudent, OneThatCannotBeReadLeavesPhotoAndNameAsTheyWere)
{
    test.execute(u"update 信息表 set 照片名='old.jpg', 照片=x'6F6C64'"_s);
    EXPECT_FALSE(set(PhotoBytes::Own));
    EXPECT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures.first().endsWith(u" - Sub SaveBin/Mdl_MDB"_s));
    EXPECT_EQ(stored(), u"old.jpg|old"_s);
}

} // namespace

} // namespace maintenance
