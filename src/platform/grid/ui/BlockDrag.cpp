#include "platform/grid/ui/BlockDrag.h"

#include <QCursor>
#include <QHeaderView>

#include "platform/grid/ui/FlexGridView.h"

namespace grid {

namespace {

constexpr int GrowEveryMs = 50;

} // namespace

void BlockDrag::moveTo(const QPoint& place)
{
    extendTo(place);
    if (cellArea().contains(place))
        m_timer.stop();
    else if (!m_timer.isActive())
        m_timer.start(GrowEveryMs, this);
}

void BlockDrag::finish()
{
    m_timer.stop();
    m_active = false;
}

void BlockDrag::timerEvent(QTimerEvent*)
{
    extendTo(m_view.viewport()->mapFromGlobal(QCursor::pos()));
}

/// Extends the block to the cell under the mouse; outside, one cell further.
void BlockDrag::extendTo(const QPoint& place)
{
    const FlexGrid& grid = m_view.grid();
    const QRect area = cellArea();
    const QPoint within(std::clamp(place.x(), area.left(), std::max(area.right(), area.left())),
                        std::clamp(place.y(), area.top(), std::max(area.bottom(), area.top())));
    const QModelIndex seen = m_view.indexAt(within);
    int row = seen.isValid() ? seen.row() : grid.RowSel;
    int col = seen.isValid() ? seen.column() : grid.ColSel;
    if (place.y() != within.y())
        row = nextShown(m_view.verticalHeader(), row, place.y() < within.y() ? -1 : 1,
                        grid.FixedRows);
    if (place.x() != within.x())
        col = nextShown(m_view.horizontalHeader(), col, place.x() < within.x() ? -1 : 1,
                        grid.FixedCols);
    if (row != grid.RowSel || col != grid.ColSel)
        m_view.select(grid.Row, grid.Col, row, col);
}

/// The part of the viewport in which the cells behind the fixed ones are seen.
QRect BlockDrag::cellArea() const
{
    return m_view.shownPart(m_view.grid().FixedRows, m_view.grid().FixedCols);
}

} // namespace grid
