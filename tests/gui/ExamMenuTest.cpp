#include <QContextMenuEvent>
#include <QDir>
#include <QLabel>
#include <QListWidget>

#include "gui/MainWindowFixture.h"

namespace {

using namespace Qt::StringLiterals;

const QString question = u"要彻底删除这些考试吗？"_s;

/// The menu of the exam list, and what it shares with the menu of the window.
class ExamMenu : public support::MainWindowFixture
{
protected:
    ExamMenu()
    {
        window->start(path);
        for (const QString& exam : {u"期中"_s, u"期末"_s}) {
            test.addExam(exam, u"理"_s, 1, {{u"语文"_s, 100}});
            test.addScores(exam, 1, 1, {{u"语文"_s, 70}});
        }
        test.reload();
        test.scores.notifyChanged();
        list = window->findChild<QListWidget*>(u"ListKSMC"_s);
        menu = window->findChild<QMenu*>(u"ExamMenu"_s);
        note = window->findChild<QLabel*>(u"LabelStale"_s);
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    QStringList listed() const
    {
        QStringList names;
        for (int row = 0; row < list->count(); ++row)
            names.append(list->item(row)->text());
        return names;
    }

    QStringList stored() { return test.rows(u"select 考试名称 from 考试名称表"_s).split(u" / "_s); }

    void openByMouse(int row)
    {
        const QPoint place = list->visualItemRect(list->item(row)).center();
        QTest::mouseClick(list->viewport(), Qt::RightButton, {}, place);
        QContextMenuEvent asked(QContextMenuEvent::Mouse, place,
                                list->viewport()->mapToGlobal(place));
        QApplication::sendEvent(list->viewport(), &asked);
    }

    /// What a display makes of the key for menus.
    void openByKey()
    {
        list->setFocus();
        QContextMenuEvent asked(QContextMenuEvent::Keyboard, list->rect().center(),
                                list->mapToGlobal(list->rect().center()));
        QApplication::sendEvent(window->focusWidget(), &asked);
        ASSERT_TRUE(menu->isVisible());
    }

    QListWidget* list = nullptr;
    QMenu* menu = nullptr;
    QLabel* note = nullptr;
};

TEST_F(ExamMenu, TheRightButtonErasesTheExamBelowIt)
{
    openByMouse(1);
    ASSERT_TRUE(menu->isVisible());
    QAction* entry = item(u"examErase"_s);
    EXPECT_EQ(entry->text(), u"彻底删除所选考试(&R)…"_s);
    test.dialogs.expect(u"期末（理）：1 人有成绩，共 1 个成绩"_s, u"彻底删除"_s);
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(entry).center());
    EXPECT_EQ(listed(), QStringList{u"期中"_s});
    EXPECT_EQ(stored(), QStringList{u"期中"_s});
    EXPECT_EQ(QDir(test.folder.path()).entryList({u"*.bak"_s}, QDir::Files).size(), 1);
}

TEST_F(ExamMenu, OpensByTheKeyForMenusAndErasesAllThatIsSelected)
{
    list->selectAll();
    openByKey();
    test.dialogs.expect(question, u"彻底删除"_s);
    QTest::keyClick(menu, Qt::Key_R);
    EXPECT_FALSE(menu->isVisible());
    EXPECT_EQ(listed(), QStringList());
}

TEST_F(ExamMenu, ErasesNothingOnTheSafeAnswerOrOnEsc)
{
    openByKey();
    QTest::keyClick(menu, Qt::Key_Escape);
    EXPECT_FALSE(menu->isVisible());
    openByKey();
    test.dialogs.expect(question, u"取消"_s);
    QTest::keyClick(menu, Qt::Key_R);
    EXPECT_EQ(test.dialogs.safeOf(question), u"取消"_s);
    EXPECT_EQ(listed(), (QStringList{u"期中"_s, u"期末"_s}));
}

TEST_F(ExamMenu, TheMenuOfTheWindowDoesTheSame)
{
    test.dialogs.expect(u"期中（理）"_s, u"彻底删除"_s);
    item(u"meErase"_s)->trigger();
    EXPECT_EQ(stored(), QStringList{u"期末"_s});
    list->clearSelection();
    item(u"meErase"_s)->trigger();
    EXPECT_EQ(test.dialogs.shown.last(), u"没有选择考试，请先在考试列表里选择要删除的考试。"_s);
}

TEST_F(ExamMenu, AResultThatIsShownIsNotedAsOldUntilTheNextOne)
{
    press(u"CommandLLCJ"_s);
    ASSERT_TRUE(gridView()->isVisible());
    EXPECT_FALSE(note->isVisible());
    test.dialogs.always(question, u"彻底删除"_s);
    item(u"meErase"_s)->trigger();
    EXPECT_TRUE(note->isVisible());
    EXPECT_EQ(note->text(), u"下面还是成绩库改动以前的结果，请重新浏览或统计。"_s);
    press(u"CommandLLCJ"_s);
    EXPECT_FALSE(note->isVisible());
}

TEST_F(ExamMenu, WhateverChangesTheLibraryMakesTheShownResultOld)
{
    press(u"CommandLLCJ"_s);
    test.scores.notifyChanged();
    EXPECT_TRUE(note->isVisible());
    press(u"CommandLLCJ"_s);
    EXPECT_FALSE(note->isVisible());
}

TEST_F(ExamMenu, WithoutAResultNothingIsNoted)
{
    test.dialogs.always(question, u"彻底删除"_s);
    item(u"meErase"_s)->trigger();
    EXPECT_FALSE(note->isVisible());
}

TEST_F(ExamMenu, StaysAwayWhereNoLibraryIsOpen)
{
    test.scores.Conn.Close();
    test.scores.LibPath.clear();
    test.scores.notifyChanged();
    openByMouse(0);
    EXPECT_FALSE(menu->isVisible());
}

} // namespace
