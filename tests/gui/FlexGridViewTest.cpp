#include "platform/grid/ui/FlexGridView.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;
using grid::FlexGridView;

class GridView : public testing::Test
{
protected:
    GridView()
    {
        grid.setRows(100);
        grid.setCols(20);
        grid.FixedCols = 1;
        for (int row = 0; row < grid.Rows(); ++row) {
            for (int col = 0; col < grid.Cols(); ++col)
                grid.setTextMatrix(row, col, u"%1,%2"_s.arg(row).arg(col));
        }
        view.refresh();
        view.resize(400, 300);
        view.show();
    }

    void select(int row, int col, int lastRow, int lastCol)
    {
        view.selectionModel()->select(
            QItemSelection(view.model()->index(row, col), view.model()->index(lastRow, lastCol)),
            QItemSelectionModel::ClearAndSelect);
    }

    grid::FlexGrid grid;
    FlexGridView view{grid};
};

TEST_F(GridView, ItsModelKeepsTheRulesOfModels)
{
    const QAbstractItemModelTester tester(view.model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    grid.setRows(3);
    view.refresh();
    EXPECT_EQ(view.model()->rowCount(), 3);
}

TEST_F(GridView, CopiesABlockAsTabbedTextAndAsATable)
{
    select(1, 1, 2, 2);
    QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
    const QMimeData* copied = QApplication::clipboard()->mimeData();
    EXPECT_EQ(copied->text(), u"1,1\t1,2\r\n2,1\t2,2\r\n"_s);
    EXPECT_EQ(copied->html(), u"<table><tr><td>1,1</td><td>1,2</td></tr>"
                              "<tr><td>2,1</td><td>2,2</td></tr></table>"_s);
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

TEST_F(GridView, FixedCellsStayWhileTheRestScrolls)
{
    auto* rows = view.findChild<QTableView*>(u"FixedRows"_s);
    auto* cols = view.findChild<QTableView*>(u"FixedCols"_s);
    view.verticalScrollBar()->setValue(200);
    view.horizontalScrollBar()->setValue(150);
    EXPECT_EQ(rows->indexAt(QPoint(5, 5)).row(), 0);
    EXPECT_EQ(rows->horizontalScrollBar()->value(), 150);
    EXPECT_EQ(cols->indexAt(QPoint(5, 100)).column(), 0);
    EXPECT_EQ(cols->verticalScrollBar()->value(), 200);
}

TEST_F(GridView, TheCurrentCellNeverHidesUnderTheHeading)
{
    view.setCurrentIndex(view.model()->index(60, 1));
    for (int step = 0; step < 30; ++step)
        QTest::keyClick(&view, Qt::Key_Up);
    const int heading = view.findChild<QTableView*>(u"FixedRows"_s)->height();
    EXPECT_GE(view.visualRect(view.currentIndex()).top(), heading);
}

TEST_F(GridView, TheWheelMovesOneRowANotch)
{
    const int row = view.rowHeight(5);
    QWheelEvent notch(QPointF(50, 50), view.mapToGlobal(QPointF(50, 50)), QPoint(), QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view.viewport(), &notch);
    EXPECT_EQ(view.verticalScrollBar()->value(), row);
}

TEST_F(GridView, AColumnOfNoWidthIsHidden)
{
    grid.setColWidth(3, 0);
    view.refresh();
    EXPECT_TRUE(view.isColumnHidden(3));
    EXPECT_FALSE(view.isColumnHidden(2));
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
}

} // namespace
