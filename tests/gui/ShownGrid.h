#pragma once

#include <QTest>

#include <gtest/gtest.h>

#include "platform/grid/ui/CellTextEditor.h"
#include "platform/grid/ui/FlexGridView.h"
#include "support/ScriptedDialogs.h"

namespace support {

/// A grid of four columns in a window of its own, with a box to edit its cells.
class ShownGrid : public testing::Test
{
protected:
    /// The texts 行0, 行1 … stand in one column.
    ShownGrid(int rows, int textColumn)
    {
        using namespace Qt::StringLiterals;
        grid.setRows(rows);
        grid.setCols(4);
        for (int row = 0; row < rows; ++row)
            grid.setTextMatrix(row, textColumn, u"行%1"_s.arg(row));
        view.refresh();
        view.resize(500, 300);
        view.show();
        view.activateWindow();
        (void)QTest::qWaitForWindowActive(&view);
    }

    QRect cell(int row, int col) { return view.visualRect(view.model()->index(row, col)); }

    ScriptedDialogs dialogs;
    grid::FlexGrid grid;
    grid::FlexGridView view{grid};
    grid::CellTextEditor* box = new grid::CellTextEditor(&view);
};

} // namespace support
