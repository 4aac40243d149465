#include "platform/grid/ui/ColumnDrag.h"

#include <utility>

#include "platform/grid/ui/FlexGridView.h"

namespace grid {

namespace {

constexpr int EdgeReach = 3;

} // namespace

int ColumnDrag::edgeAt(const QPoint& place) const
{
    if (place.y() >= m_geometry.fixedSize().height() || place.y() < 0)
        return -1;
    for (const int reach : {-EdgeReach, EdgeReach}) {
        const QPoint side(place.x() + reach, place.y());
        const int col = m_view.columnAt(m_geometry.unscrolled(side).x());
        if (col < 0)
            continue;
        const int end = m_geometry.columnStart(col) + m_view.columnWidth(col);
        if (std::abs(end - place.x()) <= EdgeReach)
            return col;
    }
    return -1;
}

bool ColumnDrag::start(const QPoint& place)
{
    m_col = edgeAt(place);
    return isActive();
}

void ColumnDrag::moveTo(int x)
{
    const int line = m_view.fontMetrics().height();
    const int width = std::max(x - m_geometry.columnStart(m_col), line + EdgeReach);
    m_view.setColumnWidth(m_col, width);
    m_view.grid().setColWidth(m_col, m_view.twips(width - line));
    m_view.viewport()->update();
}

int ColumnDrag::finish()
{
    return std::exchange(m_col, -1);
}

} // namespace grid
