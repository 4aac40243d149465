#include "platform/grid/ui/FixedCellsPainter.h"

#include <QHeaderView>
#include <QPainter>

#include "platform/grid/ui/FlexGridView.h"
#include "platform/widgets/MixedColor.h"

namespace grid {

/// The rows and columns, both ends included, of one of the three parts.
struct FixedCellsPainter::Lines
{
    int top;
    int bottom;
    int left;
    int right;

    bool areNone() const { return top > bottom || left > right; }
    bool meet(const GridSpan& span) const
    {
        return span.row <= bottom && span.row + span.rows > top && span.col <= right
               && span.col + span.cols > left;
    }
};

namespace {

/// The last line that is seen in an area of this size.
int lastLine(const QHeaderView* header, int size)
{
    const int line = header->logicalIndexAt(size - 1);
    return line < 0 ? header->count() - 1 : line;
}

} // namespace

void FixedCellsPainter::paint(QPainter& painter) const
{
    const QSize fixed = m_view.fixedSize();
    const int rows = m_view.model()->rowCount();
    const int cols = m_view.model()->columnCount();
    if (fixed.isNull() || rows == 0 || cols == 0)
        return;
    const QHeaderView* across = m_view.horizontalHeader();
    const QHeaderView* down = m_view.verticalHeader();
    const int fixedRows = std::min(m_view.grid().FixedRows, rows);
    const int fixedCols = std::min(m_view.grid().FixedCols, cols);
    const int top = std::max(down->logicalIndexAt(fixed.height()), fixedRows);
    const int left = std::max(across->logicalIndexAt(fixed.width()), fixedCols);
    const int bottom = lastLine(down, m_view.viewport()->height());
    const int right = lastLine(across, m_view.viewport()->width());
    paintPart(painter, {0, fixedRows - 1, left, right});
    paintPart(painter, {top, bottom, 0, fixedCols - 1});
    paintPart(painter, {0, fixedRows - 1, 0, fixedCols - 1});
}

void FixedCellsPainter::paintPart(QPainter& painter, const Lines& lines) const
{
    if (lines.areNone())
        return;
    painter.save();
    painter.setClipRect(m_view.shownPart(lines.top, lines.left), Qt::IntersectClip);
    for (int row = lines.top; row <= lines.bottom; ++row) {
        for (int col = lines.left; col <= lines.right; ++col)
            paintCell(painter, row, col);
    }
    for (const GridSpan& span : m_spans) {
        if (lines.meet(span))
            paintCell(painter, span.row, span.col);
    }
    painter.restore();
}

void FixedCellsPainter::paintCell(QPainter& painter, int row, int col) const
{
    const QModelIndex index = m_view.model()->index(row, col);
    QStyleOptionViewItem option = m_option;
    option.rect = m_view.visualRect(index);
    if (option.rect.isEmpty())
        return;
    if (m_view.selectionModel()->isSelected(index))
        option.state |= QStyle::State_Selected;
    painter.fillRect(option.rect.adjusted(0, 0, 1, 1), widgets::gridLineColor(m_view.palette()));
    m_view.itemDelegate()->paint(&painter, option, index);
}

} // namespace grid
