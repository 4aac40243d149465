#include "platform/grid/ui/FlexGridView.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPointer>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QWheelEvent>

#include <numeric>

#include "platform/grid/GridFind.h"
#include "platform/grid/ui/CursorKeys.h"
#include "platform/grid/ui/FixedCellsPainter.h"
#include "platform/grid/ui/GridCellDelegate.h"
#include "platform/widgets/CellClip.h"
#include "platform/widgets/FindBar.h"

namespace grid {

namespace {

constexpr int TwipsPerInch = 1440;
constexpr int RowPadding = 8;

bool isEnter(const QKeyEvent& key)
{
    const bool plain = !(key.modifiers() & ~Qt::KeypadModifier);
    return plain && (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter);
}

/// The smallest block that covers the selection.
QRect selectedBlock(const QItemSelection& selection)
{
    QRect block;
    for (const QItemSelectionRange& range : selection)
        block |= QRect(range.left(), range.top(), range.width(), range.height());
    return block;
}

} // namespace

FlexGridView::FlexGridView(FlexGrid& grid, QWidget* parent)
    : QTableView(parent),
      m_grid(grid),
      m_geometry(*this, grid),
      m_columnDrag(*this, m_geometry),
      m_blockDrag(*this),
      m_wheel(*this),
      m_model(new FlexGridModel(grid, this)),
      m_findBar(new widgets::FindBar(this, [this](const QString& text, Qt::SortOrder direction) {
          return findText(text, direction);
      }))
{
    setModel(m_model);
    setItemDelegate(new GridCellDelegate(this));
    hideHeaders();
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerPixel);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(ContiguousSelection);
    setTabKeyNavigation(false);
    setAutoScroll(false);
    viewport()->setMouseTracking(true);
    refresh();
}

/// The headings are cells of the grid.
void FlexGridView::hideHeaders()
{
    horizontalHeader()->hide();
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(1);
    horizontalHeader()->setMinimumSectionSize(0);
}

int FlexGridView::pixels(int twips) const
{
    return twips * logicalDpiX() / TwipsPerInch;
}

int FlexGridView::twips(int pixels) const
{
    // Rounded up, so that the way back gives the same pixels.
    return (pixels * TwipsPerInch + logicalDpiX() - 1) / logicalDpiX();
}

void FlexGridView::refresh()
{
    if (!m_grid.Redraw)
        return;
    const QPoint place(horizontalScrollBar()->value(), verticalScrollBar()->value());
    {
        const QScopedValueRollback keeping(m_keeping, true);
        setUpdatesEnabled(false);
        m_model->reload();
        setWordWrap(m_grid.WordWrap);
        applySizes();
        applySpans();
        executeDelayedItemsLayout();
        horizontalScrollBar()->setValue(place.x());
        verticalScrollBar()->setValue(place.y());
        // Rows that came below headings alone: the first of them is chosen, not a heading.
        keepBlock(std::max(m_grid.Row, m_grid.FixedRows), m_grid.Col,
                  std::max(m_grid.RowSel, m_grid.FixedRows), m_grid.ColSel);
        setUpdatesEnabled(true);
    }
    // A window of its own is shown by whoever made it.
    if (m_shown != m_grid.Visible)
        setVisible(m_shown = m_grid.Visible);
}

void FlexGridView::refreshCell(int row, int col)
{
    m_model->reloadCell(row, col);
}

/// A row of the control's default height holds one line of text, others as many as their share.
void FlexGridView::applySizes()
{
    const int line = fontMetrics().height();
    verticalHeader()->setDefaultSectionSize(line + RowPadding);
    for (int row = 0; row < m_grid.Rows(); ++row) {
        const int twips = m_grid.RowHeight(row);
        verticalHeader()->setSectionHidden(row, twips == 0);
        if (twips > 0 && twips != FlexGrid::DefaultRowHeight)
            verticalHeader()->resizeSection(row,
                                            line * twips / FlexGrid::DefaultRowHeight + RowPadding);
    }
    for (int col = 0; col < m_grid.Cols(); ++col) {
        setColumnHidden(col, m_grid.ColWidth(col) == 0);
        if (m_grid.ColWidth(col) > 0)
            setColumnWidth(col, pixels(m_grid.ColWidth(col)) + line);
    }
}

