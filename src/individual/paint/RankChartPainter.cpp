#include "individual/paint/RankChartPainter.h"

#include <algorithm>
#include <cmath>

#include <QPainter>

#include "individual/paint/LinePen.h"

namespace individual {

using namespace Qt::StringLiterals;

namespace {

constexpr double lineWidth = 15; // in twips: a dot of a screen

} // namespace

QColor chartColor(int colour)
{
    return {colour & 0xff, (colour >> 8) & 0xff, (colour >> 16) & 0xff};
}

RankChartPainter::RankChartPainter(const RankChart& chart, double scale, const QFont& font,
                                   const ChartInk& ink)
    : m_chart(chart), m_scale(scale), m_font(font), m_ink(ink)
{
    // Coloured edges of letters suit one screen alone.
    m_font.setStyleStrategy(QFont::NoSubpixelAntialias);
    m_font.setPixelSize(std::max(1, int(std::lround(textSize * scale))));
}

QPen RankChartPainter::linePen(const QColor& color, Qt::PenStyle style) const
{
    return {color, std::max(1.0, lineWidth * m_scale), style};
}

QLineF RankChartPainter::scaled(const RankChart::Line& line) const
{
    return {line.x1 * m_scale, line.y1 * m_scale, line.x2 * m_scale, line.y2 * m_scale};
}

void RankChartPainter::paintFrame(QPainter& painter) const
{
    const QLineF corners = scaled(m_chart.frame);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(linePen(m_ink.lines));
    painter.drawRect(QRectF(corners.p1(), corners.p2()));
    painter.setPen(linePen(m_ink.lines, Qt::DotLine));
    for (const RankChart::Line& line : m_chart.dotted)
        painter.drawLine(scaled(line));
}

void RankChartPainter::paintColumn(QPainter& painter, const QString& column) const
{
    for (const RankChart::Segment& segment : m_chart.segments) {
        if (segment.column != column)
            continue;
        painter.setPen(linePen(chartColor(segment.colour)));
        painter.drawLine(scaled(segment.line));
    }
    const double radius = RankChart::pointRadius * m_scale;
    for (const RankChart::Point& point : m_chart.points) {
        if (point.column != column)
            continue;
        painter.setPen(linePen(chartColor(point.colour)));
        painter.setBrush(chartColor(point.colour));
        painter.drawEllipse(QPointF(point.x, point.y) * m_scale, radius, radius);
    }
}

void RankChartPainter::paintLines(QPainter& painter) const
{
    painter.save();
    paintFrame(painter);
    painter.setRenderHint(QPainter::Antialiasing);
    QStringList painted;
    for (const RankChart::Point& point : m_chart.points) {
        if (painted.contains(point.column))
            continue;
        painted.append(point.column);
        paintColumn(painter, point.column);
    }
    painter.restore();
}

void RankChartPainter::paintLabels(QPainter& painter) const
{
    painter.save();
    LinePen pen(painter, m_font);
    painter.setPen(m_ink.texts);
    const double lineHeight = pen.lineHeight();
    pen.drawCentred(m_chart.name, m_chart.width * m_scale / 2,
                    RankChart::nameTop(lineHeight / m_scale) * m_scale);
    for (const RankChart::ExamLabel& label : m_chart.examLabels) {
        const double height = lineHeight * double(label.text.count(u'\n') + 1);
        pen.drawCentred(label.text, label.x * m_scale,
                        m_chart.examLabelTop(height / m_scale) * m_scale);
    }
    const double note = RankChart::notePlace * m_scale;
    pen.draw(m_chart.note.value_or(QString()), note, note);
    for (const RankChart::RankLabel& label : m_chart.rankLabels) {
        painter.setPen(chartColor(label.colour));
        pen.drawAbove(label.text, label.x * m_scale, label.bottom * m_scale);
    }
    painter.restore();
}

void RankChartPainter::paint(QPainter& painter) const
{
    painter.save();
    painter.setClipRect(QRectF(0, 0, m_chart.width * m_scale, m_chart.height * m_scale),
                        Qt::IntersectClip);
    paintLines(painter);
    paintLabels(painter);
    painter.restore();
}

} // namespace individual
