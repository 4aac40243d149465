#include "platform/chart/paint/ChartPainter.h"

#include <algorithm>
#include <cmath>

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include "platform/chart/ChartLayout.h"
#include "platform/chart/ChartLook.h"
#include "platform/chart/paint/FittedText.h"
#include "platform/runtime/Numbers.h"

namespace chart {

namespace {

// In points.
constexpr double markerReach = markerSize / 2;
constexpr double markLength = 3;
constexpr double gap = 2;
constexpr double leastNameRoom = 2 * textSize;

// Beyond this share of the plot a line's end is not seen, and devices do not reckon on.
constexpr double farthestShare = 10;

QColor colorOf(int color)
{
    return QColor::fromRgb(QRgb(color));
}

/// One call of paintChart.
class Painting
{
public:
    Painting(QPainter& painter, const LineChart& chart, const ChartPlace& place);

    void run() const;

private:
    double dots(double points) const { return points * m_place.scale; }
    QRectF area(const QRectF& points) const;
    QFont font(double size, QFont::Weight weight) const;
    QPen pen(int color, double width) const
    {
        return QPen(colorOf(color), std::max(1.0, dots(width)));
    }
    bool namesAbove() const { return m_chart.axis.growth == Growth::Downward; }
    double heightOf(double value) const;
    double middleOf(int slot) const;
    QPointF pointOf(int slot, double value) const { return {middleOf(slot), heightOf(value)}; }
    template <class Paint> void eachPoint(const Paint& paint) const;

    void paintArea() const;
    void paintTitles() const;
    void paintGrid() const;
    void paintScale() const;
    void paintSlots() const;
    void paintNames() const;
    void paintName(int slot, double room, const QFont& font) const;
    void paintSeries() const;
    void paintMarkers() const;
    void paintLabels() const;
    QRectF labelPlace(const QPointF& point, const QSizeF& size) const;

