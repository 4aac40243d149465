#include "platform/grid/ui/GridEditor.h"

#include <QApplication>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include "gui/ShownGrid.h"
#include "platform/grid/ui/CellListEditor.h"
#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;
using grid::AfterEnter;
using grid::CellEditing;
using grid::CellListEditor;
using Choice = CellListEditor::Choice;

/// Column 0 is edited by nothing, column 1 by the text box, column 2 by the list, column 3 by both.
class GridEditor : public support::ShownGrid
{
protected:
    GridEditor() : ShownGrid(12, 1)
    {
        grid.FixedCols = 0;
        view.refresh();
    }

    void edit(Choice choice, AfterEnter afterEnter = AfterEnter::Down)
    {
        list = new CellListEditor(choice, &view);
        editor = new grid::GridEditor(
            &view, box, list,
            {.editing =
                 [](int, int col) {
                     constexpr CellEditing kinds[] = {CellEditing::None, CellEditing::Text,
                                                      CellEditing::List, CellEditing::TextAndList};
                     return kinds[col];
                 },
             .entries =
                 [this](int, int) { return keepsEntries ? std::nullopt : std::optional(entries); },
             .listHeight = 1500,
             .afterEnter = afterEnter});
        edited = std::make_unique<QSignalSpy>(editor, &grid::GridEditor::edited);
        activated = std::make_unique<QSignalSpy>(editor, &grid::GridEditor::activated);
        takenBack = std::make_unique<QSignalSpy>(editor, &grid::GridEditor::takenBack);
    }

    void clickCell(int row, int col)
    {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, cell(row, col).center());
    }

    void clickEntry(int row, Qt::KeyboardModifiers keys = {})
    {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, keys,
                          list->visualItemRect(list->item(row)).center());
    }

    void goTo(int row, int col)
    {
        view.select(row, col, row, col);
        view.setFocus();
    }

    /// What an input method sends to the program.
    void compose(const QString& preedit, const QString& commit = {})
    {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(commit);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
    }

    bool isInputMethodOn() const { return view.testAttribute(Qt::WA_InputMethodEnabled); }

    QString text(int row, int col) { return grid.TextMatrix(row, col); }

    QStringList entries{u"张三"_s, u""_s, u"李四"_s, u"王五"_s};
    bool keepsEntries = false;
    CellListEditor* list = nullptr;
    grid::GridEditor* editor = nullptr;
    std::unique_ptr<QSignalSpy> edited;
    std::unique_ptr<QSignalSpy> activated;
    std::unique_ptr<QSignalSpy> takenBack;
};

TEST_F(GridEditor, AClickOpensWhatTheCellIsEditedBy)
{
    edit(Choice::Several);
    clickCell(2, 1);
    EXPECT_TRUE(box->isVisible() && box->hasFocus());
    EXPECT_FALSE(list->isVisible());
    clickCell(3, 2);
    EXPECT_FALSE(box->isVisible());
    EXPECT_TRUE(list->isVisible() && list->hasFocus());
    clickCell(4, 3);
    EXPECT_TRUE(box->isVisible() && box->hasFocus());
    EXPECT_TRUE(list->isVisible());
    EXPECT_EQ(std::tuple(editor->CurRow(), editor->CurCol()), std::tuple(4, 3));
    clickCell(5, 0);
    EXPECT_FALSE(editor->isOpen());
    EXPECT_EQ(activated->size(), 1);
    EXPECT_EQ(edited->size(), 0);
}

TEST_F(GridEditor, AClickOnAFixedCellClosesTheEditors)
{
    edit(Choice::One);
    clickCell(2, 1);
    clickCell(0, 1);
    EXPECT_FALSE(editor->isOpen());
    EXPECT_EQ(activated->takeFirst(), (QList<QVariant>{0, 1}));
}

TEST_F(GridEditor, WhatIsTypedStandsInTheCellAtOnce)
{
    edit(Choice::One);
    goTo(2, 1);
    QTest::keyClicks(&view, u"8"_s);
    QTest::keyClicks(box, u"5"_s);
    EXPECT_EQ(text(2, 1), u"85"_s);
    EXPECT_EQ(edited->size(), 2);
}

