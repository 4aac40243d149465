#include "platform/grid/ui/GridGeometry.h"

#include <QHeaderView>
#include <QTableView>

#include "platform/grid/FlexGrid.h"

namespace grid {

namespace {

/// The height or width of the first lines.
int sizeOf(const QHeaderView* header, int count)
{
    int size = 0;
    for (int line = 0; line < count; ++line)
        size += header->sectionSize(line);
    return size;
}

} // namespace

QSize GridGeometry::fixedSize() const
{
    const int cols = std::clamp(m_grid.FixedCols, 0, m_view.model()->columnCount());
    const int rows = std::clamp(m_grid.FixedRows, 0, m_view.model()->rowCount());
    return {sizeOf(m_view.horizontalHeader(), cols), sizeOf(m_view.verticalHeader(), rows)};
}

QRect GridGeometry::shownPart(int row, int col) const
{
    const QSize fixed = fixedSize();
    QRect part = m_view.viewport()->rect();
    if (row < m_grid.FixedRows)
        part.setHeight(fixed.height());
    else
        part.setTop(fixed.height());
    if (col < m_grid.FixedCols)
        part.setWidth(fixed.width());
    else
        part.setLeft(fixed.width());
    return part;
}

int GridGeometry::columnStart(int col) const
{
    const QHeaderView* header = m_view.horizontalHeader();
    return header->sectionPosition(col) - (col < m_grid.FixedCols ? 0 : header->offset());
}

QPoint GridGeometry::unscrolled(const QPoint& place) const
{
    const QSize fixed = fixedSize();
    const int x = place.x() < fixed.width() ? m_view.horizontalHeader()->offset() : 0;
    const int y = place.y() < fixed.height() ? m_view.verticalHeader()->offset() : 0;
    return place - QPoint(x, y);
}

QPoint GridGeometry::stay(const QModelIndex& index) const
{
    return {index.column() < m_grid.FixedCols ? m_view.horizontalHeader()->offset() : 0,
            index.row() < m_grid.FixedRows ? m_view.verticalHeader()->offset() : 0};
}

int nextShown(const QHeaderView* header, int line, int step, int first)
{
    int next = line + step;
    while (next >= first && next < header->count() && header->isSectionHidden(next))
        next += step;
    return next < first || next >= header->count() ? line : next;
}

} // namespace grid
