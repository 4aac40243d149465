#include "maintenance/ui/StudentMovesScreen.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include <gtest/gtest.h>

#include "gui/ModalBoxes.h"
#include "platform/grid/GridText.h"
#include "platform/grid/ui/FlexGridView.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;

const QString studentRows = u"select 班级, 学号, 姓名 from 信息表 order by ID"_s;
const QString scoreRows = u"select 班级, 学号, 姓名 from 成绩表 order by rowid"_s;
const QString question = u"要执行这些调整吗？"_s;

class MovesScreen : public testing::Test
{
protected:
    MovesScreen()
    {
        test.addStudent(1, 1, u"王芳"_s, u"理"_s);
        test.addStudent(1, 2, u"陈静"_s, u"理"_s);
        test.addStudent(2, 1, u"李强"_s, u"理"_s);
        test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 100}});
        test.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 70}});
        test.reload();
        form =
            std::make_unique<maintenance::StudentMovesScreen>(test.scores, screenDialogs, nullptr);
        form->show();
        form->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form.get()));
        before = test.rows(studentRows);
    }

    template <class Widget> Widget* find(const QString& name)
    {
        auto* widget = form->findChild<Widget*>(name);
        EXPECT_NE(widget, nullptr) << name.toStdString();
        return widget;
    }

    void press(const QString& name) { QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton); }

    /// With the focus on the button, as Tab brings it there.
    void pressByKey(const QString& name)
    {
        find<QPushButton>(name)->setFocus(Qt::TabFocusReason);
        QTest::keyClick(form->focusWidget(), Qt::Key_Space);
    }

    /// Finds a student by what is typed, as a user does.
    static void findIn(QWidget& window, const QString& typed)
    {
        auto* TextFind = window.findChild<QLineEdit*>(u"TextFind"_s);
        TextFind->setFocus();
        TextFind->clear();
        QTest::keyClicks(TextFind, typed);
        QTest::keyClick(TextFind, Qt::Key_Return);
    }

    void choose(const QString& typed) { findIn(*form, typed); }

    /// Types a class into the box that comes next, and goes on by Enter.
    void typeClass(const QString& classNumber, const std::function<void(QDialog&)>& more = {})
    {
        boxes.expect([classNumber, more](QDialog& box) {
            ASSERT_EQ(box.objectName(), u"MoveBox"_s);
            auto* ComboClass = box.findChild<QComboBox*>(u"ComboClass"_s);
            QTest::keyClicks(ComboClass->lineEdit(), classNumber);
            if (more)
                more(box);
            QTest::keyClick(ComboClass->lineEdit(), Qt::Key_Return);
        });
    }

    QString plan()
    {
        QString text = grid::gridText(find<grid::FlexGridView>(u"PlanGrid"_s)->grid());
        return text.replace(u'\t', u'|').section(u'\n', 1, -2);
    }

    widgets::ScreenDialogs screenDialogs;
    support::TestLibrary test{{u"语文"_s}};
    support::ModalBoxes boxes;
    std::unique_ptr<maintenance::StudentMovesScreen> form;
    QString before;
};

TEST_F(MovesScreen, MovesAStudentByTheKeyboardAlone)
{
    choose(u"cj"_s);
    typeClass(u"2"_s);
    pressByKey(u"buttonMove"_s);
    EXPECT_EQ(plan(), u"陈静|1 班 2 号|2 班 2 号|理|没有|"_s);
    EXPECT_EQ(test.rows(studentRows), before) << "nothing is written yet";
    test.dialogs.expect(question, u"执行"_s);
    pressByKey(u"buttonRun"_s);
    EXPECT_EQ(test.rows(studentRows), u"1|1|王芳 / 2|2|陈静 / 2|1|李强"_s);
    EXPECT_EQ(plan(), u""_s);
    auto* tree = find<QTreeWidget>(u"TreeView1"_s);
    EXPECT_EQ(tree->topLevelItem(1)->childCount(), 2) << "the tree follows";
    EXPECT_EQ(tree->currentItem()->text(0), u"2陈静"_s);
    EXPECT_EQ(QDir(test.folder.path()).entryList({u"*.bak"_s}).size(), 1);
}

TEST_F(MovesScreen, OffersANumberThatCanBeChangedAndTakesScoresAlong)
{
    choose(u"wf"_s);
    typeClass(u"2"_s, [](QDialog& box) {
        EXPECT_EQ(box.findChild<QLabel*>(u"LabelWho"_s)->text(), u"王芳（1 班 1 号）移到："_s);
        auto* TextNumber = box.findChild<QLineEdit*>(u"TextNumber"_s);
        EXPECT_EQ(TextNumber->text(), u"2"_s);
        TextNumber->selectAll();
        QTest::keyClicks(TextNumber, u"30"_s);
        auto* CheckScores = box.findChild<QCheckBox*>(u"CheckScores"_s);
        EXPECT_EQ(CheckScores->text(), u"以前的 1 条成绩也改到新的班级和学号(&S)"_s);
        EXPECT_FALSE(CheckScores->isChecked());
        QTest::keyClick(CheckScores, Qt::Key_Space);
    });
    press(u"buttonMove"_s);
    EXPECT_EQ(plan(), u"王芳|1 班 1 号|2 班 30 号|理|1 条，一起改|"_s);
    test.dialogs.expect(question, u"执行"_s);
    test.dialogs.expect(u"名次和总分还是调整以前算的：期中。"_s, u"以后再算"_s);
    press(u"buttonRun"_s);
    EXPECT_EQ(test.rows(scoreRows), u"2|30|王芳"_s);
}

