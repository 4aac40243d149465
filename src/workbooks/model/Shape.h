#pragma once

#include <QRectF>

#include "workbooks/model/Changes.h"

namespace excel {

/// What all drawings over the cells have: a place, in points from the sheet's corner. Setting it is
/// a change of the workbook.
class Shape
{
public:
    Shape(const QRectF& place, Changes& changes) : m_place(place), m_changes(changes) {}

    double Left() const { return m_place.x(); }
    double Top() const { return m_place.y(); }
    double Width() const { return m_place.width(); }
    double Height() const { return m_place.height(); }
    QRectF place() const { return m_place; }

    void setLeft(double points);
    void setTop(double points);
    void setWidth(double points);
    void setHeight(double points);

protected:
    void noteChange() { m_changes.note(); }

private:
    QRectF m_place;
    Changes& m_changes;
};

} // namespace excel
