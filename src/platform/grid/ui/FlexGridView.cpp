#include "platform/grid/ui/FlexGridView.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QInputDialog>
#include <QMimeData>
#include <QScrollBar>
#include <QWheelEvent>

#include "platform/grid/GridSpans.h"

namespace grid {

using namespace Qt::StringLiterals;

namespace {

constexpr int twipsPerInch = 1440;

/// The smallest block that covers the selection.
QRect selectedBlock(const QItemSelection& selection)
{
    QRect block;
    for (const QItemSelectionRange& range : selection)
        block |= QRect(range.left(), range.top(), range.width(), range.height());
    return block;
}

} // namespace

FlexGridView::FlexGridView(const FlexGrid& grid, QWidget* parent)
    : QTableView(parent), m_grid(grid), m_model(new FlexGridModel(grid, this))
{
    setModel(m_model);
    setUpView(this);
    setSelectionMode(ContiguousSelection);
    m_fixedRows = makeOverlay(u"FixedRows"_s);
    m_fixedCols = makeOverlay(u"FixedCols"_s);
    m_corner = makeOverlay(u"FixedCorner"_s);
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, m_fixedRows->horizontalScrollBar(),
            &QScrollBar::setValue);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, m_fixedCols->verticalScrollBar(),
            &QScrollBar::setValue);
    refresh();
}

void FlexGridView::setUpView(QTableView* view) const
{
    view->horizontalHeader()->hide();
    view->verticalHeader()->hide();
    view->setHorizontalScrollMode(ScrollPerPixel);
    view->setVerticalScrollMode(ScrollPerPixel);
    view->setEditTriggers(NoEditTriggers);
    view->setWordWrap(false);
    view->verticalHeader()->setMinimumSectionSize(1);
    view->horizontalHeader()->setMinimumSectionSize(0);
}

/// A view over the fixed part, which shares cells and selection but does not scroll by itself.
QTableView* FlexGridView::makeOverlay(const QString& name)
{
    auto* overlay = new QTableView(this);
    overlay->setObjectName(name);
    overlay->setModel(m_model);
    overlay->setSelectionModel(selectionModel());
    setUpView(overlay);
    overlay->setFocusPolicy(Qt::NoFocus);
    overlay->setFrameShape(QFrame::NoFrame);
    overlay->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    overlay->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->stackUnder(overlay);
    return overlay;
}

int FlexGridView::pixels(int twips) const
{
    return twips * logicalDpiX() / twipsPerInch;
}

void FlexGridView::refresh()
{
    if (!m_grid.Redraw)
        return;
    setUpdatesEnabled(false);
    m_model->reload();
    for (QTableView* view : {static_cast<QTableView*>(this), m_fixedRows, m_fixedCols, m_corner})
        applySizes(view);
    applySpans();
    placeOverlays();
    setUpdatesEnabled(true);
}

void FlexGridView::applySizes(QTableView* view) const
{
    const int rowHeight = fontMetrics().height() + 8;
    view->verticalHeader()->setDefaultSectionSize(rowHeight);
    for (int col = 0; col < m_grid.Cols(); ++col) {
        view->setColumnHidden(col, m_grid.ColWidth(col) == 0);
        view->setColumnWidth(col, pixels(m_grid.ColWidth(col)) + fontMetrics().height());
    }
    for (int row = 0; row < m_grid.FixedRows && row < m_grid.Rows(); ++row)
        view->setRowHeight(row, std::max(rowHeight, pixels(m_grid.RowHeight(row))));
}

void FlexGridView::applySpans()
{
    const std::vector<GridSpan> spans = gridSpans(m_grid);
    for (QTableView* view : {static_cast<QTableView*>(this), m_fixedRows, m_fixedCols, m_corner}) {
        view->clearSpans();
        for (const GridSpan& span : spans)
            view->setSpan(span.row, span.col, span.rows, span.cols);
    }
}

int FlexGridView::fixedWidth() const
{
    int width = 0;
    for (int col = 0; col < m_grid.FixedCols && col < m_grid.Cols(); ++col)
        width += isColumnHidden(col) ? 0 : columnWidth(col);
    return width;
}

int FlexGridView::fixedHeight() const
{
    int height = 0;
    for (int row = 0; row < m_grid.FixedRows && row < m_grid.Rows(); ++row)
        height += rowHeight(row);
    return height;
}

