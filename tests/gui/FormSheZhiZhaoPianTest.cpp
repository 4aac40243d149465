#include "maintenance/ui/FormSheZhiZhaoPian.h"

#include <QDir>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include "support/FileBytes.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;

class PhotoScreen : public testing::Test
{
protected:
    PhotoScreen()
    {
        test.addStudent(1, 1, u"王芳"_s, u"理"_s);
        test.addStudent(1, 2, u"李强"_s, u"理"_s);
        form =
            std::make_unique<maintenance::FormSheZhiZhaoPian>(test.scores, screenDialogs, nullptr);
        form->show();
        form->activateWindow();
        (void)QTest::qWaitForWindowActive(form.get());
        folder()->setFocus();
    }

    QLineEdit* folder() { return form->findChild<QLineEdit*>(u"Text1"_s); }
    QToolButton* browse() { return form->findChild<QToolButton*>(u"Label2"_s); }
    QCheckBox* backup() { return form->findChild<QCheckBox*>(u"CheckBackup"_s); }

    void confirm()
    {
        QTest::mouseClick(form->findChild<QPushButton*>(u"Command1"_s), Qt::LeftButton);
    }

    /// A photo of this size in the folder of class 1.
    void addPhoto(const QString& name, int width, int height)
    {
        ASSERT_TRUE(QDir(test.folder.path()).mkpath(u"照片/1"_s));
        QImage picture(width, height, QImage::Format_RGB32);
        picture.fill(Qt::green);
        ASSERT_TRUE(picture.save(test.file(u"照片/1/"_s + name), "JPEG"));
    }

    QString photos() { return test.rows(u"select 姓名,照片名 from 信息表 order by ID"_s); }
    QStringList copies() { return QDir(test.folder.path()).entryList({u"*.bak"_s}, QDir::Files); }

    widgets::ScreenDialogs screenDialogs;
    support::TestLibrary test{{u"语文"_s}};
    std::unique_ptr<maintenance::FormSheZhiZhaoPian> form;
};

TEST_F(PhotoScreen, SaysWhatTheFolderMustHold)
{
    EXPECT_EQ(form->windowTitle(), u"设置照片"_s);
    EXPECT_EQ(form->findChild<QLabel*>(u"Label1"_s)->text(),
              u"设置的文件夹中要包含每个班 班号 的文件夹，每个学生的照片放在本班的文件夹中，"
              "照片名可以是学号或姓名，照片将全部保存在数据库中，因此要求照片大小不宜过大。"_s);
    EXPECT_EQ(form->findChild<QPushButton*>(u"Command1"_s)->text(), u"确定(&O)"_s);
    EXPECT_TRUE(backup()->isChecked());
}

TEST_F(PhotoScreen, ATypedFolderIsTaken)
{
    addPhoto(u"1.jpg"_s, 60, 80);
    addPhoto(u"李强.JPG"_s, 60, 80);
    QTest::keyClicks(folder(), test.folder.path() + u'/');
    folder()->insert(u"照片"_s);
    confirm();
    EXPECT_EQ(photos(), u"王芳|1.jpg / 李强|李强.JPG"_s);
    EXPECT_EQ(test.dialogs.shown, (QStringList{u"设置了 2 名学生的照片。"_s, u"设置完毕！"_s}));
    EXPECT_EQ(copies().size(), 1);
    EXPECT_TRUE(form->isVisible());
}

TEST_F(PhotoScreen, TheFolderIsChosenByTheMouse)
{
    addPhoto(u"1.jpg"_s, 60, 80);
    test.dialogs.folder = test.file(u"照片"_s);
    QTest::mouseClick(browse(), Qt::LeftButton);
    EXPECT_EQ(folder()->text(), test.file(u"照片"_s));
    EXPECT_EQ(test.dialogs.fileTitle, u"选择学生照片所在的文件夹"_s);
    confirm();
    EXPECT_EQ(photos(), u"王芳|1.jpg / 李强|NULL"_s);
}

TEST_F(PhotoScreen, TheFolderIsChosenByTheKeyboard)
{
    test.dialogs.folder = test.file(u"照片"_s);
    QTest::keyClick(folder(), Qt::Key_Tab);
    ASSERT_EQ(form->focusWidget(), browse());
    QTest::keyClick(browse(), Qt::Key_Space);
    EXPECT_EQ(folder()->text(), test.file(u"照片"_s));
}

TEST_F(PhotoScreen, NoChoiceEmptiesTheFolder)
{
    folder()->setText(u"照片"_s);
    QTest::mouseClick(browse(), Qt::LeftButton);
    EXPECT_EQ(folder()->text(), QString());
    confirm();
    EXPECT_EQ(test.dialogs.shown, QStringList{u"请先选择学生照片所在的文件夹。"_s});
}

TEST_F(PhotoScreen, TheButtonOfTheFolderRisesUnderTheMouseAndSinks)
{
    EXPECT_EQ(browse()->text(), u"…"_s);
    EXPECT_EQ(browse()->toolTip(), u"浏览文件夹"_s);
    EXPECT_TRUE(browse()->autoRaise());
    QTest::mousePress(browse(), Qt::LeftButton);
    EXPECT_TRUE(browse()->isDown());
    QTest::mouseRelease(browse(), Qt::LeftButton, {}, QPoint(-50, -50));
    EXPECT_FALSE(browse()->isDown());
}

TEST_F(PhotoScreen, SwitchedOffNoCopyIsMade)
{
    addPhoto(u"1.jpg"_s, 60, 80);
    folder()->setText(test.file(u"照片"_s));
    QTest::keyClick(backup(), Qt::Key_Space);
    confirm();
    EXPECT_EQ(photos(), u"王芳|1.jpg / 李强|NULL"_s);
    EXPECT_EQ(copies(), QStringList());
}

TEST_F(PhotoScreen, APhotoOfAPhoneGoesInSmallerIfTheUserSaysSo)
{
    addPhoto(u"1.jpg"_s, 2400, 3200);
    folder()->setText(test.file(u"照片"_s));
    test.dialogs.expect(u"1 张照片很大（超过 5 MB 或 2000 像素）"_s, u"改存较小的图片"_s);
    confirm();
    const QImage stored(test.scores.GetPic(1), "JPEG");
    EXPECT_EQ(stored.size(), QSize(450, 600));
}

TEST_F(PhotoScreen, AFileThatIsNoPictureIsRefusedWithItsName)
{
    addPhoto(u"1.jpg"_s, 60, 80);
    support::write(test.file(u"照片/1/2.jpg"_s), "text");
    folder()->setText(test.file(u"照片"_s));
    confirm();
    EXPECT_EQ(photos(), u"王芳|1.jpg / 李强|NULL"_s);
    EXPECT_EQ(test.dialogs.failures,
              QStringList{u"照片文件“%1”不是图片，或已损坏。"
                          " - Private Sub Command1_Click/FormSheZhiZhaoPian"_s.arg(
                              test.file(u"照片/1/2.jpg"_s))});
}

} // namespace
