#include <QAbstractItemModelTester>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <array>

#include <gtest/gtest.h>

#include "gui/GridViewFixture.h"
#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;
using grid::FlexGridView;

TEST_F(GridView, ItsModelKeepsTheRulesOfModels)
{
    const QAbstractItemModelTester tester(view.model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    grid.setRows(3);
    view.refresh();
    EXPECT_EQ(view.model()->rowCount(), 3);
}

TEST_F(GridView, NoHeadingIsChosenWhereRowsAreGoneOrComeBack)
{
    grid.setRows(1);
    view.refresh();
    EXPECT_EQ(view.selectionModel()->selectedIndexes(), QModelIndexList());
    grid.setRows(3);
    view.refresh();
    EXPECT_EQ(view.selectionModel()->selectedIndexes(), QModelIndexList{view.model()->index(1, 1)});
}

TEST_F(GridView, FixedCellsStayWhileTheRestScrolls)
{
    view.verticalScrollBar()->setValue(200);
    view.horizontalScrollBar()->setValue(150);
    EXPECT_EQ(view.indexAt(QPoint(5, 5)), view.model()->index(0, 0));
    EXPECT_EQ(view.indexAt(QPoint(5, 100)).column(), 0);
    EXPECT_GT(view.indexAt(QPoint(5, 100)).row(), 8);
    EXPECT_EQ(view.indexAt(QPoint(300, 5)).row(), 0);
    EXPECT_EQ(view.visualRect(view.model()->index(0, 0)).topLeft(), QPoint(0, 0));
    const QRect heading = view.visualRect(view.model()->index(0, 5));
    EXPECT_EQ(view.indexAt(heading.center()), view.model()->index(0, 5));
}

TEST_F(GridView, FixedCellsAreDrawnInTheColoursOfHeadings)
{
    for (const QColor& ground : {QColor(240, 240, 240), QColor(60, 60, 60)}) {
        QPalette palette;
        palette.setColor(QPalette::Button, ground);
        view.setPalette(palette);
        view.verticalScrollBar()->setValue(200);
        view.horizontalScrollBar()->setValue(150);
        const QImage picture = view.viewport()->grab().toImage();
        EXPECT_EQ(picture.pixelColor(1, 1), ground);
        EXPECT_EQ(picture.pixelColor(view.columnWidth(0) - 3, 150), ground);
        EXPECT_EQ(picture.pixelColor(200, 2), ground);
    }
}

TEST_F(GridView, TheCurrentCellNeverHidesUnderTheHeading)
{
    view.select(60, 8, 60, 8);
    for (int step = 0; step < 30; ++step)
        QTest::keyClick(&view, Qt::Key_Up);
    EXPECT_EQ(grid.Row, 30);
    EXPECT_EQ(view.visualRect(view.currentIndex()).top(), view.fixedSize().height());
    for (int step = 0; step < 7; ++step)
        QTest::keyClick(&view, Qt::Key_Left);
    EXPECT_EQ(grid.Col, 1);
    EXPECT_EQ(view.visualRect(view.currentIndex()).left(), view.fixedSize().width());
    QTest::keyClick(&view, Qt::Key_Left);
    EXPECT_EQ(grid.Col, 1);
}

TEST_F(GridView, KeysExtendTheBlockAndPassOverHiddenColumns)
{
    grid.setColWidth(3, 0);
    view.refresh();
    view.select(5, 2, 5, 2);
    QTest::keyClick(&view, Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(&view, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(std::tie(grid.Row, grid.Col), std::tuple(5, 2));
    EXPECT_EQ(std::tie(grid.RowSel, grid.ColSel), std::tuple(6, 4));
    QTest::keyClick(&view, Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(std::tie(grid.Row, grid.Col), std::tuple(99, 19));
    QTest::keyClick(&view, Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(std::tie(grid.RowSel, grid.ColSel), std::tuple(1, 1));
    EXPECT_EQ(view.verticalScrollBar()->value(), 0);
    QTest::keyClick(&view, Qt::Key_PageDown);
    EXPECT_GT(grid.Row, 5);
    QTest::keyClick(&view, Qt::Key_PageUp);
    EXPECT_EQ(grid.Row, 1);
}

TEST_F(GridView, AMouseDragSelectsABlockAndAClickTellsItsCell)
{
    const QSignalSpy clicked(&view, &FlexGridView::cellClicked);
    const QSignalSpy released(&view, &FlexGridView::cellReleased);
    const QPoint from = centre(7, 3);
    const QPoint to = centre(5, 2);
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, to, view.viewport()->mapToGlobal(to), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view.viewport(), &move);
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, to);
    EXPECT_EQ(std::tie(grid.Row, grid.Col), std::tuple(7, 3));
    EXPECT_EQ(std::tie(grid.RowSel, grid.ColSel), std::tuple(5, 2));
    EXPECT_EQ(clicked.count(), 0);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, to);
    EXPECT_EQ(clicked.value(0), (QVariantList{5, 2}));
    EXPECT_EQ(released.value(1), (QVariantList{5, 2}));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::ShiftModifier, centre(6, 3));
    EXPECT_EQ(std::tie(grid.Row, grid.Col), std::tuple(5, 2));
    EXPECT_EQ(std::tie(grid.RowSel, grid.ColSel), std::tuple(6, 3));
}

TEST_F(GridView, AClickOnAHeadingIsToldAndSelectsWhatItStandsFor)
{
    const QSignalSpy clicked(&view, &FlexGridView::cellClicked);
    view.verticalScrollBar()->setValue(500);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, centre(0, 2));
    EXPECT_EQ(clicked.value(0), (QVariantList{0, 2}));
    EXPECT_TRUE(view.selectionModel()->isColumnSelected(2, {}));
    EXPECT_EQ(view.verticalScrollBar()->value(), 500);
    EXPECT_GE(grid.Row, 1);
    EXPECT_GE(grid.RowSel, 1);
    const int row = view.indexAt(QPoint(5, 150)).row();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(5, 150));
    EXPECT_EQ(clicked.value(1), (QVariantList{row, 0}));
    EXPECT_TRUE(view.selectionModel()->isRowSelected(row, {}));
}