void FlexGridView::placeOverlays()
{
    const QRect area = viewport()->geometry();
    const int width = std::min(fixedWidth(), area.width());
    const int height = std::min(fixedHeight(), area.height());
    m_fixedRows->setGeometry(area.left(), area.top(), area.width(), height);
    m_fixedCols->setGeometry(area.left(), area.top(), width, area.height());
    m_corner->setGeometry(area.left(), area.top(), width, height);
    m_fixedRows->setVisible(height > 0);
    m_fixedCols->setVisible(width > 0);
    m_corner->setVisible(height > 0 && width > 0);
    m_corner->raise();
    m_fixedRows->horizontalScrollBar()->setValue(horizontalScrollBar()->value());
    m_fixedCols->verticalScrollBar()->setValue(verticalScrollBar()->value());
}

void FlexGridView::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    placeOverlays();
}

/// The current cell must not hide under the fixed part.
void FlexGridView::scrollTo(const QModelIndex& index, ScrollHint hint)
{
    QTableView::scrollTo(index, hint);
    const QRect cell = visualRect(index);
    if (index.row() >= m_grid.FixedRows && cell.top() < fixedHeight())
        verticalScrollBar()->setValue(verticalScrollBar()->value() - fixedHeight() + cell.top());
    if (index.column() >= m_grid.FixedCols && cell.left() < fixedWidth())
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - fixedWidth()
                                        + cell.left());
}

/// One row a notch.
void FlexGridView::wheelEvent(QWheelEvent* event)
{
    if (event->modifiers() != Qt::NoModifier || event->angleDelta().y() == 0)
        return QTableView::wheelEvent(event);
    const int step = verticalHeader()->defaultSectionSize();
    const int notches = event->angleDelta().y() / QWheelEvent::DefaultDeltasPerStep;
    verticalScrollBar()->setValue(verticalScrollBar()->value() - step * notches);
    event->accept();
}

void FlexGridView::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        QApplication::clipboard()->setMimeData(selectedCells());
    else if (event->matches(QKeySequence::Find))
        askForText();
    else if (event->matches(QKeySequence::FindNext))
        findText(m_lastSearch);
    else
        QTableView::keyPressEvent(event);
}

void FlexGridView::contextMenuEvent(QContextMenuEvent* event)
{
    Q_EMIT menuRequested(event->globalPos());
}

QMimeData* FlexGridView::selectedCells() const
{
    const QRect block = selectedBlock(selectionModel()->selection());
    QString text;
    QString html = u"<table>"_s;
    for (int row = block.top(); row <= block.bottom(); ++row) {
        html += u"<tr>"_s;
        for (int col = block.left(); col <= block.right(); ++col) {
            const QString cell = m_grid.TextMatrix(row, col);
            text += (col > block.left() ? u"\t"_s : QString())
                + QString(cell).replace(u'\t', u' ').replace(u'\n', u' ');
            html += u"<td>"_s + cell.toHtmlEscaped() + u"</td>"_s;
        }
        text += u"\r\n"_s;
        html += u"</tr>"_s;
    }
    auto* cells = new QMimeData;
    cells->setText(text);
    cells->setHtml(html + u"</table>"_s);
    return cells;
}

void FlexGridView::askForText()
{
    bool given = false;
    const QString text = QInputDialog::getText(this, u"查找"_s, u"查找内容："_s,
                                               QLineEdit::Normal, m_lastSearch, &given);
    if (given)
        findText(text);
}

bool FlexGridView::findText(const QString& text, Qt::SortOrder direction)
{
    m_lastSearch = text;
    const int cells = m_grid.Rows() * m_grid.Cols();
    if (text.isEmpty() || cells == 0)
        return false;
    const int start = currentIndex().isValid()
        ? currentIndex().row() * m_grid.Cols() + currentIndex().column()
        : -1;
    const int step = direction == Qt::AscendingOrder ? 1 : cells - 1;
    for (int i = 0, at = start < 0 ? cells - 1 : start; i < cells; ++i) {
        at = (at + step) % cells;
        const int row = at / m_grid.Cols();
        const int col = at % m_grid.Cols();
        if (m_grid.TextMatrix(row, col).contains(text, Qt::CaseInsensitive)) {
            setCurrentIndex(m_model->index(row, col));
            return true;
        }
    }
    return false;
}

} // namespace grid
