#include "maintenance/ui/FormSheZhiWenLi.h"

#include <QCheckBox>
#include <QDir>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

class StreamScreen : public testing::Test
{
protected:
    StreamScreen()
    {
        for (const int classNumber : {1, 2, 10}) {
            test.addStudent(classNumber, 1, u"王芳"_s, u"理"_s);
            test.addScores(u"期中"_s, classNumber, 1, {{u"语文"_s, 90}});
        }
        test.reload();
        form = std::make_unique<maintenance::FormSheZhiWenLi>(test.scores, screenDialogs, nullptr);
        form->show();
        form->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form.get()));
        list = form->findChild<QListWidget*>(u"List1"_s);
    }

    void click(int row, Qt::KeyboardModifiers keys = {})
    {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, keys,
                          list->visualItemRect(list->item(row)).center());
    }

    void press(const QString& name)
    {
        QTest::mouseClick(form->findChild<QPushButton*>(name), Qt::LeftButton);
    }

    QString stored() { return test.rows(u"select 班级,科类 from 成绩表 order by 班级"_s); }

    widgets::ScreenDialogs screenDialogs;
    TestLibrary test{{u"语文"_s}};
    std::unique_ptr<maintenance::FormSheZhiWenLi> form;
    QListWidget* list = nullptr;
};

TEST_F(StreamScreen, ListsTheClassesInTheOrderOfTheirNumbersAndNoneIsChosen)
{
    EXPECT_EQ(form->windowTitle(), u"设置科类(文理科)"_s);
    ASSERT_EQ(list->count(), 3);
    EXPECT_EQ(list->item(2)->text(), u"10"_s);
    EXPECT_TRUE(list->selectedItems().isEmpty());
}

TEST_F(StreamScreen, TheChosenClassesBecomeScienceAndTheScreenStays)
{
    form->findChild<QCheckBox*>(u"CheckBackup"_s)->setChecked(false);
    click(0);
    click(2, Qt::ControlModifier);
    test.dialogs.expect(u"选中的 2 个班（2 条成绩）"_s, u"设置"_s);
    press(u"Command1"_s);
    EXPECT_EQ(stored(), u"1|理 / 2|文 / 10|理"_s);
    EXPECT_EQ(test.dialogs.shown.last(), u"设置完毕！"_s);
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(QDir(test.folder.path()).entryList({u"*.bak"_s}).isEmpty());
}

TEST_F(StreamScreen, CancelAtTheQuestionChangesNothing)
{
    test.dialogs.expect(u"选中的 0 个班"_s, u"取消"_s);
    press(u"Command1"_s);
    EXPECT_EQ(stored(), u"1|理 / 2|理 / 10|理"_s);
    EXPECT_EQ(test.dialogs.shown.size(), 1);
}

TEST_F(StreamScreen, TheLibraryIsCopiedFirst)
{
    test.dialogs.expect(u"选中的"_s, u"设置"_s);
    press(u"Command1"_s);
    EXPECT_EQ(QDir(test.folder.path()).entryList({u"*.bak"_s}).size(), 1);
}

TEST_F(StreamScreen, ClassesAreChosenByKeysToo)
{
    test.dialogs.expect(u"选中的 2 个班"_s, u"设置"_s);
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Home);
    QTest::keyClick(list, Qt::Key_Down, Qt::ShiftModifier);
    press(u"Command1"_s);
    EXPECT_EQ(stored(), u"1|理 / 2|理 / 10|文"_s);
}

TEST_F(StreamScreen, TheExitButtonLeavesIt)
{
    press(u"Command2"_s);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(stored(), u"1|理 / 2|理 / 10|理"_s);
}

} // namespace
