#include "platform/grid/ui/CellEditors.h"

#include <QInputMethodEvent>
#include <QListWidget>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include "gui/ShownGrid.h"
#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;
using grid::CellTextEditor;

class CellEditors : public support::ShownGrid
{
protected:
    CellEditors() : ShownGrid(50, 1)
    {
        list->addItems({u"张三"_s, u"李四"_s, u"王五"_s});
        list->hide();
        box->hide();
    }

    QStringList chosen()
    {
        QStringList texts;
        for (int i = 0; i < list->count(); ++i) {
            if (list->item(i)->isSelected() || list->item(i)->checkState() == Qt::Checked)
                texts.append(list->item(i)->text());
        }
        return texts;
    }

    QListWidget* list = new QListWidget(&view);
};

TEST_F(CellEditors, ATextBoxLiesExactlyOverItsCellWithTheCursorAtTheEnd)
{
    ShowTextInMFG(box, &view, 3, 1);
    EXPECT_TRUE(box->isVisible());
    EXPECT_EQ(box->geometry(), cell(3, 1));
    EXPECT_EQ(box->parentWidget(), view.viewport());
    EXPECT_EQ(box->text(), u"行3"_s);
    EXPECT_EQ(box->cursorPosition(), 2);
    EXPECT_FALSE(box->hasSelectedText());
    EXPECT_TRUE(box->hasFocus());
    EXPECT_EQ(std::tie(grid.Row, grid.Col), std::tuple(3, 1));
}

TEST_F(CellEditors, AFixedCellOpensNoEditor)
{
    ShowTextInMFG(box, &view, 0, 1);
    ShowTextInMFG(box, &view, 1, 0);
    EXPECT_FALSE(box->isVisible());
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(CellEditors, ACellOutsideTheGridIsAFailureWithTheTag)
{
    ShowTextInMFG(box, &view, 50, 1);
    EXPECT_FALSE(box->isVisible());
    ShowListInMFG(list, &view, 50, 1, 300, u","_s);
    EXPECT_FALSE(list->isVisible());
    ASSERT_EQ(dialogs.failures.size(), 2);
    EXPECT_TRUE(dialogs.failures[0].endsWith(u" - Sub ShowTextInMFG/MDLMsFlexGrid"_s));
    EXPECT_TRUE(dialogs.failures[1].endsWith(u" - Sub ShowListInMFG/MDLMsFlexGrid"_s));
}

TEST_F(CellEditors, ACellOutOfSightIsScrolledToFirst)
{
    ShowTextInMFG(box, &view, 40, 1);
    EXPECT_TRUE(box->isVisible());
    EXPECT_TRUE(view.viewport()->rect().contains(box->geometry()));
    EXPECT_EQ(box->geometry(), cell(40, 1));
}

TEST_F(CellEditors, ScrollingHidesThem)
{
    ShowTextInMFG(box, &view, 3, 1);
    ShowListInMFG(list, &view, 3, 1, 900, u","_s);
    view.verticalScrollBar()->setValue(30);
    EXPECT_FALSE(box->isVisible());
    EXPECT_FALSE(list->isVisible());
    EXPECT_TRUE(view.hasFocus());
}

TEST_F(CellEditors, AListStandsBelowItsCellOrAboveItWhereThatIsTooLow)
{
    ShowListInMFG(list, &view, 2, 1, 1200, u","_s);
    EXPECT_TRUE(list->isVisible());
    EXPECT_EQ(list->geometry().topLeft(), QPoint(cell(2, 1).left(), cell(2, 1).bottom() + 1));
    EXPECT_EQ(list->height(), view.pixels(1200));
    const int low = view.indexAt(QPoint(5, view.viewport()->height() - 40)).row();
    ShowListInMFG(list, &view, low, 1, 1200, u","_s);
    EXPECT_EQ(list->geometry().bottom() + 1, cell(low, 1).top());
}

TEST_F(CellEditors, AListKeepsItsHeightWhenNoneIsGiven)
{
    list->resize(100, 77);
    ShowListInMFG(list, &view, 2, 1, 0, u","_s);
    EXPECT_EQ(list->height(), 77);
    ShowListInMFG(list, &view, 2, 1, 30, u","_s);
    EXPECT_GE(list->height(), list->sizeHintForRow(0));
}

TEST_F(CellEditors, TheEntriesOfTheCellsTextAreMarkedAndNoOthers)
{
    list->setSelectionMode(QAbstractItemView::MultiSelection);
    grid.setTextMatrix(2, 2, u"王五,张三,赵六"_s);
    ShowListInMFG(list, &view, 2, 2, 900, u","_s);
    EXPECT_EQ(chosen(), (QStringList{u"张三"_s, u"王五"_s}));
    grid.setTextMatrix(3, 2, u"李四"_s);
    ShowListInMFG(list, &view, 3, 2, 900, u","_s);
    EXPECT_EQ(chosen(), (QStringList{u"李四"_s}));
}

TEST_F(CellEditors, ACheckListIsCheckedInsteadOfSelected)
{
    for (int i = 0; i < list->count(); ++i)
        list->item(i)->setCheckState(Qt::Unchecked);
    grid.setTextMatrix(2, 2, u"王五+李四"_s);
    ShowListInMFG(list, &view, 2, 2, 900, u"+"_s);
    EXPECT_EQ(chosen(), (QStringList{u"李四"_s, u"王五"_s}));
    EXPECT_TRUE(list->selectedItems().isEmpty());
}

TEST_F(CellEditors, HidingAnEditorGivesTheFocusBackToTheGrid)
{
    ShowTextInMFG(box, &view, 3, 1);
    grid::HideTS(box);
    EXPECT_FALSE(box->isVisible());
    EXPECT_TRUE(view.hasFocus());
    EXPECT_EQ(grid.Row, 3);
}

TEST_F(CellEditors, TheTextBoxTellsOfTheKeysThatLeadOut)
{
    const QSignalSpy entered(box, &CellTextEditor::entered);
    const QSignalSpy cancelled(box, &CellTextEditor::cancelled);
    const QSignalSpy moved(box, &CellTextEditor::moved);
    ShowTextInMFG(box, &view, 3, 1);
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape, Qt::Key_Up, Qt::Key_Down,
                           Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Left})
        QTest::keyClick(box, key);
    EXPECT_EQ(entered.count(), 2);
    EXPECT_EQ(cancelled.count(), 1);
    EXPECT_EQ(QList<QVariantList>(moved), (QList<QVariantList>{{-1, 0}, {1, 0}, {0, 1}, {0, -1}}));
    EXPECT_TRUE(box->hasFocus());
}

TEST_F(CellEditors, AnInputMethodCanWriteIntoTheTextBox)
{
    ShowTextInMFG(box, &view, 3, 2);
    EXPECT_TRUE(box->testAttribute(Qt::WA_InputMethodEnabled));
    QInputMethodEvent composing(u"zhang"_s, {});
    QCoreApplication::sendEvent(box, &composing);
    EXPECT_EQ(box->text(), QString());
    QInputMethodEvent written;
    written.setCommitString(u"张"_s);
    QCoreApplication::sendEvent(box, &written);
    EXPECT_EQ(box->text(), u"张"_s);
}

} // namespace
