#pragma once

#include <functional>
#include <span>
#include <vector>

#include <QTableView>

#include "platform/grid/GridSpans.h"
#include "platform/grid/ui/BlockDrag.h"
#include "platform/grid/ui/ColumnDrag.h"
#include "platform/grid/ui/FlexGridModel.h"
#include "platform/grid/ui/GridGeometry.h"
#include "platform/grid/ui/RowWheel.h"

class QMimeData;

namespace widgets {
class FindBar;
}

namespace grid {

/// Shows a FlexGrid: merged blocks, fixed rows and columns that stay while the rest scrolls,
/// copying of blocks as cells, finding texts, columns widened by dragging. One block of cells is
/// selected at a time; the view keeps Row, Col, RowSel, ColSel, TopRow and dragged widths in the
/// grid.
class FlexGridView : public QTableView
{
    Q_OBJECT

public:
    /// The grid must outlive the view.
    explicit FlexGridView(FlexGrid& grid, QWidget* parent = nullptr);

    /// Shows what the grid holds now. Does nothing while the grid's Redraw is off; follows Visible.
    void refresh();

    /// One cell got another text, which changes no merged block.
    void refreshCell(int row, int col);

    FlexGrid& grid() const { return m_grid; }

    /// Selects the block from (row, col) to (rowSel, colSel), which becomes the current cell.
    void select(int row, int col, int rowSel, int colSel);
    void selectAll() override;

    /// The selected cells as tab-separated text with CRLF and as an HTML table; the caller owns it.
    QMimeData* selectedCells() const;

    /// Makes the next cell that contains the text the current one, from the current cell on and
    /// around the end. False if there is none.
    bool findText(const QString& text, Qt::SortOrder direction = Qt::AscendingOrder);

    /// Says into which cells text is typed: an input method is at work on those and on no others.
    void setTypedInto(std::function<bool(int row, int col)> isTypedInto);

    /// Gives the first columns the whole width, in these parts; further ones keep theirs.
    void shareWidth(std::span<const int> parts);

    /// Twips as pixels of this screen.
    int pixels(int twips) const;
    int twips(int pixels) const;

    bool isFixed(int row, int col) const
    {
        return row < m_grid.FixedRows || col < m_grid.FixedCols;
    }
    bool isCurrentCell(const QModelIndex& index) const;
    /// The part of the viewport in which a cell of this row and column can be seen.
    QRect shownPart(int row, int col) const { return m_geometry.shownPart(row, col); }
    /// The size of the fixed rows and columns.
    QSize fixedSize() const { return m_geometry.fixedSize(); }

    /// A place in the viewport to the cell seen there, and back.
    QModelIndex indexAt(const QPoint& place) const override;
    QRect visualRect(const QModelIndex& index) const override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    void keyboardSearch(const QString&) override {}

Q_SIGNALS:
    /// The left button was pressed and released over a cell.
    void cellClicked(int row, int col);
    /// The left button was released over a cell; comes behind cellClicked.
    void cellReleased(int row, int col);
    /// A cell was double-clicked, or Enter pressed on it.
    void cellActivated(int row, int col);
    /// Row or Col changed.
    void rowColChanged();
    /// The user gave a column another width, which the grid holds now.
    void columnDragged(int col);
    void scrolled();
    /// The menu was asked for at this place of the screen: by the right button, or on the current
    /// cell by its key.
    void menuRequested(const QPoint& globalPosition);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    void hideHeaders();
    void applySizes();
    void applySpans();
    void switchInputMethod();
    void keepBlock(int row, int col, int rowSel, int colSel);
    bool moveByKey(const QKeyEvent& key);
    void activateCurrent();
    void pressCell(const QModelIndex& index, Qt::KeyboardModifiers modifiers);

    FlexGrid& m_grid;
    GridGeometry m_geometry;
    ColumnDrag m_columnDrag;
    BlockDrag m_blockDrag;
    RowWheel m_wheel;
    FlexGridModel* m_model;
    widgets::FindBar* m_findBar;
    std::vector<GridSpan> m_fixedSpans;
    std::function<bool(int row, int col)> m_isTypedInto;
    bool m_shown = true;
    bool m_keeping = false;
    bool m_doubleClicked = false;
    QModelIndex m_pressed;
};

} // namespace grid