TEST_F(GridView, TheRightButtonAsksForTheMenuAndLeavesTheBlock)
{
    const QSignalSpy clicked(&view, &FlexGridView::cellClicked);
    view.select(1, 1, 3, 3);
    QTest::mouseClick(view.viewport(), Qt::RightButton, {}, centre(5, 2));
    EXPECT_EQ(clicked.count(), 0);
    const QSignalSpy menu(&view, &FlexGridView::menuRequested);
    const QPoint place = view.viewport()->mapToGlobal(centre(5, 2));
    QContextMenuEvent asked(QContextMenuEvent::Mouse, centre(5, 2), place);
    QApplication::sendEvent(view.viewport(), &asked);
    ASSERT_EQ(menu.count(), 1);
    EXPECT_EQ(menu[0], QVariantList{place});
    EXPECT_EQ(std::tie(grid.RowSel, grid.ColSel), std::tuple(3, 3));
}

TEST_F(GridView, AnEdgeOfTheHeadingRowIsDraggedToAnotherWidth)
{
    const QRect heading = view.visualRect(view.model()->index(0, 2));
    const QPoint edge(heading.right() + 2, 5);
    const QPoint target(edge.x() + 40, 5);
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, edge);
    QMouseEvent move(QEvent::MouseMove, target, view.viewport()->mapToGlobal(target), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view.viewport(), &move);
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, target);
    const int width = view.columnWidth(2);
    EXPECT_EQ(width, heading.width() + 1 + 40);
    view.refresh();
    EXPECT_EQ(view.columnWidth(2), width);
    EXPECT_EQ(grid.ColWidth(1), grid::FlexGrid::DefaultColWidth);
}

TEST_F(GridView, AClickBehindADoubleClickOnAnEdgeOpensNothing)
{
    const auto doubleClick = [this](const QPoint& place) {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, place);
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, place);
    };
    const QSignalSpy activated(&view, &FlexGridView::cellActivated);
    doubleClick({view.visualRect(view.model()->index(0, 2)).right() + 2, 5});
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, centre(3, 2));
    EXPECT_EQ(activated.count(), 0);
    doubleClick(centre(3, 2));
    EXPECT_EQ(activated.value(0), (QVariantList{3, 2}));
}

TEST_F(GridView, ShowsTheBlockThatTheGridNames)
{
    grid.Row = 3;
    grid.RowSel = 5;
    grid.Col = grid.ColSel = 2;
    view.refresh();
    EXPECT_TRUE(view.selectionModel()->isSelected(view.model()->index(4, 2)));
    EXPECT_FALSE(view.selectionModel()->isSelected(view.model()->index(6, 2)));
    EXPECT_EQ(view.currentIndex(), view.model()->index(5, 2));
}

TEST_F(GridView, ScrollsNoFurtherThanTheLastRowAndNotesTheTopRow)
{
    const QSignalSpy scrolled(&view, &FlexGridView::scrolled);
    turnWheel(-120 * 500);
    EXPECT_EQ(view.verticalScrollBar()->value(), view.verticalScrollBar()->maximum());
    turnWheel(120 * 500);
    EXPECT_EQ(view.verticalScrollBar()->value(), 0);
    EXPECT_EQ(grid.TopRow, 1);
    turnWheel(-120);
    EXPECT_EQ(grid.TopRow, 2);
    turnWheel(-60);
    EXPECT_EQ(grid.TopRow, 2);
    turnWheel(-60);
    EXPECT_EQ(grid.TopRow, 3);
    EXPECT_EQ(scrolled.count(), 4);
}

TEST_F(GridView, KeepsItsPlaceWhenRefreshed)
{
    view.verticalScrollBar()->setValue(300);
    const QSignalSpy scrolled(&view, &FlexGridView::scrolled);
    view.refresh();
    EXPECT_EQ(view.verticalScrollBar()->value(), 300);
    EXPECT_EQ(scrolled.count(), 0);
}

