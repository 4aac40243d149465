#include "individual/ui/ColorSwatch.h"

#include <QMouseEvent>
#include <QPainter>

#include "individual/paint/RankChartPainter.h"

namespace individual {

ColorSwatch::ColorSwatch(int color, QWidget* parent) : QPushButton(parent), m_color(color)
{
    setAutoDefault(false);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ColorSwatch::setColor(int color)
{
    m_color = color;
    update();
}

QSize ColorSwatch::sizeHint() const
{
    const int height = fontMetrics().height();
    return {height * 3 / 2, height};
}

void ColorSwatch::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(chartColor(m_color));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    if (!hasFocus())
        return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

void ColorSwatch::mouseReleaseEvent(QMouseEvent* event)
{
    QPushButton::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton && rect().contains(event->pos()))
        Q_EMIT clicked();
}

} // namespace individual
