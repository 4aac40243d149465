#include "workbooks/ui/WorksheetView.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>

#include "platform/widgets/CellClip.h"
#include "platform/widgets/FindBar.h"
#include "platform/widgets/Screen.h"
#include "workbooks/model/Points.h"
#include "workbooks/ui/CellDisplay.h"
#include "workbooks/ui/SheetLayout.h"
#include "workbooks/ui/WorksheetDelegate.h"

namespace excel {

using namespace Qt::StringLiterals;

namespace {

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
    setItemDelegate(new WorksheetDelegate(this));
    for (QHeaderView* header : {horizontalHeader(), verticalHeader()}) {
        header->setMinimumSectionSize(1);
        header->setSectionResizeMode(QHeaderView::Interactive);
    }
    verticalHeader()->setDefaultAlignment(Qt::AlignCenter);
    setShowGrid(false); // the delegate draws the lines, lest they cover the borders
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
    loadPictures();
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

void WorksheetView::loadPictures()
{
    m_pictures.clear();
    if (m_model->sheet() == nullptr)
        return;
    for (const Picture& picture : m_model->sheet()->pictures()) {
        const QRect place(
            pixels(picture.Left(), logicalDpiX()), pixels(picture.Top(), logicalDpiY()),
            pixels(picture.Width(), logicalDpiX()), pixels(picture.Height(), logicalDpiY()));
        QPixmap pixmap;
        if (pixmap.loadFromData(picture.bytes()))
            m_pictures.push_back({place, pixmap});
    }
}

void WorksheetView::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    QPainter painter(viewport());
    painter.translate(-horizontalOffset(), -verticalOffset());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (const ShownPicture& picture : m_pictures)
        painter.drawPixmap(picture.place, picture.pixmap);
}

CellRange WorksheetView::blockAt(int row, int column) const
{
    return {row, column, row + rowSpan(row - 1, column - 1) - 1,
            column + columnSpan(row - 1, column - 1) - 1};
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
                cells.append(displayText(m_model->value(row + 1, column + 1)));
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
        if (cell.column < low || cell.column > high || isColumnHidden(cell.column - 1)
            || !displayText(cell.value).contains(text, Qt::CaseInsensitive))
            continue;
        found = cell.column;
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