TEST_F(GridEditor, WhatAnInputMethodCommitsTakesThePlaceOfTheText)
{
    edit(Choice::Several);
    for (const int col : {1, 3}) {
        goTo(2, col);
        compose({}, u"张"_s);
        EXPECT_EQ(text(2, col), u"张"_s);
        EXPECT_TRUE(box->isVisible() && box->hasFocus());
        compose({}, u"三"_s);
        EXPECT_EQ(text(2, col), u"张三"_s);
    }
    EXPECT_EQ(edited->size(), 4);
}

TEST_F(GridEditor, WhileAWordIsComposedTheBoxShowsItAndTheKeyboardStays)
{
    edit(Choice::Several);
    for (const int col : {1, 3}) {
        goTo(2, col);
        const QString before = text(2, col);
        for (const QString& letters : {u"z"_s, u"zh"_s, u"zhang"_s}) {
            compose(letters);
            EXPECT_EQ(box->geometry(), cell(2, col));
            EXPECT_TRUE(box->isVisible() && view.hasFocus());
            EXPECT_EQ(box->displayText(), u""_s) << "the letters stand for the text";
            EXPECT_EQ(text(2, col), before);
        }
        compose({}, u"张"_s);
        EXPECT_EQ(text(2, col), u"张"_s);
        EXPECT_TRUE(box->hasFocus());
    }
    EXPECT_EQ(edited->size(), 2);
}

TEST_F(GridEditor, WordsOfOneCompositionFollowEachOther)
{
    edit(Choice::One);
    goTo(2, 1);
    compose(u"zhangsan"_s);
    compose(u"san"_s, u"张"_s);
    EXPECT_EQ(text(2, 1), u"张"_s);
    EXPECT_TRUE(view.hasFocus()) << "the second is still composed";
    compose({}, u"三"_s);
    EXPECT_EQ(text(2, 1), u"张三"_s);
    EXPECT_TRUE(box->hasFocus());
}

TEST_F(GridEditor, AWordThatIsGivenUpLeavesTheCellAsItWas)
{
    edit(Choice::One);
    goTo(2, 1);
    compose(u"z"_s);
    compose({});
    EXPECT_EQ(text(2, 1), u"行2"_s);
    EXPECT_FALSE(editor->isOpen());
    EXPECT_TRUE(view.hasFocus());
    compose(u"z"_s);
    QTest::keyClick(&view, Qt::Key_Escape);
    EXPECT_EQ(text(2, 1), u"行2"_s);
    EXPECT_FALSE(editor->isOpen());
    EXPECT_EQ(edited->size(), 0);
}

TEST_F(GridEditor, AWordGoesOnWhenTheGridScrollsMeanwhile)
{
    edit(Choice::One);
    grid.setRows(60);
    view.refresh();
    goTo(2, 1);
    compose(u"z"_s);
    view.verticalScrollBar()->setValue(20);
    EXPECT_FALSE(editor->isOpen());
    compose(u"zhang"_s);
    EXPECT_TRUE(editor->isOpen());
    compose({}, u"张"_s);
    EXPECT_EQ(text(2, 1), u"张"_s);
}

TEST_F(GridEditor, AnInputMethodIsAtWorkOnCellsOfTextAndOnNoOthers)
{
    edit(Choice::One);
    for (const auto& [col, isOn] : {std::pair{0, false}, {1, true}, {2, false}, {3, true}}) {
        goTo(2, col);
        EXPECT_EQ(isInputMethodOn(), isOn) << col;
        view.clearFocus();
        view.setFocus();
        EXPECT_EQ(isInputMethodOn(), isOn) << col;
        view.refresh();
        EXPECT_EQ(isInputMethodOn(), isOn) << col;
    }
    goTo(2, 0);
    QTest::keyClick(&view, Qt::Key_Right);
    EXPECT_TRUE(isInputMethodOn());
    grid.FixedRows = 12;
    view.refresh();
    EXPECT_FALSE(isInputMethodOn()) << "headings are not typed into";
}

TEST_F(GridEditor, WhatIsCommittedOnAListOrOnNothingDoesNothing)
{
    edit(Choice::One);
    for (const int col : {0, 2}) {
        goTo(2, col);
        compose(u"z"_s);
        compose({}, u"张"_s);
        EXPECT_FALSE(editor->isOpen());
        EXPECT_EQ(text(2, col), u""_s);
    }
}

