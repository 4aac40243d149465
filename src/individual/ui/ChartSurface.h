#pragma once

#include <optional>
#include <vector>

#include <QWidget>

#include "individual/RankChart.h"

namespace individual {

class ChartLabel;

/// The surface of a student's chart: the lines are painted, the texts are labels above them.
class ChartSurface : public QWidget
{
    Q_OBJECT

public:
    explicit ChartSurface(QWidget* parent);

    /// The surface in twips, for the chart's request.
    QSizeF twips() const;

    /// Shows a chart. Labels of exams beyond those of the chart keep their texts and places; labels
    /// of ranks go.
    void show(const RankChart& chart);
    using QWidget::show;

    /// The name that stands over the chart, whole also where its label has no room for it.
    QString shownName() const;

    /// The surface with its labels, wherever they were dragged, as it stands on the screen.
    QImage picture();

Q_SIGNALS:
    /// The right button was pressed at this place of the screen.
    void menuRequested(const QPoint& globalPosition);

protected:
    void paintEvent(QPaintEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    QSize minimumSizeHint() const override { return {0, 0}; }

private:
    int pixels(double twips) const;
    double lengthInTwips(int pixels) const;
    void paintLabels(QPainter& painter, const QRect& part) const;
    void showName(const RankChart& chart);
    void showNote(const RankChart& chart);
    void showExams(const RankChart& chart);
    void showRanks(const RankChart& chart);
    QColor textColor() const;
    QFont examFont() const;
    ChartLabel& examLabel(size_t index);
    ChartLabel& rankLabel(size_t index);

    std::optional<RankChart> m_chart;
    ChartLabel* LabelStuName = nullptr;
    /// 0 is the head count.
    std::vector<ChartLabel*> LabelKSMC;
    std::vector<ChartLabel*> LabelMinCi;
};

} // namespace individual
