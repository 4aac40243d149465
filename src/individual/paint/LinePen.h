#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QHash>

class QPainter;

namespace individual {

/// Characters of a text that are painted at most.
constexpr int mostPainted = 200;

/// Draws many short texts in one font, each measured once. A text of several lines has each of them
/// centred; of an endless one, which no page has room for, only the beginning counts.
class LinePen
{
public:
    LinePen(QPainter& painter, const QFont& font);

    /// Of letters of this size. Fonts with Chinese letters ask for more, and the two lines of an
    /// exam would not fit below a chart's frame.
    static double lineHeight(double letterSize) { return letterSize * 1.15; }
    double lineHeight() const { return m_lineHeight; }
    double width(const QString& line);

    /// The text centred at `x` with its upper edge at `top`.
    void drawCentred(const QString& text, double x, double top);
    /// The same with its lower edge at `bottom`.
    void drawAbove(const QString& text, double x, double bottom);
    /// One line beginning at `x`, its upper edge at `top`.
    void draw(const QString& line, double x, double top);

private:
    QPainter& m_painter;
    QFontMetricsF m_metrics;
    double m_lineHeight;
    QHash<QString, double> m_widths;
};

} // namespace individual
