#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QMimeData>
#include <QMouseEvent>
#include <QPointer>
#include <QScrollBar>
#include <QWheelEvent>

#include "platform/grid/ui/CursorKeys.h"
#include "platform/grid/ui/FlexGridView.h"
#include "platform/widgets/FindBar.h"

// What keys, mouse and wheel do in a FlexGridView.

namespace grid {

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
    else if (!moveByKey(*event))
        event->ignore();
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
}

/// One row a notch.
void FlexGridView::wheelEvent(QWheelEvent* event)
{
    if (event->modifiers() != Qt::NoModifier || event->angleDelta().y() == 0)
        return QTableView::wheelEvent(event);
    m_wheelRest += event->angleDelta().y();
    const int notches = m_wheelRest / QWheelEvent::DefaultDeltasPerStep;
    m_wheelRest -= notches * QWheelEvent::DefaultDeltasPerStep;
    event->accept();
    const int first = std::min(m_grid.FixedRows, m_model->rowCount() - 1);
    if (notches == 0 || first < 0)
        return;
    int row = verticalHeader()->logicalIndexAt(fixedSize().height());
    for (int i = 0; i < std::abs(notches); ++i)
        row = nextShown(verticalHeader(), row, notches > 0 ? -1 : 1, first);
    verticalScrollBar()->setValue(verticalHeader()->sectionPosition(row)
                                  - verticalHeader()->sectionPosition(first));
}

} // namespace grid
