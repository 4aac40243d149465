#pragma once

#include <QLineF>

#include "workbooks/model/Shape.h"

namespace excel {

// The numbers are the codes that programs for spreadsheets use.
enum class DashStyle { Solid = 1, Dash = 4 };

/// A straight line over the cells, from one corner of its place to the opposite one.
class DrawnLine : public Shape
{
public:
    /// A thin black line between two places, in points from the sheet's corner.
    DrawnLine(const QPointF& from, const QPointF& to, Changes& changes);

    /// Where it begins and ends, in points from the sheet's corner.
    QLineF ends() const;

    DashStyle dashStyle() const { return m_dashStyle; }
    void setDashStyle(DashStyle style);
    /// In points.
    double weight() const { return m_weight; }
    void setWeight(double points);
    /// As 0xRRGGBB.
    int color() const { return m_color; }
    void setColor(int color);

private:
    bool m_startsRight;
    bool m_startsBelow;
    DashStyle m_dashStyle = DashStyle::Solid;
    double m_weight = 0.75;
    int m_color = 0;
};

} // namespace excel
