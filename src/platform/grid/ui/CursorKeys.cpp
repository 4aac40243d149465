#include "platform/grid/ui/CursorKeys.h"

#include <QHeaderView>
#include <QKeyEvent>

#include "platform/grid/ui/FlexGridView.h"

namespace grid {

CursorKeys::CursorKeys(const FlexGridView& view) : m_view(view), m_grid(view.grid()) {}

std::optional<CellPlace> CursorKeys::target(const QKeyEvent& key) const
{
    const Reach reach = key.modifiers() & Qt::ControlModifier ? Reach::End : Reach::Step;
    switch (key.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
        return CellPlace{targetRow(key.key(), reach), targetCol(key.key(), reach)};
    default:
        return std::nullopt;
    }
}

int CursorKeys::targetRow(int key, Reach reach) const
{
    switch (key) {
    case Qt::Key_Up:
        return rowFrom(-1, reach);
    case Qt::Key_Down:
        return rowFrom(1, reach);
    case Qt::Key_PageUp:
        return pageRow(-1);
    case Qt::Key_PageDown:
        return pageRow(1);
    case Qt::Key_Home:
        return reach == Reach::End ? m_grid.FixedRows : m_grid.RowSel;
    case Qt::Key_End:
        return reach == Reach::End ? lastRow() : m_grid.RowSel;
    default:
        return m_grid.RowSel;
    }
}

int CursorKeys::targetCol(int key, Reach reach) const
{
    switch (key) {
    case Qt::Key_Left:
        return colFrom(-1, reach);
    case Qt::Key_Right:
        return colFrom(1, reach);
    case Qt::Key_Home:
        return m_grid.FixedCols;
    case Qt::Key_End:
        return lastCol();
    default:
        return m_grid.ColSel;
    }
}

int CursorKeys::rowFrom(int step, Reach reach) const
{
    if (reach == Reach::End)
        return step < 0 ? m_grid.FixedRows : lastRow();
    return nextShown(m_view.verticalHeader(), m_grid.RowSel, step, m_grid.FixedRows);
}

int CursorKeys::colFrom(int step, Reach reach) const
{
    if (reach == Reach::End)
        return step < 0 ? m_grid.FixedCols : lastCol();
    return nextShown(m_view.horizontalHeader(), m_grid.ColSel, step, m_grid.FixedCols);
}

/// The row one page up (-1) or down (1) from the current one.
int CursorKeys::pageRow(int direction) const
{
    const int page = m_view.viewport()->height() - m_view.fixedSize().height();
    const QRect cell = m_view.visualRect(m_view.currentIndex());
    const int row = m_view.verticalHeader()->logicalIndexAt(cell.top() + direction * page);
    if (row >= 0)
        return std::max(row, m_grid.FixedRows);
    return direction < 0 ? m_grid.FixedRows : lastRow();
}

int CursorKeys::lastRow() const
{
    return m_view.model()->rowCount() - 1;
}

int CursorKeys::lastCol() const
{
    return nextShown(m_view.horizontalHeader(), m_view.model()->columnCount(), -1, 0);
}

} // namespace grid
