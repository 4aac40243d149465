#pragma once

#include <QWidget>

#include "platform/grid/FlexGrid.h"

namespace grid {
class FlexGridView;
}

namespace individual {

class ChartSurface;
class SplitterBar;

/// The right side of individual analysis: the grid of exams above, the chart below, and the bar
/// between them. The grid keeps its height when the window changes.
class ExamsAndChart : public QWidget
{
    Q_OBJECT

public:
    /// The grid must outlive the widget.
    ExamsAndChart(grid::FlexGrid& exams, QWidget* parent);

    grid::FlexGridView* exams() const { return MSFlexGrid1; }
    ChartSurface* chart() const { return Picture1; }

    int gridHeight() const { return m_gridHeight; }
    void setGridHeight(int height);

Q_SIGNALS:
    void splitterReleased();
    /// The right button was pressed on grid or chart, at this place of the screen.
    void menuRequested(const QPoint& globalPosition);

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void place();
    void moveSplitter(int distance);
    void showTip(const QPoint& place, const QPoint& globalPlace) const;

    int m_gridHeight;
    grid::FlexGridView* MSFlexGrid1;
    SplitterBar* PictureW;
    ChartSurface* Picture1;
};

} // namespace individual