TEST_F(MovesScreen, SwapsWithAStudentWhoIsFoundInTheBox)
{
    choose(u"wf"_s);
    boxes.expect([](QDialog& box) {
        ASSERT_EQ(box.objectName(), u"SwapBox"_s);
        EXPECT_EQ(box.findChild<QLabel*>(u"LabelWho"_s)->text(),
                  u"王芳（1 班 1 号）和谁交换班级和学号？"_s);
        auto* ok = box.findChild<QPushButton*>(u"boxOk"_s);
        EXPECT_FALSE(ok->isEnabled());
        findIn(box, u"lq"_s);
        EXPECT_TRUE(ok->isEnabled());
        QTest::mouseClick(ok, Qt::LeftButton);
    });
    press(u"buttonSwap"_s);
    EXPECT_EQ(plan(), u"王芳|1 班 1 号|2 班 1 号|理|1 条，不改动|\n"
                      "李强|2 班 1 号|1 班 1 号|理|没有|"_s);
    test.dialogs.expect(question, u"执行"_s);
    press(u"buttonRun"_s);
    EXPECT_EQ(test.rows(studentRows), u"2|1|王芳 / 1|2|陈静 / 1|1|李强"_s);
}

TEST_F(MovesScreen, AsksWhetherScoresGoWithAStudentWhoIsRemoved)
{
    const QString asked = u"王芳（1 班 1 号）有 1 条以前的成绩，要连同成绩删除吗？\n\n"
                          "先记在右边的表里，按“执行”时才删除。"_s;
    choose(u"wf"_s);
    test.dialogs.expect(asked, u"取消"_s);
    press(u"buttonRemove"_s);
    EXPECT_EQ(test.dialogs.safeOf(asked), u"取消"_s);
    EXPECT_EQ(plan(), u""_s);
    test.dialogs.expect(asked, u"只删学生"_s);
    press(u"buttonRemove"_s);
    EXPECT_TRUE(plan().startsWith(u"王芳|1 班 1 号|删除|理|1 条，不改动|"_s));
    press(u"buttonTakeBack"_s);
    EXPECT_EQ(plan(), u""_s);
    test.dialogs.expect(asked, u"连同成绩"_s);
    press(u"buttonRemove"_s);
    test.dialogs.expect(question, u"执行"_s);
    test.dialogs.expect(u"调整完毕。"_s, u"以后再算"_s);
    press(u"buttonRun"_s);
    EXPECT_EQ(test.rows(studentRows), u"1|2|陈静 / 2|1|李强"_s);
    EXPECT_EQ(test.rows(scoreRows), u""_s);
}

TEST_F(MovesScreen, TakesBackTheChangeOfTheSelectedRow)
{
    choose(u"cj"_s);
    press(u"buttonRemove"_s);
    choose(u"lq"_s);
    press(u"buttonRemove"_s);
    auto* view = find<grid::FlexGridView>(u"PlanGrid"_s);
    view->select(1, 0, 1, 0);
    pressByKey(u"buttonTakeBack"_s);
    EXPECT_TRUE(plan().startsWith(u"李强|"_s));
    press(u"buttonTakeBack"_s);
    EXPECT_EQ(plan(), u""_s);
    EXPECT_FALSE(find<QPushButton>(u"buttonTakeBack"_s)->isEnabled());
    EXPECT_FALSE(find<QPushButton>(u"buttonRun"_s)->isEnabled());
}

TEST_F(MovesScreen, ShowsWhyAChangeCannotBeAndRefusesIt)
{
    choose(u"wf"_s);
    typeClass(u"2"_s,
              [](QDialog& box) { box.findChild<QLineEdit*>(u"TextNumber"_s)->setText(u"1"_s); });
    press(u"buttonMove"_s);
    EXPECT_TRUE(plan().endsWith(u"|2 班 1 号 已经是“李强”。"_s));
    press(u"buttonRun"_s);
    EXPECT_TRUE(test.dialogs.shown.last().startsWith(u"这些调整还不能执行："_s));
    EXPECT_EQ(test.rows(studentRows), before);
    test.dialogs.expect(u"还有 1 项调整没有执行"_s, u"不保存"_s);
    EXPECT_TRUE(form->close());
}

