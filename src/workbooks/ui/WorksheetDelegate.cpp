#include "workbooks/ui/WorksheetDelegate.h"

#include <algorithm>

#include <QFontMetricsF>
#include <QPainter>

#include "platform/widgets/MixedColor.h"
#include "workbooks/ui/CellDisplay.h"
#include "workbooks/ui/SheetLayout.h"
#include "workbooks/ui/WorksheetView.h"

namespace excel {

namespace {

constexpr double selectionShare = 0.25;

// Columns that a text is followed over.
constexpr int farthest = 60;

void drawEdge(QPainter& painter, const QPen& pen, const QPointF& from, const QPointF& to)
{
    if (pen.style() == Qt::NoPen)
        return;
    painter.setPen(pen);
    painter.drawLine(from, to);
}

/// Lines run along the last pixels of a cell. `reach` is how far they begin ahead of it, where they
/// meet the lines of its neighbours.
void drawEdges(QPainter& painter, const QRectF& cell, const QPen& right, const QPen& bottom,
               double reach)
{
    drawEdge(painter, bottom, cell.bottomLeft() - QPointF(reach, 0.5),
             cell.bottomRight() - QPointF(0.5, 0.5));
    drawEdge(painter, right, cell.topRight() - QPointF(0.5, reach),
             cell.bottomRight() - QPointF(0.5, 0.5));
}

} // namespace

/// The text that stands in a cell: its own or that of a cell at its left.
struct WorksheetDelegate::RunningText
{
    int column = 0; // of the text; 0 for none
    double left = 0;
    double end = 0; // where it ends, in the view's pixels
};

WorksheetDelegate::WorksheetDelegate(WorksheetView* view) : QStyledItemDelegate(view), m_view(view)
{
}

WorksheetDelegate::RunningText WorksheetDelegate::textRunningInto(int row, int column) const
{
    const Row* cells = m_view->sheetModel().sheet()->table().row(row);
    if (cells == nullptr)
        return {};
    auto cell = std::upper_bound(cells->cells.begin(), cells->cells.end(), column,
                                 [](int wanted, const Cell& one) { return wanted < one.column; });
    while (cell != cells->cells.begin() && std::prev(cell)->value.isNull())
        --cell;
    if (cell == cells->cells.begin())
        return {};
    --cell;
    const CellFormat& format = m_view->sheetModel().format(row, cell->column);
    const bool runs = cell->value.kind() == runtime::Value::Kind::Text && !format.wrapText
                      && displayAlignment(format, cell->value).testFlag(Qt::AlignLeft);
    if (column - cell->column > farthest)
        return {};
    for (int crossed = cell->column; crossed <= column; ++crossed) {
        if (m_view->blockAt(row, crossed) != CellRange{row, crossed, row, crossed})
            return {};
    }
    const double left = m_view->columnViewportPosition(cell->column - 1);
    if (!runs)
        return {cell->column, left, left};
    const QFontMetricsF metrics(displayFont(format), m_view->viewport());
    return {cell->column, left,
            left + 2 * textMargin(metrics)
                + metrics.horizontalAdvance(excel::displayText(cell->value))};
}

/// The selection tints its cells, and the current one has a frame.
void WorksheetDelegate::drawGround(QPainter* painter, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const
{
    const QPalette& palette = m_view->palette();
    const bool current = index == m_view->currentIndex();
    const bool tinted = (option.state & QStyle::State_Selected) && !current;
    painter->fillRect(option.rect, widgets::mixedColor(palette.color(QPalette::Base),
                                                       palette.color(QPalette::Highlight),
                                                       tinted ? selectionShare : 0));
}

void WorksheetDelegate::drawText(QPainter* painter, const QRectF& cell, int row, int column,
                                 const RunningText& text) const
{
    const WorksheetModel& model = m_view->sheetModel();
    const bool fromLeft = text.column > 0 && text.column < column && text.end > cell.left();
    const int source = fromLeft ? text.column : column;
    const QRectF area =
        fromLeft ? QRectF(QPointF(text.left, cell.top()), QPointF(text.end, cell.bottom())) : cell;
    drawCellText(*painter, area, cell, model.format(row, source), model.value(row, source),
                 m_view->palette().color(QPalette::Text));
}

void WorksheetDelegate::drawBorders(QPainter* painter, const QRectF& cell,
                                    const CellRange& block) const
{
    const CellBorders lines = bordersOf(*m_view->sheetModel().sheet(), block);
    const QColor ink = m_view->palette().color(QPalette::Text);
    drawEdges(*painter, cell, borderPen(lines.right, ink, 1), borderPen(lines.bottom, ink, 1), 0.5);
    if (block.firstColumn == 1)
        drawEdge(*painter, borderPen(lines.left, ink, 1), cell.topLeft() + QPointF(0.5, 0),
                 cell.bottomLeft() + QPointF(0.5, 0));
    if (block.firstRow == 1)
        drawEdge(*painter, borderPen(lines.top, ink, 1), cell.topLeft() + QPointF(0, 0.5),
                 cell.topRight() + QPointF(0, 0.5));
}

void WorksheetDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const
{
    if (m_view->sheetModel().sheet() == nullptr)
        return;
    const int row = index.row() + 1;
    const int column = index.column() + 1;
    const QRectF cell(option.rect);
    const CellRange block = m_view->blockAt(row, column);
    const bool single = block == CellRange{row, column, row, column};
    const RunningText text = single ? textRunningInto(row, column) : RunningText();
    const bool runsOn =
        text.end > cell.right() + 1 && textRunningInto(row, column + 1).column == text.column;
    const QPalette& palette = m_view->palette();
    const QPen grid(widgets::gridLineColor(palette));

    painter->save();
    drawGround(painter, option, index);
    drawEdges(*painter, cell, runsOn ? QPen(Qt::NoPen) : grid, grid, -0.5);
    drawText(painter, cell, row, column, text);
    drawBorders(painter, cell, block);
    if (index == m_view->currentIndex()) {
        painter->setPen(QPen(palette.color(QPalette::Highlight), 2));
        painter->drawRect(cell.adjusted(1, 1, -1, -1));
    }
    painter->restore();
}

QSize WorksheetDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const
{
    const WorksheetModel& model = m_view->sheetModel();
    if (model.sheet() == nullptr)
        return {};
    const QFontMetricsF metrics(displayFont(model.format(index.row() + 1, index.column() + 1)),
                                m_view->viewport());
    const QString text = index.data(Qt::DisplayRole).toString();
    return QSizeF(metrics.horizontalAdvance(text) + 4 * textMargin(metrics), metrics.height())
        .toSize();
}

} // namespace excel
