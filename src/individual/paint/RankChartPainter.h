#pragma once

#include <QColor>
#include <QFont>

#include "individual/RankChart.h"

class QPainter;

namespace individual {

/// What a chart is painted with where it has no colour of its own.
struct ChartInk
{
    QColor lines = Qt::black; ///< of the frame and of the dotted lines
    QColor texts = Qt::black; ///< of name, note and exams
};

/// The colour of a line of the chart, given as 0xBBGGRR.
QColor chartColor(int colour);

/// Paints a rank chart on any device. The background is left as it is.
class RankChartPainter
{
public:
    /// Height of the texts, in twips.
    static constexpr double textSize = 180;

    /// `scale` is in dots a twip; texts are painted in `font`, whose size does not matter.
    RankChartPainter(const RankChart& chart, double scale, const QFont& font,
                     const ChartInk& ink = {});

    /// Frame, dotted lines, lines and points, as a surface shows them below its labels.
    void paintLines(QPainter& painter) const;
    /// Name, note, exams and ranks.
    void paintLabels(QPainter& painter) const;
    /// All of it, and nothing outside the chart's surface.
    void paint(QPainter& painter) const;

private:
    void paintFrame(QPainter& painter) const;
    void paintColumn(QPainter& painter, const QString& column) const;
    QPen linePen(const QColor& color, Qt::PenStyle style = Qt::SolidLine) const;
    QLineF scaled(const RankChart::Line& line) const;

    const RankChart& m_chart;
    double m_scale;
    QFont m_font;
    ChartInk m_ink;
};

} // namespace individual
