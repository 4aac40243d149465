#include "workbooks/ui/WorksheetView.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include "platform/widgets/CellClip.h"
#include "platform/widgets/FindBar.h"
#include "platform/widgets/MixedColor.h"
#include "platform/widgets/Screen.h"
#include "workbooks/model/Points.h"
#include "workbooks/ui/CellDisplay.h"

namespace excel {

using namespace Qt::StringLiterals;

namespace {

constexpr double selectionShare = 0.25;

int pixels(double points, int dotsPerInch)
{
    return qRound(points * dotsPerInch / pointsPerInch);
}

/// Most lines of a sheet have the standard size: setting it once is what makes this quick.
void applyLines(QHeaderView* header, const std::vector<double>& points, double standard, int dots)
{
    for (int line = 0; line < header->count() && header->hiddenSectionCount() > 0; ++line)
        header->setSectionHidden(line, false);
    header->setDefaultSectionSize(pixels(standard, dots));
    for (int line = 0; line < int(points.size()); ++line) {
        const double size = points[size_t(line)];
        if (size <= 0)
            header->setSectionHidden(line, true);
        else if (size != standard)
            header->resizeSection(line, std::max(1, pixels(size, dots)));
    }
}

/// The places of a view's cells in its viewport, in the sizes that the user gave them.
class ViewPlaces : public SheetPlaces
{
public:
    explicit ViewPlaces(const WorksheetView& view) : m_view(view) {}

    double left(int column) const override { return m_view.columnViewportPosition(column - 1); }
    double top(int row) const override { return m_view.rowViewportPosition(row - 1); }
    double width(int column) const override { return m_view.columnWidth(column - 1); }
    double height(int row) const override { return m_view.rowHeight(row - 1); }
    QRectF bounds() const override
    {
        return QRect(corner(),
                     QSize(m_view.horizontalHeader()->length(), m_view.verticalHeader()->length()));
    }

private:
    QPoint corner() const
    {
        return {-m_view.horizontalHeader()->offset(), -m_view.verticalHeader()->offset()};
    }

    const WorksheetView& m_view;
};

/// Tells the room that a cell needs, for headers that fit their column to it.
class CellSizes : public QStyledItemDelegate
{
public:
    explicit CellSizes(WorksheetView* view) : QStyledItemDelegate(view), m_view(view) {}

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const override
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

private:
    const WorksheetView* m_view;
};

} // namespace

WorksheetView::WorksheetView(QWidget* parent)
    : QTableView(parent),
      m_model(new WorksheetModel(this)),
      m_findBar(new widgets::FindBar(this, [this](const QString& text, Qt::SortOrder direction) {
          return findText(text, direction);
      }))
{
    widgets::named(this, u"SheetView"_s, u"工作表内容"_s);
    setModel(m_model);
    setItemDelegate(new CellSizes(this));
    for (QHeaderView* header : {horizontalHeader(), verticalHeader()}) {
        header->setMinimumSectionSize(1);
        header->setSectionResizeMode(QHeaderView::Interactive);
    }
    verticalHeader()->setDefaultAlignment(Qt::AlignCenter);
    setShowGrid(false); // the sheet's painter draws the lines, lest they cover the borders
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerPixel);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(ContiguousSelection);
    setTabKeyNavigation(false);
}

/// The selected cells as the model counts them (x: columns, y: rows).
QRect WorksheetView::selectedBlock() const
{
    QRect block;
    for (const QItemSelectionRange& range : selectionModel()->selection())
        block |= QRect(range.left(), range.top(), range.width(), range.height());
    return block;
}

