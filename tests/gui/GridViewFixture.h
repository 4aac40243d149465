#pragma once

#include <QApplication>
#include <QItemSelectionModel>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include "platform/grid/ui/FlexGridView.h"

/// A shown grid of 100 rows and 20 columns, one of each fixed, whose cells hold "row,column".
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
                grid.setTextMatrix(row, col, QStringLiteral("%1,%2").arg(row).arg(col));
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

    QPoint centre(int row, int col) const
    {
        return view.visualRect(view.model()->index(row, col)).center();
    }

    void turnWheel(int angle)
    {
        QWheelEvent turn(QPointF(50, 50), view.mapToGlobal(QPointF(50, 50)), QPoint(),
                         QPoint(0, angle), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(view.viewport(), &turn);
    }

    grid::FlexGrid grid;
    grid::FlexGridView view{grid};
};
