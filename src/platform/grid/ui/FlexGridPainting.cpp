#include <QHeaderView>
#include <QPaintEvent>
#include <QPainter>

#include "platform/grid/ui/FlexGridView.h"
#include "platform/widgets/MixedColor.h"

// How a FlexGridView draws its fixed cells over the scrolled ones.

namespace grid {

/// The rows and columns, both ends included, of one of the three fixed parts.
struct FlexGridView::Lines
{
    int top;
    int bottom;
    int left;
    int right;
};

namespace {

/// The last line that is seen in an area of this size.
int lastLine(const QHeaderView* header, int size)
{
    const int line = header->logicalIndexAt(size - 1);
    return line < 0 ? header->count() - 1 : line;
}

} // namespace

void FlexGridView::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    const QSize fixed = fixedSize();
    if (fixed.isNull() || m_model->rowCount() == 0 || m_model->columnCount() == 0)
        return;
    const int fixedRows = std::min(m_grid.FixedRows, m_model->rowCount());
    const int fixedCols = std::min(m_grid.FixedCols, m_model->columnCount());
    const int top = std::max(verticalHeader()->logicalIndexAt(fixed.height()), fixedRows);
    const int left = std::max(horizontalHeader()->logicalIndexAt(fixed.width()), fixedCols);
    const int bottom = lastLine(verticalHeader(), viewport()->height());
    const int right = lastLine(horizontalHeader(), viewport()->width());
    QPainter painter(viewport());
    painter.setClipRegion(event->region());
    paintFixed(painter, {0, fixedRows - 1, left, right});
    paintFixed(painter, {top, bottom, 0, fixedCols - 1});
    paintFixed(painter, {0, fixedRows - 1, 0, fixedCols - 1});
}

void FlexGridView::paintFixed(QPainter& painter, const Lines& lines)
{
    if (lines.top > lines.bottom || lines.left > lines.right)
        return;
    painter.save();
    painter.setClipRect(shownPart(lines.top, lines.left), Qt::IntersectClip);
    for (int row = lines.top; row <= lines.bottom; ++row) {
        for (int col = lines.left; col <= lines.right; ++col)
            paintFixedCell(painter, m_model->index(row, col));
    }
    for (const GridSpan& span : m_fixedSpans) {
        const bool seen = span.row <= lines.bottom && span.row + span.rows > lines.top
                          && span.col <= lines.right && span.col + span.cols > lines.left;
        if (seen)
            paintFixedCell(painter, m_model->index(span.row, span.col));
    }
    painter.restore();
}

void FlexGridView::paintFixedCell(QPainter& painter, const QModelIndex& index)
{
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.rect = visualRect(index);
    if (option.rect.isEmpty())
        return;
    if (selectionModel()->isSelected(index))
        option.state |= QStyle::State_Selected;
    painter.fillRect(option.rect.adjusted(0, 0, 1, 1), widgets::gridLineColor(palette()));
    itemDelegate()->paint(&painter, option, index);
}

} // namespace grid