void WorksheetView::showSheet(const Worksheet* sheet)
{
    const bool same = sheet == m_model->sheet();
    const QPoint place(horizontalScrollBar()->value(), verticalScrollBar()->value());
    const QPoint current(currentIndex().column(), currentIndex().row());
    const QRect block = selectedBlock();
    setUpdatesEnabled(false);
    m_model->show(sheet);
    applySizes();
    applySpans();
    if (sheet == nullptr)
        m_painter.reset();
    else if (!same)
        m_painter = std::make_unique<SheetPainter>(*sheet);
    executeDelayedItemsLayout();
    if (same && m_model->hasIndex(current.y(), current.x())) {
        select(block, current);
        horizontalScrollBar()->setValue(place.x());
        verticalScrollBar()->setValue(place.y());
    } else if (sheet != nullptr) {
        scrollToTop();
        goTo(1, 1);
    }
    setUpdatesEnabled(true);
}

void WorksheetView::select(const QRect& block, const QPoint& current)
{
    const QRect shown = block & QRect(0, 0, m_model->columnCount(), m_model->rowCount());
    const QItemSelection cells(m_model->index(shown.top(), shown.left()),
                               m_model->index(shown.bottom(), shown.right()));
    selectionModel()->select(cells, QItemSelectionModel::ClearAndSelect);
    selectionModel()->setCurrentIndex(m_model->index(current.y(), current.x()),
                                      QItemSelectionModel::NoUpdate);
}

void WorksheetView::applySizes()
{
    const Worksheet* sheet = m_model->sheet();
    if (sheet == nullptr)
        return;
    applyLines(verticalHeader(), sheet->geometry().shownRowHeights(m_model->rowCount()),
               SheetGeometry::standardRowHeight, logicalDpiY());
    const std::vector<double> widths = sheet->geometry().columnPoints(m_model->columnCount());
    applyLines(horizontalHeader(), widths, widths.back(), logicalDpiX());
}

void WorksheetView::applySpans()
{
    clearSpans();
    if (m_model->sheet() == nullptr)
        return;
    for (const CellRange& merge : m_model->sheet()->merges().settled())
        setSpan(merge.firstRow - 1, merge.firstColumn - 1, merge.lastRow - merge.firstRow + 1,
                merge.lastColumn - merge.firstColumn + 1);
}

/// The cells under a part of the viewport.
CellRange WorksheetView::cellsIn(const QRect& area) const
{
    const auto last = [](int found, int count) { return found < 0 ? count : found + 1; };
    return {rowAt(area.top()) + 1, columnAt(area.left()) + 1,
            last(rowAt(area.bottom()), m_model->rowCount()),
            last(columnAt(area.right()), m_model->columnCount())};
}

/// The selection tints its cells, all but the current one.
void WorksheetView::tintSelection(QPainter& painter, const CellRange& shown) const
{
    const QColor base = palette().color(QPalette::Base);
    const QColor tint =
        widgets::mixedColor(base, palette().color(QPalette::Highlight), selectionShare);
    for (int row = shown.firstRow; row <= shown.lastRow; ++row) {
        for (int column = shown.firstColumn; column <= shown.lastColumn; ++column) {
            const QModelIndex index = m_model->index(row - 1, column - 1);
            if (selectionModel()->isSelected(index))
                painter.fillRect(visualRect(index), tint);
        }
    }
    painter.fillRect(visualRect(currentIndex()), base);
}

/// The current cell has a frame.
void WorksheetView::drawFrame(QPainter& painter) const
{
    const QRectF cell = visualRect(currentIndex());
    if (cell.isEmpty())
        return;
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(cell.adjusted(1, 1, -1, -1));
}

SheetLook WorksheetView::sheetLook() const
{
    SheetLook look;
    look.ink = palette().color(QPalette::Text);
    look.grid = widgets::gridLineColor(palette());
    look.scale = logicalDpiY() / pointsPerInch;
    look.inset = 0.5;
    look.lines = SheetLook::Lines::RightAndLower;
    return look;
}

