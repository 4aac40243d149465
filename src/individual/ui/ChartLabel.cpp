#include "individual/ui/ChartLabel.h"

#include <QMouseEvent>
#include <QPainter>

#include "individual/paint/LinePen.h"
#include "platform/widgets/Screen.h"

namespace individual {

ChartLabel::ChartLabel(const QString& name, Moves moves, QWidget* surface)
    : QLabel(surface), m_moves(moves)
{
    widgets::namedText(this, name);
    setAlignment(Qt::AlignCenter);
    if (moves == Moves::Yes)
        setCursor(Qt::SizeAllCursor);
    hide();
}

void ChartLabel::setContent(const QString& text, const QColor& color)
{
    constexpr qsizetype longest = 200;
    setText(text.left(longest));
    m_lines = QLabel::text().split(u'\n');
    const QFontMetrics metrics = fontMetrics();
    m_lineHeight = qRound(LinePen::lineHeight(fontInfo().pixelSize()));
    int width = 0;
    for (const QString& line : std::as_const(m_lines))
        width = std::max(width, metrics.horizontalAdvance(line));
    resize(width + 2, m_lineHeight * int(m_lines.size()));
    if (m_color != color)
        setColor(color);
}

void ChartLabel::setColor(const QColor& color)
{
    m_color = color;
    QPalette colors = palette();
    colors.setColor(foregroundRole(), color);
    setPalette(colors);
}

void ChartLabel::paintOn(QPainter& surface) const
{
    surface.setFont(font());
    surface.setPen(m_color);
    QRect line(pos(), QSize(width(), m_lineHeight));
    for (const QString& text : m_lines) {
        surface.drawText(line, Qt::AlignCenter | Qt::TextDontClip, text);
        line.translate(0, m_lineHeight);
    }
}

void ChartLabel::mousePressEvent(QMouseEvent* event)
{
    if (m_moves == Moves::No || event->button() != Qt::LeftButton)
        return QLabel::mousePressEvent(event);
    m_dragged = true;
    DragX = event->pos().x();
    DragY = event->pos().y();
    m_before = pos();
    raise();
}

void ChartLabel::mouseMoveEvent(QMouseEvent* event)
{
    if (m_dragged)
        move(mapToParent(event->pos()) - QPoint(DragX, DragY));
}

void ChartLabel::mouseReleaseEvent(QMouseEvent* event)
{
    if (!m_dragged)
        return QLabel::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton)
        return;
    m_dragged = false;
    const QPoint dropped = mapToParent(event->pos());
    const bool isOnChart = parentWidget()->rect().contains(dropped);
    move(isOnChart ? dropped - QPoint(DragX, DragY) : m_before);
}

} // namespace individual
