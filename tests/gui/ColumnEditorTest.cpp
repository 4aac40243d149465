#include "platform/grid/ui/ColumnEditor.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include "gui/ShownGrid.h"
#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;

class ColumnEditor : public support::ShownGrid
{
protected:
    ColumnEditor() : ShownGrid(6, 2) {}

    void makeEditor(grid::ColumnEditor::OpenedBy openedBy)
    {
        editor = new grid::ColumnEditor(&view, box, 2, openedBy);
    }

    void drag(int fromRow, int toRow)
    {
        QTest::mousePress(view.viewport(), Qt::LeftButton, {}, cell(fromRow, 1).center());
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, cell(toRow, 1).center());
    }

    grid::ColumnEditor* editor = nullptr;
};

using OpenedBy = grid::ColumnEditor::OpenedBy;

TEST_F(ColumnEditor, AClickAnywhereOnARowOpensTheBoxInTheColumn)
{
    makeEditor(OpenedBy::Click);
    EXPECT_FALSE(box->isVisible());
    drag(3, 3);
    EXPECT_EQ(box->geometry(), cell(3, 2));
    EXPECT_EQ(box->text(), u"行3"_s);
    drag(4, 5);
    EXPECT_EQ(box->text(), u"行3"_s) << "not a click";
    drag(0, 0);
    EXPECT_FALSE(box->isVisible()) << "the heading has no editor";
    EXPECT_EQ(editor->CurRow(), 0);
}

TEST_F(ColumnEditor, AReleaseOpensItWhereverTheButtonWasPressed)
{
    makeEditor(OpenedBy::Release);
    drag(3, 4);
    EXPECT_EQ(box->geometry(), cell(4, 2));
}

TEST_F(ColumnEditor, KeysOfTheGridOpenIt)
{
    makeEditor(OpenedBy::Click);
    view.select(2, 1, 2, 1);
    QTest::keyClick(&view, Qt::Key_F2);
    EXPECT_EQ(box->geometry(), cell(2, 2));
    EXPECT_EQ(box->text(), u"行2"_s);
}

TEST_F(ColumnEditor, UpAndDownStayInTheColumnAndTabClosesIt)
{
    makeEditor(OpenedBy::Click);
    editor->open(4);
    QTest::keyClick(box, Qt::Key_Down);
    QTest::keyClick(box, Qt::Key_Down);
    EXPECT_EQ(box->text(), u"行5"_s) << "the last row is the end";
    QTest::keyClick(box, Qt::Key_Up);
    EXPECT_EQ(box->text(), u"行4"_s);
    QTest::keyClick(box, Qt::Key_Tab);
    EXPECT_FALSE(box->isVisible());
    EXPECT_TRUE(view.hasFocus());
}

TEST_F(ColumnEditor, EscGivesBackWhatTheCellHeld)
{
    makeEditor(OpenedBy::Click);
    editor->open(4);
    QTest::keyClicks(box, u"7"_s);
    QTest::keyClick(box, Qt::Key_Escape);
    EXPECT_EQ(box->text(), u"行4"_s);
    EXPECT_FALSE(box->isVisible());
}

TEST_F(ColumnEditor, ARowThatMayNotBeLeftKeepsTheBox)
{
    makeEditor(OpenedBy::Click);
    editor->askBeforeLeaving([this] { return box->text() == u"好"_s; });
    editor->open(4);
    for (const auto key : {Qt::Key_Down, Qt::Key_Tab})
        QTest::keyClick(box, key);
    EXPECT_EQ(box->geometry(), cell(4, 2));
    box->setText(u"好"_s);
    QTest::keyClick(box, Qt::Key_Down);
    EXPECT_EQ(box->geometry(), cell(5, 2));
}

} // namespace