void WorksheetView::paintEvent(QPaintEvent* event)
{
    if (m_painter == nullptr)
        return;
    const CellRange shown = cellsIn(event->rect());
    if (shown.firstRow < 1 || shown.firstColumn < 1)
        return;
    const ViewPlaces places(*this);
    const SheetLook look = sheetLook();
    QPainter painter(viewport());
    tintSelection(painter, shown);
    m_painter->paintCells(painter, places, look, shown);
    drawFrame(painter);
    m_painter->paintDrawings(painter, places, look, shown);
}

QMimeData* WorksheetView::selectedCells() const
{
    const CellRange& used = m_model->used();
    const QRect block = selectedBlock() & QRect(0, 0, used.lastColumn, used.lastRow);
    std::vector<QStringList> rows;
    for (int row = block.top(); row <= block.bottom(); ++row) {
        if (isRowHidden(row))
            continue;
        QStringList cells;
        for (int column = block.left(); column <= block.right(); ++column) {
            if (!isColumnHidden(column))
                cells.append(m_model->copiedText(row + 1, column + 1));
        }
        rows.push_back(cells);
    }
    return widgets::cellsForClipboard(rows);
}

void WorksheetView::copy() const
{
    if (m_model->sheet() != nullptr)
        QApplication::clipboard()->setMimeData(selectedCells());
}

/// The nearest column from `low` to `high` whose shown text contains `text`; 0 if there is none.
int WorksheetView::matchIn(int row, int low, int high, const QString& text,
                           Qt::SortOrder direction) const
{
    const Row* cells = m_model->sheet()->table().row(row);
    if (cells == nullptr || isRowHidden(row - 1))
        return 0;
    int found = 0;
    for (const Cell& cell : cells->cells) {
        if (cell.column() < low || cell.column() > high || isColumnHidden(cell.column() - 1)
            || !displayText(cell.value()).contains(text, Qt::CaseInsensitive)
            || m_model->isCovered(row, cell.column()))
            continue;
        found = cell.column();
        if (direction == Qt::AscendingOrder)
            break;
    }
    return found;
}

bool WorksheetView::findText(const QString& text, Qt::SortOrder direction)
{
    if (text.isEmpty() || m_model->sheet() == nullptr)
        return false;
    const bool onward = direction == Qt::AscendingOrder;
    const int rows = m_model->used().lastRow;
    const int start = std::clamp(currentIndex().row() + 1, 1, rows);
    const int column = currentIndex().column() + 1;
    for (int i = 0; i <= rows; ++i) {
        const int row = (start - 1 + (onward ? i : rows - i)) % rows + 1;
        int low = 1;
        int high = lastGridColumn;
        // The current row comes twice: at first what lies beyond the cell, last what lies before
        // it.
        if (i == 0)
            (onward ? low : high) = onward ? column + 1 : column - 1;
        if (i == rows)
            (onward ? high : low) = column;
        if (const int match = matchIn(row, low, high, text, direction)) {
            goTo(row, match);
            return true;
        }
    }
    return false;
}

void WorksheetView::goTo(int row, int column)
{
    setCurrentIndex(m_model->index(row - 1, column - 1));
}

QString WorksheetView::chartTitleAt(int row, int column) const
{
    return m_painter != nullptr ? m_painter->drawings().chartTitleAt(row, column) : QString();
}

void WorksheetView::openFind()
{
    m_findBar->open();
}

void WorksheetView::findAgain(Qt::SortOrder direction)
{
    m_findBar->find(direction);
}

void WorksheetView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_End && event->modifiers() == Qt::ControlModifier)
        goTo(m_model->used().lastRow, m_model->used().lastColumn);
    else
        QTableView::keyPressEvent(event);
}

void WorksheetView::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    m_findBar->place();
}

void WorksheetView::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange && m_model != nullptr)
        applySizes();
}

void WorksheetView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTableView::currentChanged(current, previous);
    // Another cell's frame ends where this one begins.
    viewport()->update();
    Q_EMIT currentCellChanged(current.row() + 1, current.column() + 1);
}

} // namespace excel
