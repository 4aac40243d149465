#include "platform/grid/ui/ColumnEditor.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include "platform/grid/ui/CellTextEditor.h"
#include "platform/grid/ui/FlexGridView.h"
#include "support/PrintQString.h"
#include "support/ScriptedDialogs.h"

namespace {

using namespace Qt::StringLiterals;
using grid::CellTextEditor;
using grid::FlexGridView;

class ColumnEditor : public testing::Test
{
protected:
    ColumnEditor()
    {
        grid.setRows(6);
        grid.setCols(4);
        for (int row = 0; row < grid.Rows(); ++row)
            grid.setTextMatrix(row, 2, u"行%1"_s.arg(row));
        view.refresh();
        view.resize(500, 300);
        view.show();
        view.activateWindow();
        (void)QTest::qWaitForWindowActive(&view);
    }

    void makeEditor(grid::ColumnEditor::OpenedBy openedBy)
    {
        editor = new grid::ColumnEditor(&view, box, 2, openedBy);
    }

    QRect cell(int row, int col) { return view.visualRect(view.model()->index(row, col)); }

    void drag(int fromRow, int toRow)
    {
        QTest::mousePress(view.viewport(), Qt::LeftButton, {}, cell(fromRow, 1).center());
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, cell(toRow, 1).center());
    }

    support::ScriptedDialogs dialogs;
    grid::FlexGrid grid;
    FlexGridView view{grid};
    CellTextEditor* box = new CellTextEditor(&view);
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