void FlexGridView::shareWidth(std::span<const int> parts)
{
    // applySizes() widens each column by the height of a line.
    const int air = fontMetrics().height();
    const int all = std::max(1, std::accumulate(parts.begin(), parts.end(), 0));
    const int width = viewport()->width();
    int before = 0;
    for (int col = 0; col < int(parts.size()); ++col) {
        const int left = width * before / all;
        before += parts[col];
        const int share = width * before / all - left;
        m_grid.setColWidth(col, std::max(1, twips(share - air)));
    }
    refresh();
}

void FlexGridView::applySpans()
{
    clearSpans();
    m_fixedSpans.clear();
    for (const GridSpan& span : gridSpans(m_grid)) {
        setSpan(span.row, span.col, span.rows, span.cols);
        if (isFixed(span.row, span.col))
            m_fixedSpans.push_back(span);
    }
}

QModelIndex FlexGridView::indexAt(const QPoint& place) const
{
    return QTableView::indexAt(m_geometry.unscrolled(place));
}

QRect FlexGridView::visualRect(const QModelIndex& index) const
{
    const QRect rect = QTableView::visualRect(index);
    return index.isValid() ? rect.translated(m_geometry.stay(index)) : rect;
}

/// The cell must not hide under the fixed part.
void FlexGridView::scrollTo(const QModelIndex& index, ScrollHint)
{
    if (!index.isValid())
        return;
    const QRect cell = visualRect(index);
    const QRect part = shownPart(index.row(), index.column());
    const auto distance = [](int low, int high, int least, int most) {
        if (low < least || high - low > most - least)
            return low - least;
        return std::max(high - most, 0);
    };
    if (index.column() >= m_grid.FixedCols)
        horizontalScrollBar()->setValue(
            horizontalScrollBar()->value()
            + distance(cell.left(), cell.right(), part.left(), part.right()));
    if (index.row() >= m_grid.FixedRows)
        verticalScrollBar()->setValue(
            verticalScrollBar()->value()
            + distance(cell.top(), cell.bottom(), part.top(), part.bottom()));
}

void FlexGridView::scrollContentsBy(int dx, int dy)
{
    QTableView::scrollContentsBy(dx, dy);
    // The fixed cells stay, and the texts of merged blocks move to the middle of what is seen.
    viewport()->update();
    const int top = verticalHeader()->logicalIndexAt(fixedSize().height());
    if (top >= 0)
        m_grid.TopRow = top;
    if (!m_keeping)
        Q_EMIT scrolled();
}

bool FlexGridView::isCurrentCell(const QModelIndex& index) const
{
    return index.row() == m_grid.RowSel && index.column() == m_grid.ColSel;
}

/// Selects on the screen and notes in the grid, without scrolling.
void FlexGridView::keepBlock(int row, int col, int rowSel, int colSel)
{
    const QScopedValueRollback keeping(m_keeping, true);
    const auto inside = [](int line, int count) { return std::clamp(line, 0, count - 1); };
    const int rows = m_model->rowCount();
    const int cols = m_model->columnCount();
    if (rows == 0 || cols == 0)
        return;
    const QModelIndex first = m_model->index(inside(row, rows), inside(col, cols));
    const QModelIndex last = m_model->index(inside(rowSel, rows), inside(colSel, cols));
    const auto [top, bottom] = std::minmax({first.row(), last.row()});
    const auto [left, right] = std::minmax({first.column(), last.column()});
    selectionModel()->setCurrentIndex(last, QItemSelectionModel::NoUpdate);
    // Headings with nothing below them are not chosen.
    if (rows <= m_grid.FixedRows)
        selectionModel()->clearSelection();
    else
        selectionModel()->select({m_model->index(top, left), m_model->index(bottom, right)},
                                 QItemSelectionModel::ClearAndSelect);
    m_grid.Row = inside(std::max(first.row(), m_grid.FixedRows), rows);
    m_grid.Col = inside(std::max(first.column(), m_grid.FixedCols), cols);
    m_grid.RowSel = inside(std::max(last.row(), m_grid.FixedRows), rows);
    m_grid.ColSel = inside(std::max(last.column(), m_grid.FixedCols), cols);
    switchInputMethod();
}

