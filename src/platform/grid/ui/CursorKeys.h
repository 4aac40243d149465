#pragma once

#include <optional>

#include "platform/grid/FlexGrid.h"

class QKeyEvent;

namespace grid {

class FlexGridView;

/// Where keys lead from the cell at RowSel and ColSel: arrows to the next cell that is shown, with
/// Ctrl to the end; page up and down; Home and End along the row, with Ctrl to the grid's ends. The
/// fixed cells are never reached.
class CursorKeys
{
public:
    explicit CursorKeys(const FlexGridView& view);

    /// Nothing for a key that leads nowhere.
    std::optional<CellPlace> target(const QKeyEvent& key) const;

private:
    enum class Reach { Step, End };

    int targetRow(int key, Reach reach) const;
    int targetCol(int key, Reach reach) const;
    int rowFrom(int step, Reach reach) const;
    int colFrom(int step, Reach reach) const;
    int pageRow(int direction) const;
    int lastRow() const;
    int lastCol() const;

    const FlexGridView& m_view;
    const FlexGrid& m_grid;
};

} // namespace grid
