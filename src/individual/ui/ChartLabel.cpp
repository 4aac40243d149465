#include "individual/ui/ChartLabel.h"

#include <QMouseEvent>

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
    constexpr int longest = 200;
    setText(text.left(longest));
    if (palette().color(foregroundRole()) != color) {
        QPalette colors = palette();
        colors.setColor(foregroundRole(), color);
        setPalette(colors);
    }
    resize(sizeHint());
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