TEST_F(GridEditor, EnterAndF2EditWhatTheCellHolds)
{
    edit(Choice::One);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_F2}) {
        goTo(2, 1);
        QTest::keyClick(&view, key);
        EXPECT_EQ(box->text(), u"行2"_s);
        EXPECT_EQ(edited->size(), 0);
        QTest::keyClick(box, Qt::Key_Escape);
    }
}

TEST_F(GridEditor, EnterGoesDownTabRightAndTheArrowsThroughTheRows)
{
    edit(Choice::One);
    clickCell(2, 1);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(box->geometry(), cell(3, 1));
    QTest::keyClick(box, Qt::Key_Up);
    EXPECT_EQ(box->geometry(), cell(2, 1));
    QTest::keyClick(box, Qt::Key_Tab);
    EXPECT_FALSE(editor->isOpen()) << "a list opens when it is asked for";
    EXPECT_EQ(std::tie(grid.Row, grid.Col), std::tuple(2, 2));
    EXPECT_TRUE(view.hasFocus());
}

TEST_F(GridEditor, BeyondTheLastCellAndInFixedRowsEditingEnds)
{
    edit(Choice::One);
    clickCell(1, 1);
    QTest::keyClick(box, Qt::Key_Up);
    EXPECT_FALSE(editor->isOpen());
    editor->open(11, 1);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_FALSE(editor->isOpen());
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(GridEditor, EnterEndsEditingWhereTheScreenSaysSo)
{
    edit(Choice::One, AfterEnter::Close);
    clickCell(2, 1);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_FALSE(editor->isOpen());
    EXPECT_TRUE(view.hasFocus());
}

TEST_F(GridEditor, EscGivesBackWhatTheCellHeld)
{
    edit(Choice::Several);
    clickCell(2, 1);
    QTest::keyClicks(box, u"x"_s);
    QTest::keyClick(box, Qt::Key_Escape);
    EXPECT_EQ(text(2, 1), u"行2"_s);
    EXPECT_EQ(takenBack->takeFirst(), (QList<QVariant>{2, 1}));
    grid.setTextMatrix(3, 2, u"李四"_s);
    clickCell(3, 2);
    QTest::keyClick(list, Qt::Key_Space);
    EXPECT_EQ(text(3, 2), u""_s);
    QTest::keyClick(list, Qt::Key_Escape);
    EXPECT_EQ(text(3, 2), u"李四"_s);
    EXPECT_EQ(takenBack->size(), 1);
    EXPECT_FALSE(editor->isOpen());
}

TEST_F(GridEditor, AListOpensByAltDownSpaceAndEnterOnItsCell)
{
    edit(Choice::Several);
    for (const auto& [key, modifiers] :
         {std::pair{Qt::Key_Down, Qt::AltModifier}, std::pair{Qt::Key_Space, Qt::NoModifier},
          std::pair{Qt::Key_Return, Qt::NoModifier}}) {
        goTo(2, 2);
        QTest::keyClick(&view, key, modifiers);
        EXPECT_TRUE(list->isVisible() && list->hasFocus());
        EXPECT_EQ(text(2, 2), u""_s);
        QTest::keyClick(list, Qt::Key_Return);
        EXPECT_FALSE(list->isVisible());
    }
}

TEST_F(GridEditor, LettersTypedOnAListOrOnNothingDoNothing)
{
    edit(Choice::Several);
    for (const int col : {0, 2}) {
        goTo(2, col);
        QTest::keyClicks(&view, u"a"_s);
        EXPECT_FALSE(editor->isOpen());
        EXPECT_EQ(text(2, col), u""_s);
    }
    EXPECT_EQ(activated->size(), 0);
}

TEST_F(GridEditor, EnterAndSpaceOnACellWithoutEditorsAreAClickOnIt)
{
    edit(Choice::One);
    goTo(2, 0);
    QTest::keyClick(&view, Qt::Key_Return);
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_EQ(activated->size(), 2);
}

TEST_F(GridEditor, SpaceTicksEntriesAndTheListStays)
{
    edit(Choice::Several);
    clickCell(2, 2);
    EXPECT_EQ(list->count(), 3) << "empty entries are none";
    QTest::keyClick(list, Qt::Key_End);
    QTest::keyClick(list, Qt::Key_Space);
    QTest::keyClick(list, Qt::Key_Home);
    QTest::keyClick(list, Qt::Key_Space);
    EXPECT_EQ(text(2, 2), u"张三,王五"_s) << "in the order of the list";
    EXPECT_TRUE(list->isVisible());
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_FALSE(list->isVisible());
    EXPECT_EQ(text(2, 2), u"张三,王五"_s);
}

TEST_F(GridEditor, ALetterGoesToItsEntryAndPicksNothing)
{
    entries = {u"1"_s, u"2"_s};
    for (const Choice choice : {Choice::One, Choice::Several}) {
        edit(choice);
        clickCell(2, 2);
        QTest::keyClicks(list, u"2"_s);
        EXPECT_EQ(list->currentRow(), 1);
        EXPECT_EQ(list->picked(), QStringList());
        delete editor;
        delete list;
    }
}

TEST_F(GridEditor, CtrlAPicksAllOfSeveralAndNothingOfOne)
{
    for (const auto& [choice, all] :
         {std::pair{Choice::One, u""_s}, std::pair{Choice::Several, u"张三,李四,王五"_s}}) {
        edit(choice);
        clickCell(2, 2);
        QTest::keyClick(list, Qt::Key_A, Qt::ControlModifier);
        EXPECT_EQ(list->picked().join(u','), all);
        EXPECT_EQ(text(2, 2), all);
        delete editor;
        delete list;
    }
}

TEST_F(GridEditor, OfOneChoiceAClickOrEnterTakesItsPlace)
{
    edit(Choice::One);
    grid.setTextMatrix(2, 2, u"王五"_s);
    clickCell(2, 2);
    clickEntry(0);
    EXPECT_EQ(text(2, 2), u"张三"_s);
    EXPECT_FALSE(list->isVisible());
    goTo(2, 2);
    QTest::keyClick(&view, Qt::Key_Down, Qt::AltModifier);
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(text(2, 2), u"张三"_s) << "going through the list picks nothing";
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(text(2, 2), u"李四"_s);
}

TEST_F(GridEditor, OfSeveralAClickPicksOneAndCtrlAddsMore)
{
    edit(Choice::Several);
    clickCell(2, 3);
    clickEntry(2, Qt::ControlModifier);
    EXPECT_TRUE(list->isVisible());
    clickEntry(0, Qt::ShiftModifier);
    EXPECT_EQ(text(2, 3), u"张三,王五"_s);
    EXPECT_EQ(box->text(), u"张三,王五"_s);
    clickEntry(1);
    EXPECT_EQ(text(2, 3), u"李四"_s);
    EXPECT_FALSE(editor->isOpen());
}

TEST_F(GridEditor, FromTheTextBoxAltDownLeadsIntoItsList)
{
    edit(Choice::Several);
    goTo(2, 3);
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_TRUE(box->hasFocus());
    QTest::keyClick(box, Qt::Key_Down, Qt::AltModifier);
    EXPECT_TRUE(list->hasFocus());
    QTest::keyClick(list, Qt::Key_Space);
    EXPECT_EQ(text(2, 3), u"张三"_s);
    EXPECT_TRUE(box->isVisible());
    goTo(3, 3);
    QTest::keyClick(&view, Qt::Key_Down, Qt::AltModifier);
    EXPECT_TRUE(list->hasFocus());
}

TEST_F(GridEditor, WithoutNewEntriesTheListKeepsThoseThatItHad)
{
    edit(Choice::Several);
    clickCell(2, 3);
    keepsEntries = true;
    clickCell(3, 3);
    EXPECT_EQ(list->count(), 3);
}

TEST_F(GridEditor, ScrollingHidesBothAndTheWheelOverTheListDoesNotScrollTheGrid)
{
    edit(Choice::Several);
    grid.setRows(60);
    view.refresh();
    clickCell(2, 3);
    QWheelEvent wheel(QPointF(5, 5), list->viewport()->mapToGlobal(QPointF(5, 5)), {},
                      QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(list->viewport(), &wheel);
    EXPECT_TRUE(list->isVisible());
    view.verticalScrollBar()->setValue(20);
    EXPECT_FALSE(editor->isOpen());
}

} // namespace