TEST_F(GridView, ShowsNothingNewWhileRedrawIsOff)
{
    grid.Redraw = false;
    grid.setRows(5);
    view.refresh();
    EXPECT_EQ(view.model()->rowCount(), 100);
    EXPECT_FALSE(view.model()->index(50, 1).data().isValid());
    grid.Redraw = true;
    view.refresh();
    EXPECT_EQ(view.model()->rowCount(), 5);
}

TEST_F(GridView, IsHiddenAndShownWithTheGrid)
{
    grid.Visible = false;
    view.refresh();
    EXPECT_TRUE(view.isHidden());
    grid.Visible = true;
    view.refresh();
    EXPECT_FALSE(view.isHidden());
}

TEST_F(GridView, AnEmptyGridIsShownWithoutHarm)
{
    grid.setRows(0);
    grid.setCols(0);
    view.refresh();
    view.grab();
    for (const auto key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_End, Qt::Key_Home, Qt::Key_PageDown})
        QTest::keyClick(&view, key);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(20, 20));
    turnWheel(-120);
    EXPECT_EQ(view.model()->rowCount(), 0);
}

TEST_F(GridView, RowsHoldAsManyLinesAsTheirHeightsSay)
{
    const int line = view.fontMetrics().height();
    const int one = view.rowHeight(2);
    EXPECT_GT(one, line);
    grid.setRowHeight(3, 4 * grid.RowHeight(2));
    grid.setRowHeight(4, 0);
    view.refresh();
    EXPECT_EQ(view.rowHeight(3), one + 3 * line);
    EXPECT_TRUE(view.isRowHidden(4));
}

TEST_F(GridView, AlignsAsTheControlDoes)
{
    grid.setTextMatrix(1, 1, u"90.5"_s);
    grid.setTextMatrix(1, 2, u"缺考"_s);
    const auto aligned = [&](int col) {
        return Qt::Alignment(view.model()->index(1, col).data(Qt::TextAlignmentRole).toInt());
    };
    EXPECT_EQ(aligned(1), Qt::AlignRight | Qt::AlignVCenter);
    EXPECT_EQ(aligned(2), Qt::AlignLeft | Qt::AlignVCenter);
    const std::map<int, Qt::Alignment> codes{{0, Qt::AlignLeft | Qt::AlignVCenter},
                                             {1, Qt::AlignLeft | Qt::AlignVCenter},
                                             {4, Qt::AlignHCenter | Qt::AlignVCenter},
                                             {7, Qt::AlignRight | Qt::AlignVCenter},
                                             {3, Qt::AlignHCenter | Qt::AlignTop}};
    for (const auto& [code, alignment] : codes) {
        grid.setColAlignment(-1, code);
        EXPECT_EQ(aligned(1), alignment) << code;
    }
}

TEST_F(GridView, TheWheelMovesOneRowANotch)
{
    const int row = view.rowHeight(5);
    turnWheel(-120);
    EXPECT_EQ(view.verticalScrollBar()->value(), row);
}

TEST_F(GridView, AColumnOfNoWidthIsHidden)
{
    grid.setColWidth(3, 0);
    view.refresh();
    EXPECT_TRUE(view.isColumnHidden(3));
    EXPECT_FALSE(view.isColumnHidden(2));
}

TEST_F(GridView, ColumnsShareTheWholeWidthAndOnesBehindThemStayAsTheyAre)
{
    grid.setCols(4);
    grid.setColWidth(3, 0);
    for (const int width : {401, 500}) {
        view.resize(width, 300);
        view.shareWidth(std::array{7, 2, 1});
        const int whole = view.viewport()->width();
        EXPECT_EQ(view.columnWidth(0), whole * 7 / 10);
        EXPECT_EQ(view.columnWidth(0) + view.columnWidth(1) + view.columnWidth(2), whole);
        EXPECT_TRUE(view.isColumnHidden(3));
    }
    view.resize(60, 300);
    view.shareWidth(std::array{7, 2, 1});
    EXPECT_GT(view.columnWidth(2), 0) << "no share is too small to be seen";
}

TEST_F(GridView, EqualNeighboursOfMarkedRowsAreShownAsOneCell)
{
    grid.MergeCells = 2;
    grid.setMergeRow(0, true);
    for (int col = 1; col < 5; ++col)
        grid.setTextMatrix(0, col, u"语文"_s);
    view.refresh();
    EXPECT_EQ(view.columnSpan(0, 1), 4);
    EXPECT_EQ(view.columnSpan(0, 5), 1);
}

TEST_F(GridView, ATipShowsTheWholeText)
{
    EXPECT_EQ(view.model()->index(1, 1).data(Qt::ToolTipRole).toString(), u"1,1"_s);
    grid.setTextMatrix(1, 1, u"<b>甲"_s);
    EXPECT_EQ(view.model()->index(1, 1).data(Qt::ToolTipRole).toString(),
              u"<span>&lt;b&gt;甲</span>"_s);
}

TEST_F(GridView, OneCellIsShownAnew)
{
    const QSignalSpy changed(view.model(), &QAbstractItemModel::dataChanged);
    grid.setTextMatrix(2, 2, u"新"_s);
    view.refreshCell(2, 2);
    EXPECT_EQ(changed.value(0).value(0).toModelIndex(), view.model()->index(2, 2));
}

} // namespace