void FlexGridView::select(int row, int col, int rowSel, int colSel)
{
    const std::pair before(m_grid.Row, m_grid.Col);
    keepBlock(row, col, rowSel, colSel);
    scrollTo(currentIndex());
    if (before != std::pair(m_grid.Row, m_grid.Col))
        Q_EMIT rowColChanged();
}

void FlexGridView::selectAll()
{
    keepBlock(m_model->rowCount() - 1, m_model->columnCount() - 1, 0, 0);
}

void FlexGridView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    if (m_keeping || !current.isValid())
        return QTableView::currentChanged(current, previous);
    m_grid.RowSel = m_grid.Row = current.row();
    m_grid.ColSel = m_grid.Col = current.column();
    scrollTo(current);
    viewport()->update();
    switchInputMethod();
    Q_EMIT rowColChanged();
}

void FlexGridView::setTypedInto(std::function<bool(int row, int col)> isTypedInto)
{
    m_isTypedInto = std::move(isTypedInto);
    switchInputMethod();
}

/// The base class switches it off whenever the focus or the current cell changes, as its own
/// editing is off.
void FlexGridView::switchInputMethod()
{
    const bool isTyped =
        m_isTypedInto && currentIndex().isValid() && m_isTypedInto(m_grid.Row, m_grid.Col);
    setAttribute(Qt::WA_InputMethodEnabled, isTyped);
}

void FlexGridView::focusInEvent(QFocusEvent* event)
{
    QTableView::focusInEvent(event);
    switchInputMethod();
}

QMimeData* FlexGridView::selectedCells() const
{
    const QRect grid(0, 0, m_grid.Cols(), m_grid.Rows());
    const QRect block = selectedBlock(selectionModel()->selection()) & grid;
    std::vector<QStringList> rows;
    for (int row = block.top(); row <= block.bottom(); ++row) {
        QStringList cells;
        for (int col = block.left(); col <= block.right(); ++col) {
            if (m_grid.ColWidth(col) != 0)
                cells.append(m_grid.TextMatrix(row, col));
        }
        rows.push_back(cells);
    }
    return widgets::cellsForClipboard(rows);
}

bool FlexGridView::findText(const QString& text, Qt::SortOrder direction)
{
    const QModelIndex current = currentIndex();
    std::optional<CellPlace> from;
    if (current.isValid())
        from = {current.row(), current.column()};
    const std::optional<CellPlace> found = findCell(m_grid, from, text, direction);
    if (found)
        select(found->row, found->col, found->row, found->col);
    return found.has_value();
}

void FlexGridView::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        QApplication::clipboard()->setMimeData(selectedCells());
    else if (event->matches(QKeySequence::SelectAll))
        selectAll();
    else if (event->matches(QKeySequence::Find))
        m_findBar->open();
    else if (event->matches(QKeySequence::FindNext))
        m_findBar->find(Qt::AscendingOrder);
    else if (event->matches(QKeySequence::FindPrevious))
        m_findBar->find(Qt::DescendingOrder);
    else if (!moveByKey(*event)) {
        // Others have a use for the key as well.
        event->ignore();
        if (isEnter(*event))
            activateCurrent();
    }
}

