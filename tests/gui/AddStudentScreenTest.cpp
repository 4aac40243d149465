#include "maintenance/ui/AddStudentScreen.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include "gui/TypedText.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;

class StudentAdditionOnScreen : public testing::Test
{
protected:
    StudentAdditionOnScreen()
    {
        test.addStudent(1, 3, u"甲"_s, u"文"_s);
        test.addStudent(2, 5, u"乙"_s, u"理"_s, 2);
        test.reload();
        screen =
            std::make_unique<maintenance::AddStudentScreen>(test.scores, screenDialogs, nullptr);
        screen->show();
        screen->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(screen.get()));
    }

    template <class Widget> Widget* find(const QString& name)
    {
        return screen->findChild<Widget*>(name);
    }
    QString text(const QString& name) { return find<QLineEdit>(name)->text(); }
    QString note() { return find<QLabel>(u"LabelClassNote"_s)->text(); }
    QComboBox* streams() { return find<QComboBox>(u"ComboStream"_s); }

    void type(const QString& name, const QString& typed)
    {
        support::typeOver(find<QWidget>(name), typed);
    }

    void press(const QString& button)
    {
        QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton);
    }

    QString selected()
    {
        const auto* item = find<QListWidget>(u"ListStudents"_s)->currentItem();
        return item ? item->text() : QString();
    }

    QString students()
    {
        return test.rows(u"select 班级, 学号, 姓名, 科类, 类别代码 from 信息表 order by ID"_s);
    }

    widgets::ScreenDialogs screenDialogs;
    support::TestLibrary test{{u"语文"_s}};
    std::unique_ptr<maintenance::AddStudentScreen> screen;
};

TEST_F(StudentAdditionOnScreen, FollowsTheClassThatIsTyped)
{
    EXPECT_EQ(text(u"TextNumber"_s), u"4"_s);
    EXPECT_TRUE(find<QLineEdit>(u"TextName"_s)->hasFocus());
    type(u"ComboClass"_s, u"2"_s);
    EXPECT_EQ(text(u"TextNumber"_s), u"6"_s);
    EXPECT_EQ(note(), u"科类（理）和类别代码（2）与本班相同。"_s);
    EXPECT_EQ(streams()->currentText(), u"理"_s);
    EXPECT_FALSE(streams()->isEnabled());
    EXPECT_EQ(find<QListWidget>(u"ListStudents"_s)->item(0)->text(), u"5 号 乙"_s);
    type(u"ComboClass"_s, u"9"_s);
    EXPECT_EQ(text(u"TextNumber"_s), u"1"_s);
    EXPECT_EQ(note(), u"成绩库里还没有这个班的学生，请选择它的科类，可以填类别代码。"_s);
    EXPECT_TRUE(find<QLineEdit>(u"TextCategory"_s)->isEnabled());
    EXPECT_TRUE(streams()->isEnabled());
    EXPECT_EQ(streams()->currentText(), QString());
}

TEST_F(StudentAdditionOnScreen, KeepsANumberThatWasTyped)
{
    type(u"TextNumber"_s, u"33"_s);
    type(u"ComboClass"_s, u"2"_s);
    EXPECT_EQ(text(u"TextNumber"_s), u"33"_s);
}

TEST_F(StudentAdditionOnScreen, SavesByEnterAndCloses)
{
    type(u"ComboClass"_s, u"2"_s);
    type(u"TextName"_s, u"丙"_s);
    type(u"Text性别"_s, u"女"_s);
    QTest::keyClick(find<QLineEdit>(u"Text性别"_s), Qt::Key_Return);
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(students(), u"1|3|甲|文|1 / 2|5|乙|理|2 / 2|6|丙|理|2"_s);
    EXPECT_EQ(test.rows(u"select 性别 from 信息表 where 姓名='丙'"_s), u"女"_s);
}

TEST_F(StudentAdditionOnScreen, AddsOneAfterTheOtherAndShowsTheNewOne)
{
    for (const QString& name : {u"丙"_s, u"丁"_s}) {
        type(u"TextName"_s, name);
        type(u"Text籍贯"_s, u"沪"_s);
        find<QPushButton>(u"ButtonSaveNext"_s)->setFocus();
        QTest::keyClick(find<QPushButton>(u"ButtonSaveNext"_s), Qt::Key_Return);
        EXPECT_TRUE(find<QLineEdit>(u"TextName"_s)->hasFocus());
        EXPECT_EQ(QString(text(u"TextName"_s) + text(u"Text籍贯"_s)), QString());
    }
    EXPECT_EQ(selected(), u"5 号 丁"_s);
    EXPECT_EQ(find<QLabel>(u"LabelResult"_s)->text(), u"已添加：1 班 5 号 丁"_s);
    EXPECT_EQ(text(u"TextNumber"_s), u"6"_s);
    EXPECT_EQ(students(), u"1|3|甲|文|1 / 2|5|乙|理|2 / 1|4|丙|文|1 / 1|5|丁|文|1"_s);
    QTest::keyClick(screen.get(), Qt::Key_Escape);
    EXPECT_FALSE(screen->isVisible());
}

TEST_F(StudentAdditionOnScreen, OfANewClassAsksForItsStream)
{
    type(u"ComboClass"_s, u"9"_s);
    type(u"TextName"_s, u"丙"_s);
    press(u"ButtonSaveNext"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"这是新的班级，请选择它的科类。"_s});
    streams()->setFocus();
    QTest::keyClick(streams(), Qt::Key_End);
    press(u"ButtonSaveNext"_s);
    EXPECT_EQ(test.rows(u"select 学号, 姓名, 科类 from 信息表 where 班级=9"_s), u"1|丙|理"_s);
    EXPECT_EQ(find<QComboBox>(u"ComboClass"_s)->currentText(), u"9"_s);
    EXPECT_GE(find<QComboBox>(u"ComboClass"_s)->findText(u"9"_s), 0);
    EXPECT_FALSE(streams()->isEnabled());
}

TEST_F(StudentAdditionOnScreen, NamesWhoHasTheNumberAndKeepsWhatWasTyped)
{
    type(u"TextNumber"_s, u"3"_s);
    type(u"TextName"_s, u"' or ''='"_s);
    press(u"ButtonSave"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"1 班 3 号已经是甲了，请换一个学号。"_s});
    EXPECT_TRUE(screen->isVisible());
    EXPECT_EQ(text(u"TextName"_s), u"' or ''='"_s);
    type(u"TextNumber"_s, u"4"_s);
    press(u"ButtonSaveNext"_s);
    EXPECT_EQ(selected(), u"4 号 ' or ''='"_s);
}

TEST_F(StudentAdditionOnScreen, AsksBeforeATypedStudentIsLost)
{
    const QString unsaved = u"这名学生还没有保存。"_s;
    type(u"TextName"_s, u"丙"_s);
    test.dialogs.expect(unsaved, u"取消"_s);
    QTest::keyClick(screen.get(), Qt::Key_Escape);
    EXPECT_TRUE(screen->isVisible());
    test.dialogs.expect(unsaved, u"保存"_s);
    press(u"ButtonClose"_s);
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(test.rows(u"select 班级, 学号 from 信息表 where 姓名='丙'"_s), u"1|4"_s);
}

} // namespace