TEST_F(MovesScreen, TellsWhatIsNoPlaceAndWhoIsNotChosen)
{
    press(u"buttonMove"_s);
    EXPECT_EQ(test.dialogs.shown.last(), u"请先在左边选择一名学生。"_s);
    choose(u"wf"_s);
    boxes.expect([](QDialog& box) {
        auto* ComboClass = box.findChild<QComboBox*>(u"ComboClass"_s);
        QTest::keyClicks(ComboClass->lineEdit(), u"x"_s);
        QTest::keyClick(ComboClass->lineEdit(), Qt::Key_Return);
        EXPECT_TRUE(box.isVisible());
        EXPECT_EQ(ComboClass->currentText(), u"x"_s) << "nothing typed is lost";
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    press(u"buttonMove"_s);
    EXPECT_EQ(test.dialogs.shown.last(), u"班级和学号要是从 1 起的整数。"_s);
    test.execute(u"delete from 信息表 where 姓名='王芳'"_s);
    press(u"buttonRemove"_s);
    EXPECT_EQ(test.dialogs.shown.last(), u"成绩库里已经没有这名学生了。"_s);
    EXPECT_EQ(plan(), u""_s);
}

TEST_F(MovesScreen, UnderstandsFullWidthDigits)
{
    choose(u"cj"_s);
    typeClass({}, [](QDialog& box) {
        box.findChild<QComboBox*>(u"ComboClass"_s)->setEditText(u"２"_s);
        EXPECT_EQ(box.findChild<QLineEdit*>(u"TextNumber"_s)->text(), u"2"_s);
        box.findChild<QLineEdit*>(u"TextNumber"_s)->setText(u" １２ "_s);
    });
    press(u"buttonMove"_s);
    EXPECT_EQ(plan(), u"陈静|1 班 2 号|2 班 12 号|理|没有|"_s);
}

TEST_F(MovesScreen, DoesNotOfferAStudentToHimself)
{
    choose(u"wf"_s);
    boxes.expect([](QDialog& box) {
        findIn(box, u"wf"_s);
        EXPECT_FALSE(box.findChild<QPushButton*>(u"boxOk"_s)->isEnabled());
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    press(u"buttonSwap"_s);
    EXPECT_EQ(boxes.count, 1);
}

TEST_F(MovesScreen, ClosesByEscWithTheQuestionAndRunsByEnter)
{
    auto* view = find<grid::FlexGridView>(u"PlanGrid"_s);
    EXPECT_FALSE(view->selectionModel()->hasSelection()) << "the heading is no change";
    choose(u"cj"_s);
    press(u"buttonRemove"_s);
    EXPECT_TRUE(view->selectionModel()->hasSelection());
    test.dialogs.expect(u"还有 1 项调整没有执行"_s, u"取消"_s);
    QTest::keyClick(form.get(), Qt::Key_Escape);
    EXPECT_TRUE(form->isVisible());
    test.dialogs.expect(question, u"执行"_s);
    view->setFocus();
    QTest::keyClick(form->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(test.rows(studentRows), u"1|1|王芳 / 2|1|李强"_s);
    EXPECT_FALSE(view->selectionModel()->hasSelection());
    QTest::keyClick(form.get(), Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
}

TEST_F(MovesScreen, ABoxThatIsLeftByEscGathersNothing)
{
    choose(u"wf"_s);
    for (const QString& name : {u"buttonMove"_s, u"buttonSwap"_s}) {
        boxes.expect([](QDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); });
        press(name);
    }
    EXPECT_EQ(boxes.count, 2);
    EXPECT_EQ(plan(), u""_s);
}

TEST_F(MovesScreen, AsksBeforeItClosesWithChangesThatWereNotCarriedOut)
{
    choose(u"cj"_s);
    press(u"buttonRemove"_s);
    const QString unsaved = u"还有 1 项调整没有执行，要执行并保存吗？"_s;
    test.dialogs.expect(unsaved, u"取消"_s);
    press(u"buttonClose"_s);
    EXPECT_TRUE(form->isVisible());
    test.dialogs.expect(unsaved, u"保存"_s);
    test.dialogs.expect(question, u"取消"_s);
    press(u"buttonClose"_s);
    EXPECT_TRUE(form->isVisible()) << "what was declined is still there";
    test.dialogs.expect(unsaved, u"保存"_s);
    test.dialogs.expect(question, u"执行"_s);
    press(u"buttonClose"_s);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(test.rows(studentRows), u"1|1|王芳 / 2|1|李强"_s);
}

TEST_F(MovesScreen, MakesNoCopyIfItsBoxIsOff)
{
    QTest::keyClick(find<QCheckBox>(u"CheckBackup"_s), Qt::Key_Space);
    choose(u"cj"_s);
    press(u"buttonRemove"_s);
    test.dialogs.expect(u"这次不留备份，执行后不可恢复。"_s, u"执行"_s);
    press(u"buttonRun"_s);
    EXPECT_EQ(QDir(test.folder.path()).entryList({u"*.bak"_s}).size(), 0);
}

} // namespace
