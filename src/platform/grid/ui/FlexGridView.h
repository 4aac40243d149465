#pragma once

#include <QTableView>

#include "platform/grid/ui/FlexGridModel.h"

class QMimeData;

namespace grid {

/// Shows a FlexGrid: merged blocks, fixed rows and columns that stay while the rest scrolls, copying of
/// blocks as cells, and finding texts.
class FlexGridView : public QTableView
{
    Q_OBJECT

public:
    explicit FlexGridView(const FlexGrid& grid, QWidget* parent = nullptr);

    /// Shows what the grid holds now.
    void refresh();

    /// The selected cells as tab-separated text with CRLF and as an HTML table; the caller owns it.
    QMimeData* selectedCells() const;

    /// Makes the next cell that contains the text the current one, from the current cell on and around
    /// the end. False if there is none.
    bool findText(const QString& text, Qt::SortOrder direction = Qt::AscendingOrder);

    /// The grid's width in twips as pixels of this screen.
    int pixels(int twips) const;

Q_SIGNALS:
    /// The right button was pressed at this place of the screen.
    void menuRequested(const QPoint& globalPosition);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    QTableView* makeOverlay(const QString& name);
    void setUpView(QTableView* view) const;
    void applySizes(QTableView* view) const;
    void applySpans();
    void placeOverlays();
    int fixedWidth() const;
    int fixedHeight() const;
    void askForText();

    const FlexGrid& m_grid;
    FlexGridModel* m_model;
    QTableView* m_fixedRows;
    QTableView* m_fixedCols;
    QTableView* m_corner;
    QString m_lastSearch;
};

} // namespace grid
