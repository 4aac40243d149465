#include "workbooks/model/DrawnLine.h"

namespace excel {

DrawnLine::DrawnLine(const QPointF& from, const QPointF& to, Changes& changes)
    : Shape(QRectF(from, to).normalized(), changes),
      m_startsRight(from.x() > to.x()),
      m_startsBelow(from.y() > to.y())
{
}

QLineF DrawnLine::ends() const
{
    const QRectF area = place();
    return {m_startsRight ? area.right() : area.left(), m_startsBelow ? area.bottom() : area.top(),
            m_startsRight ? area.left() : area.right(), m_startsBelow ? area.top() : area.bottom()};
}

void DrawnLine::setDashStyle(DashStyle style)
{
    m_dashStyle = style;
    noteChange();
}

void DrawnLine::setWeight(double points)
{
    m_weight = points;
    noteChange();
}

void DrawnLine::setColor(int color)
{
    m_color = color;
    noteChange();
}

} // namespace excel
