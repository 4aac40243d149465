#pragma once

#include <memory>

#include <QTableView>

#include "workbooks/ui/SheetPainter.h"
#include "workbooks/ui/WorksheetModel.h"

class QMimeData;

namespace widgets {
class FindBar;
}

namespace excel {

/// Shows one sheet: merges, lines, fonts, sizes, drawings; copies a block of cells and finds texts.
class WorksheetView : public QTableView
{
    Q_OBJECT

public:
    explicit WorksheetView(QWidget* parent);

    /// Shows this sheet as it is now, or nothing. The same sheet keeps its selection and its place.
    void showSheet(const Worksheet* sheet);

    /// The selected cells that are used and not hidden, as tab-separated text with CRLF and as an
    /// HTML table; the caller owns it.
    QMimeData* selectedCells() const;
    void copy() const;

    /// Makes the next cell that contains the text the current one, from the current cell on and
    /// around the end. False if there is none.
    bool findText(const QString& text, Qt::SortOrder direction);
    void openFind();
    void findAgain(Qt::SortOrder direction);

    /// The title of the chart over a cell; empty if there is none.
    QString chartTitleAt(int row, int column) const;

    const WorksheetModel& sheetModel() const { return *m_model; }

Q_SIGNALS:
    void currentCellChanged(int row, int column);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    void applySizes();
    void applySpans();
    CellRange cellsIn(const QRect& area) const;
    void tintSelection(QPainter& painter, const CellRange& shown) const;
    void drawFrame(QPainter& painter) const;
    SheetLook sheetLook() const;
    void goTo(int row, int column);
    QRect selectedBlock() const;
    void select(const QRect& block, const QPoint& current);
    int matchIn(int row, int low, int high, const QString& text, Qt::SortOrder direction) const;

    WorksheetModel* m_model;
    widgets::FindBar* m_findBar;
    std::unique_ptr<SheetPainter> m_painter; // of the sheet that is shown
};

} // namespace excel
