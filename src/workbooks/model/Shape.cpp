#include "workbooks/model/Shape.h"

namespace excel {

void Shape::setLeft(double points)
{
    m_place.moveLeft(points);
    noteChange();
}

void Shape::setTop(double points)
{
    m_place.moveTop(points);
    noteChange();
}

void Shape::setWidth(double points)
{
    m_place.setWidth(points);
    noteChange();
}

void Shape::setHeight(double points)
{
    m_place.setHeight(points);
    noteChange();
}

} // namespace excel
