#include "library/ui/StudentTreePanel.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTest>

#include <gtest/gtest.h>

#include "library/ui/StudentTreeView.h"
#include "support/PrintQString.h"
#include "support/ScriptedDialogs.h"

namespace {

using namespace Qt::StringLiterals;

class StudentTreeOnScreen : public testing::Test
{
protected:
    StudentTreeOnScreen()
    {
        panel.setTree({{u"1班"_s, {{11, u"1"_s, u"曾国藩"_s}, {12, u"2"_s, u"单雄信"_s}}},
                       {u"2班"_s, {{21, u"1"_s, u"王芳"_s}, {22, u"2"_s, u"王--'\n"_s}}}});
        QObject::connect(&panel, &library::StudentTreePanel::nodeChosen, &panel,
                         [this] { chosen.append(panel.selected().value_or(-1)); });
        panel.resize(300, 500);
        panel.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&panel));
        chosen.clear();
    }

    QTreeWidgetItem* item(int index, int student = -1) const
    {
        QTreeWidgetItem* one = tree->topLevelItem(index);
        return student < 0 ? one : one->child(student);
    }

    void click(const QTreeWidgetItem* node) const
    {
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {},
                          tree->visualItemRect(node).center());
    }

    void type(const QString& text, Qt::KeyboardModifiers modifiers = {}) const
    {
        line->setFocus();
        line->setText(text);
        QTest::keyClick(line, Qt::Key_Return, modifiers);
    }

    // The real dialogs lie below the scripted ones.
    widgets::ScreenDialogs screenDialogs;
    support::ScriptedDialogs dialogs;
    library::StudentTreePanel panel{screenDialogs, nullptr};
    library::StudentTreeView* tree = panel.view();
    QLineEdit* line = panel.findChild<QLineEdit*>(u"TextFind"_s);
    QLabel* result = panel.findChild<QLabel*>(u"LabelFindResult"_s);
    QList<qint64> chosen;
};

TEST_F(StudentTreeOnScreen, ClassesAreBoldAndOpenAndStudentsCarryTheirId)
{
    ASSERT_EQ(tree->topLevelItemCount(), 2);
    EXPECT_EQ(tree->objectName(), u"TreeView1"_s);
    EXPECT_EQ(item(0)->text(0), u"1班"_s);
    EXPECT_TRUE(item(0)->font(0).bold());
    EXPECT_TRUE(item(0)->isExpanded());
    EXPECT_FALSE(item(0)->data(0, Qt::UserRole).isValid());
    EXPECT_EQ(item(0, 1)->text(0), u"2单雄信"_s);
    EXPECT_FALSE(item(0, 1)->font(0).bold());
    EXPECT_EQ(item(0, 1)->data(0, Qt::UserRole).toLongLong(), 12);
    EXPECT_FALSE(panel.selected().has_value());
}

TEST_F(StudentTreeOnScreen, AClickChoosesOnceAndAgain)
{
    click(item(1, 0));
    EXPECT_EQ(chosen, QList<qint64>{21});
    click(item(1, 0));
    EXPECT_EQ(chosen, (QList<qint64>{21, 21}));
    click(item(1));
    EXPECT_EQ(chosen.last(), 0);
}

TEST_F(StudentTreeOnScreen, ArrowsWalkTheStudentsAndShowEachAtOnce)
{
    click(item(0, 0));
    QTest::keyPress(tree, Qt::Key_Down);
    EXPECT_EQ(chosen.last(), 12);
    QTest::keyPress(tree, Qt::Key_Down);
    EXPECT_EQ(chosen.last(), 0);
    QTest::keyPress(tree, Qt::Key_Down);
    QTest::keyRelease(tree, Qt::Key_Down);
    EXPECT_EQ(chosen, (QList<qint64>{11, 12, 0, 21}));
    QTest::keyClick(tree, Qt::Key_Up);
    QTest::keyClick(tree, Qt::Key_Up);
    EXPECT_EQ(chosen.last(), 12);
}

TEST_F(StudentTreeOnScreen, AKeyThatMovesNothingShowsTheStudentAgain)
{
    click(item(1, 1));
    QTest::keyClick(tree, Qt::Key_Down);
    EXPECT_EQ(chosen, (QList<qint64>{22, 22}));
}