    QPainter& m_painter;
    const LineChart& m_chart;
    const ChartPlace& m_place;
    ValueScale m_scale;
    int m_slots;
    QRectF m_plot; // in whole dots
};

Painting::Painting(QPainter& painter, const LineChart& chart, const ChartPlace& place)
    : m_painter(painter),
      m_chart(chart),
      m_place(place),
      m_scale(scaleOf(chart)),
      m_slots(slotCount(chart)),
      m_plot(area(plotInFrame(place.points, chart.axis.growth)).toRect())
{
}

/// A part of the frame in points, in dots.
QRectF Painting::area(const QRectF& points) const
{
    const QRectF& frame = m_place.frame;
    const double across = frame.width() / m_place.points.width();
    const double down = frame.height() / m_place.points.height();
    return {frame.x() + points.x() * across, frame.y() + points.y() * down, points.width() * across,
            points.height() * down};
}

QFont Painting::font(double size, QFont::Weight weight) const
{
    QFont font(m_place.font, m_painter.device());
    font.setPointSizeF(dots(size) * 72 / m_painter.device()->logicalDpiY());
    font.setWeight(weight);
    return font;
}

double Painting::heightOf(double value) const
{
    const double share = shareOf(value, m_scale, m_chart.axis.growth);
    return m_plot.top() + std::clamp(share, -farthestShare, farthestShare) * m_plot.height();
}

double Painting::middleOf(int slot) const
{
    return m_plot.left() + slotShare(slot, m_slots) * m_plot.width();
}

/// Calls `paint` for the points that lie on the scale.
template <class Paint> void Painting::eachPoint(const Paint& paint) const
{
    for (int slot = 0; slot < int(m_chart.values.size()); ++slot) {
        const std::optional<double>& value = m_chart.values[size_t(slot)];
        if (value && isOnScale(*value, m_scale))
            paint(pointOf(slot, *value), *value);
    }
}

void Painting::run() const
{
    paintArea();
    paintTitles();
    if (m_plot.isEmpty())
        return;
    paintGrid();
    paintScale();
    paintSlots();
    paintNames();
    paintSeries();
    if (m_chart.hasMarkers)
        paintMarkers();
    if (m_chart.hasDataLabels)
        paintLabels();
}

void Painting::paintArea() const
{
    m_painter.fillRect(m_place.frame, colorOf(areaColor));
    const double inset = dots(thinLine) / 2;
    m_painter.setPen(pen(axisColor, thinLine));
    m_painter.drawRect(m_place.frame.adjusted(inset, inset, -inset, -inset));
}

void Painting::paintTitles() const
{
    m_painter.setPen(colorOf(textColor));
    const QRectF row =
        area({areaOffset, areaOffset, m_place.points.width() - 2 * areaOffset, titleRoom});
    drawFitted(m_painter, row, m_chart.title, font(m_chart.titleSize, QFont::Bold));
    m_painter.save();
    m_painter.translate(m_place.frame.left() + dots(areaOffset), m_plot.bottom());
    m_painter.rotate(-90);
    const QFont axisFont = font(m_chart.axis.titleSize, QFont::Bold);
    const double line = QFontMetricsF(axisFont, m_painter.device()).height();
    drawFitted(m_painter, {0, 0, m_plot.height(), line}, m_chart.axis.title, axisFont);
    m_painter.restore();
}

void Painting::paintGrid() const
{
    m_painter.setPen(pen(gridlineColor, thinLine));
    for (const double mark : marksOf(m_scale)) {
        const double y = std::round(heightOf(mark));
        m_painter.drawLine(QPointF(m_plot.left(), y), QPointF(m_plot.right(), y));
    }
    m_painter.setPen(pen(plotBorderColor, thinLine));
    m_painter.drawRect(m_plot);
}

void Painting::paintScale() const
{
    const QFont numbers = font(textSize, QFont::Normal);
    const double line = QFontMetricsF(numbers, m_painter.device()).height();
    m_painter.setFont(numbers);
    m_painter.setPen(pen(axisColor, thinLine));
    m_painter.drawLine(m_plot.topLeft(), m_plot.bottomLeft());
    const double end = m_plot.left() - dots(markLength);
    for (const double mark : marksOf(m_scale)) {
        const double y = std::round(heightOf(mark));
        m_painter.drawLine(QPointF(end, y), QPointF(m_plot.left(), y));
        m_painter.drawText(QRectF(m_place.frame.left(), y - line / 2,
                                  end - dots(gap) - m_place.frame.left(), line),
                           Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip,
                           runtime::doubleText(mark));
    }
}

/// The axis of the categories, with a mark between each two.
void Painting::paintSlots() const
{
    const double y = namesAbove() ? m_plot.top() : m_plot.bottom();
    const double end = y + dots(namesAbove() ? -markLength : markLength);
    m_painter.setPen(pen(axisColor, thinLine));
    m_painter.drawLine(QPointF(m_plot.left(), y), QPointF(m_plot.right(), y));
    for (int slot = 0; m_slots > 0 && slot <= m_slots; ++slot) {
        const double x = std::round(m_plot.left() + m_plot.width() * slot / m_slots);
        m_painter.drawLine(QPointF(x, y), QPointF(x, end));
    }
}

void Painting::paintNames() const
{
    if (m_chart.categories.isEmpty())
        return;
    const double slot = m_plot.width() / m_slots;
    const int step = std::max(1, int(std::ceil(dots(leastNameRoom) / slot)));
    const QFont names = font(textSize, QFont::Normal);
    m_painter.setPen(colorOf(textColor));
    for (int i = 0; i < int(m_chart.categories.size()); i += step)
        paintName(i, slot * step - dots(gap), names);
}

void Painting::paintName(int slot, double room, const QFont& font) const
{
    const QStringList lines = twoLines(m_chart.categories[slot], font, m_painter.device(), room);
    const double line = QFontMetricsF(font, m_painter.device()).height();
    const double distance = dots(markLength);
    double y = namesAbove() ? m_plot.top() - distance - line * double(lines.size())
                            : m_plot.bottom() + distance;
    for (const QString& text : lines) {
        drawFitted(m_painter, {middleOf(slot) - room / 2, y, room, line}, text, font);
        y += line;
    }
}

void Painting::paintSeries() const
{
    QPainterPath path;
    bool joined = false;
    for (int slot = 0; slot < int(m_chart.values.size()); ++slot) {
        const std::optional<double>& value = m_chart.values[size_t(slot)];
        if (value && joined)
            path.lineTo(pointOf(slot, *value));
        else if (value)
            path.moveTo(pointOf(slot, *value));
        joined = value.has_value();
    }
    m_painter.save();
    m_painter.setClipRect(m_plot, Qt::IntersectClip);
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.strokePath(path, pen(seriesColor, seriesLine));
    m_painter.restore();
}

void Painting::paintMarkers() const
{
    const double reach = dots(markerReach);
    m_painter.save();
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(colorOf(seriesColor));
    eachPoint([&](const QPointF& point, double) {
        m_painter.drawPolygon(QPolygonF({point - QPointF(0, reach), point + QPointF(reach, 0),
                                         point + QPointF(0, reach), point - QPointF(reach, 0)}));
    });
    m_painter.restore();
}

/// Above the point, below it where there is no room in the plot.
QRectF Painting::labelPlace(const QPointF& point, const QSizeF& size) const
{
    const double distance = dots(markerReach);
    QRectF place(point - QPointF(size.width() / 2, distance + size.height()), size);
    if (place.top() < m_plot.top())
        place.moveTop(point.y() + distance);
    return place;
}

void Painting::paintLabels() const
{
    const QFont labels = font(textSize, QFont::Normal);
    const QFontMetricsF metrics(labels, m_painter.device());
    m_painter.setFont(labels);
    m_painter.setPen(colorOf(textColor));
    eachPoint([&](const QPointF& point, double value) {
        const QString text = runtime::doubleText(value);
        const QSizeF size(metrics.horizontalAdvance(text), metrics.height());
        m_painter.drawText(labelPlace(point, size), Qt::AlignCenter | Qt::TextDontClip, text);
    });
}

} // namespace

void paintChart(QPainter& painter, const LineChart& chart, const ChartPlace& place)
{
    if (place.frame.isEmpty() || place.points.isEmpty())
        return;
    painter.save();
    painter.setClipRect(place.frame, Qt::IntersectClip);
    painter.setBrush(Qt::NoBrush);
    Painting(painter, chart, place).run();
    painter.restore();
}

} // namespace chart