void FlexGridView::activateCurrent()
{
    if (currentIndex().isValid())
        Q_EMIT cellActivated(m_grid.RowSel, m_grid.ColSel);
}

bool FlexGridView::moveByKey(const QKeyEvent& key)
{
    const std::optional<CellPlace> to = CursorKeys(*this).target(key);
    if (!to)
        return false;
    const bool extend = key.modifiers() & Qt::ShiftModifier;
    select(extend ? m_grid.Row : to->row, extend ? m_grid.Col : to->col, to->row, to->col);
    return true;
}

void FlexGridView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_pressed = m_columnDrag.start(event->pos()) ? QModelIndex() : indexAt(event->pos());
    if (m_pressed.isValid())
        pressCell(m_pressed, event->modifiers());
}

void FlexGridView::mouseDoubleClickEvent(QMouseEvent* event)
{
    mousePressEvent(event);
    m_doubleClicked = event->button() == Qt::LeftButton;
}

/// A heading stands for its whole row or column, the corner for the grid.
void FlexGridView::pressCell(const QModelIndex& index, Qt::KeyboardModifiers modifiers)
{
    const bool headingRow = index.row() < m_grid.FixedRows;
    const bool headingCol = index.column() < m_grid.FixedCols;
    const bool extend = modifiers & Qt::ShiftModifier;
    m_blockDrag.finish();
    if (headingRow && headingCol)
        selectAll();
    else if (headingRow)
        keepBlock(m_model->rowCount() - 1, index.column(), 0, index.column());
    else if (headingCol)
        keepBlock(index.row(), m_model->columnCount() - 1, index.row(), 0);
    else {
        m_blockDrag.start();
        select(extend ? m_grid.Row : index.row(), extend ? m_grid.Col : index.column(), index.row(),
               index.column());
    }
    viewport()->update();
}

void FlexGridView::mouseMoveEvent(QMouseEvent* event)
{
    if (m_columnDrag.isActive())
        return m_columnDrag.moveTo(event->pos().x());
    if (!(event->buttons() & Qt::LeftButton)) {
        viewport()->setCursor(m_columnDrag.edgeAt(event->pos()) >= 0 ? Qt::SplitHCursor
                                                                     : Qt::ArrowCursor);
        return;
    }
    if (m_blockDrag.isActive())
        m_blockDrag.moveTo(event->pos());
}

void FlexGridView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const bool isSecond = std::exchange(m_doubleClicked, false);
    m_blockDrag.finish();
    const int dragged = m_columnDrag.finish();
    if (dragged >= 0) {
        Q_EMIT columnDragged(dragged);
        return;
    }
    const QModelIndex pressed = std::exchange(m_pressed, QModelIndex());
    const QModelIndex released = indexAt(event->pos());
    if (!released.isValid())
        return;
    const int row = released.row();
    const int col = released.column();
    const QPointer<FlexGridView> alive(this);
    if (pressed == released)
        Q_EMIT cellClicked(row, col);
    if (alive)
        Q_EMIT cellReleased(row, col);
    if (alive && isSecond && pressed == released)
        Q_EMIT cellActivated(row, col);
}

void FlexGridView::wheelEvent(QWheelEvent* event)
{
    if (event->modifiers() != Qt::NoModifier || event->angleDelta().y() == 0)
        return QTableView::wheelEvent(event);
    m_wheel.turn(event->angleDelta().y());
    event->accept();
}

void FlexGridView::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    m_findBar->place();
}

void FlexGridView::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    QPainter painter(viewport());
    painter.setClipRegion(event->region());
    FixedCellsPainter(*this, m_fixedSpans, option).paint(painter);
}

void FlexGridView::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        refresh();
}

void FlexGridView::contextMenuEvent(QContextMenuEvent* event)
{
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QRect cell = visualRect(currentIndex());
    Q_EMIT menuRequested(byKey && cell.isValid() ? viewport()->mapToGlobal(cell.center())
                                                 : event->globalPos());
}

} // namespace grid