TEST_F(StudentTreeOnScreen, AKeyThatWasPressedElsewhereChoosesNothing)
{
    click(item(1, 1));
    // Enter closed a box above the window and is let go here.
    QTest::keyRelease(tree, Qt::Key_Return);
    EXPECT_EQ(chosen, QList<qint64>{22});
    QTest::keyPress(tree, Qt::Key_Up);
    QTest::keyRelease(tree, Qt::Key_Return);
    EXPECT_EQ(chosen, (QList<qint64>{22, 21}));
}

TEST_F(StudentTreeOnScreen, AClickThatSlipsToAnotherStudentChoosesWhoIsSelected)
{
    QWidget* place = tree->viewport();
    const QPoint from = tree->visualItemRect(item(0, 0)).center();
    const QPoint to = tree->visualItemRect(item(1, 0)).center();
    QTest::mousePress(place, Qt::LeftButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, to, place->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(place, &move);
    QTest::mouseRelease(place, Qt::LeftButton, {}, to);
    ASSERT_EQ(chosen.size(), 1);
    EXPECT_EQ(chosen.last(), panel.selected());
}

TEST_F(StudentTreeOnScreen, TheRightButtonChoosesWhomItSelects)
{
    click(item(0, 0));
    QTest::mouseClick(tree->viewport(), Qt::RightButton, {},
                      tree->visualItemRect(item(1, 0)).center());
    EXPECT_EQ(chosen.last(), panel.selected());
}

TEST_F(StudentTreeOnScreen, FoldingAClassChoosesNobody)
{
    type(u"zgf"_s);
    tree->setFocus();
    const QRect row = tree->visualItemRect(item(1));
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {},
                      QPoint(row.left() - tree->indentation() / 2, row.center().y()));
    EXPECT_FALSE(item(1)->isExpanded());
    EXPECT_EQ(chosen, QList<qint64>{11});
}

TEST_F(StudentTreeOnScreen, EnterGoesFromOneFoundStudentToTheNext)
{
    type(u"wang"_s);
    type(u"w"_s);
    EXPECT_EQ(chosen, (QList<qint64>{21, 22}));
    QTest::keyClick(line, Qt::Key_F3);
    EXPECT_EQ(chosen.last(), 21);
    QTest::keyClick(line, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(chosen.last(), 22);
    QTest::keyClick(tree, Qt::Key_F3);
    EXPECT_EQ(chosen.last(), 21);
    type(u"1"_s, Qt::ShiftModifier);
    EXPECT_EQ(chosen.last(), 11);
    type(u"zgf"_s);
    EXPECT_EQ(panel.selected(), 11);
    EXPECT_EQ(result->text(), u""_s);
}

TEST_F(StudentTreeOnScreen, WhoIsNotThereIsSaidAndNothingChosen)
{
    click(item(0, 1));
    type(u"李"_s);
    EXPECT_EQ(result->text(), u"没有找到"_s);
    EXPECT_EQ(chosen, QList<qint64>{12});
    EXPECT_EQ(panel.selected(), 12);
    QTest::keyClicks(line, u"x"_s);
    EXPECT_EQ(result->text(), u""_s);
    type(u""_s);
    EXPECT_EQ(result->text(), u""_s);
    EXPECT_EQ(chosen, QList<qint64>{12});
}

TEST_F(StudentTreeOnScreen, HostileTextsAreLookedForAsTheyStand)
{
    type(u"王--'"_s);
    EXPECT_EQ(chosen, QList<qint64>{22});
    line->setText(QString(10000, u'王'));
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_EQ(result->text(), u"没有找到"_s);
    EXPECT_TRUE(dialogs.shown.isEmpty());
}

TEST_F(StudentTreeOnScreen, DownLeadsFromTheLineToTheTree)
{
    line->setFocus();
    QTest::keyClick(line, Qt::Key_Down);
    EXPECT_TRUE(tree->hasFocus());
}

TEST_F(StudentTreeOnScreen, AnEmptyTreeHasNobodyToFind)
{
    panel.setTree({});
    type(u"王"_s);
    EXPECT_EQ(result->text(), u"没有找到"_s);
    EXPECT_TRUE(chosen.isEmpty());
}

} // namespace
