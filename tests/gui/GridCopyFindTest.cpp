#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include "gui/GridViewFixture.h"
#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;
using grid::FlexGridView;

TEST_F(GridView, CopiesABlockAsTabbedTextAndAsATable)
{
    select(1, 1, 2, 2);
    QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
    const QMimeData* copied = QApplication::clipboard()->mimeData();
    EXPECT_EQ(copied->text(), u"1,1\t1,2\r\n2,1\t2,2\r\n"_s);
    EXPECT_EQ(copied->html(), u"<table><tr><td>1,1</td><td>1,2</td></tr>"
                              "<tr><td>2,1</td><td>2,2</td></tr></table>"_s);
}

TEST_F(GridView, NamesThatBeginLikeAFormulaAreCopiedAsTexts)
{
    const QString texts[] = {u"=1+1"_s, u"+张三"_s, u"-李四"_s, u"@王五"_s, u"-1"_s, u"赵六"_s};
    for (int i = 0; i < 6; ++i)
        grid.setTextMatrix(i + 1, 1, texts[i]);
    view.refresh();
    select(1, 1, 6, 1);
    QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
    const QMimeData* copied = QApplication::clipboard()->mimeData();
    for (int i = 0; i < 6; ++i) {
        const QString cell = (i < 4 ? u"<td style=\"mso-number-format:'\\@'\">"_s : u"<td>"_s)
                             + texts[i] + u"</td>"_s;
        EXPECT_TRUE(copied->html().contains(cell)) << cell.toStdString();
    }
    EXPECT_EQ(copied->text(), u"=1+1\r\n+张三\r\n-李四\r\n@王五\r\n-1\r\n赵六\r\n"_s);
}

TEST_F(GridView, AMergedBlockIsFoundOnceAndCopiedWithTheTextOfEachCell)
{
    grid.MergeCells = 2;
    grid.setMergeRow(0, true);
    for (int col = 1; col < 5; ++col)
        grid.setTextMatrix(0, col, u"语文"_s);
    grid.setTextMatrix(7, 3, u"语文"_s);
    view.refresh();
    EXPECT_TRUE(view.findText(u"语文"_s));
    const QModelIndex first = view.currentIndex();
    EXPECT_TRUE(view.findText(u"语文"_s));
    const QModelIndex second = view.currentIndex();
    EXPECT_EQ(qMin(first, second), view.model()->index(0, 1));
    EXPECT_EQ(qMax(first, second), view.model()->index(7, 3));
    EXPECT_TRUE(view.findText(u"语文"_s, Qt::DescendingOrder));
    EXPECT_EQ(view.currentIndex(), first);
    select(0, 1, 0, 5);
    QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), u"语文\t语文\t语文\t语文\t0,5\r\n"_s);
}

TEST_F(GridView, AllCellsAreSelectedByTheKey)
{
    QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
    EXPECT_TRUE(view.selectionModel()->isSelected(view.model()->index(99, 19)));
}

TEST_F(GridView, FindsFromTheCurrentCellOnAndAroundTheEnd)
{
    view.setCurrentIndex(view.model()->index(50, 5));
    EXPECT_TRUE(view.findText(u"60,7"_s));
    EXPECT_EQ(view.currentIndex(), view.model()->index(60, 7));
    EXPECT_TRUE(view.findText(u"3,3"_s));
    EXPECT_EQ(view.currentIndex(), view.model()->index(63, 3));
    EXPECT_TRUE(view.findText(u"10,1"_s));
    EXPECT_EQ(view.currentIndex(), view.model()->index(10, 1));
    EXPECT_FALSE(view.findText(u"nowhere"_s));
    EXPECT_EQ(view.currentIndex(), view.model()->index(10, 1));
}

TEST_F(GridView, TheFindBarGoesOnAndBackAndSaysWhenThereIsNothing)
{
    view.activateWindow();
    QTest::keyClick(&view, Qt::Key_F, Qt::ControlModifier);
    auto* bar = view.findChild<QWidget*>(u"FindBar"_s);
    auto* text = view.findChild<QLineEdit*>(u"FindText"_s);
    auto* result = view.findChild<QLabel*>(u"FindResult"_s);
    ASSERT_TRUE(bar->isVisible());
    QTest::keyClicks(text, u"9,19"_s);
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(std::tie(grid.Row, grid.Col), std::tuple(9, 19));
    QTest::mouseClick(view.findChild<QPushButton*>(u"FindNext"_s), Qt::LeftButton);
    EXPECT_EQ(grid.Row, 19);
    QTest::mouseClick(view.findChild<QPushButton*>(u"FindPrevious"_s), Qt::LeftButton);
    EXPECT_EQ(grid.Row, 9);
    QTest::keyClick(text, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(grid.Row, 99);
    EXPECT_EQ(result->text(), QString());
    text->setText(u"没有的"_s);
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(result->text(), u"没有找到"_s);
    QTest::keyClick(text, Qt::Key_Escape);
    EXPECT_FALSE(bar->isVisible());
}

TEST_F(GridView, ACopyOfAllHoldsTheHeadingsButNoHiddenColumn)
{
    grid.setRows(2);
    grid.setCols(3);
    grid.setColWidth(1, 0);
    grid.setTextMatrix(0, 2, u"语文\r\n\"参试\""_s);
    grid.setTextMatrix(1, 2, u"0805"_s);
    grid.setTextMatrix(1, 0, u"<b>"_s);
    view.refresh();
    QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
    const QMimeData* copied = QApplication::clipboard()->mimeData();
    EXPECT_EQ(copied->text(), u"0,0\t\"语文\n\"\"参试\"\"\"\r\n<b>\t0805\r\n"_s);
    EXPECT_EQ(
        copied->html(),
        u"<table><tr><td>0,0</td><td>语文<br>&quot;参试&quot;</td></tr>"
        "<tr><td>&lt;b&gt;</td><td style=\"mso-number-format:'\\@'\">0805</td></tr></table>"_s);
}

} // namespace
