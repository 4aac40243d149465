#include "individual/paint/LinePen.h"

#include <QPainter>

namespace individual {

namespace {

} // namespace

LinePen::LinePen(QPainter& painter, const QFont& font)
    : m_painter(painter),
      m_metrics(font, painter.device()),
      m_lineHeight(
          lineHeight(font.pixelSize() > 0 ? font.pixelSize() : QFontInfo(font).pixelSize()))
{
    painter.setFont(font);
}

double LinePen::width(const QString& line)
{
    const auto known = m_widths.constFind(line);
    if (known != m_widths.constEnd())
        return *known;
    return m_widths.insert(line, m_metrics.horizontalAdvance(line)).value();
}

void LinePen::draw(const QString& line, double x, double top)
{
    const double above = (m_lineHeight - m_metrics.height()) / 2;
    m_painter.drawText(QPointF(x, top + above + m_metrics.ascent()), line);
}

void LinePen::drawCentred(const QString& text, double x, double top)
{
    for (const QString& line : text.left(mostPainted).split(u'\n')) {
        draw(line, x - width(line) / 2, top);
        top += lineHeight();
    }
}

void LinePen::drawAbove(const QString& text, double x, double bottom)
{
    const auto lines = text.left(mostPainted).count(u'\n') + 1;
    drawCentred(text, x, bottom - double(lines) * lineHeight());
}

} // namespace individual
