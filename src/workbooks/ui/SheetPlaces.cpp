#include "workbooks/ui/SheetPlaces.h"

namespace excel {

namespace {

/// How much of a column or row lies before a place; all are in points.
double shareBefore(double place, double begin, double end)
{
    return end > begin ? (place - begin) / (end - begin) : 0;
}

} // namespace

QRectF SheetPlaces::placeOf(const CellRange& block) const
{
    return QRectF(QPointF(left(block.firstColumn), top(block.firstRow)),
                  QPointF(left(block.lastColumn) + width(block.lastColumn),
                          top(block.lastRow) + height(block.lastRow)));
}

QPointF SheetPlaces::placeAt(const SheetGeometry& geometry, const QPointF& points) const
{
    const int column = geometry.columnAt(points.x());
    const int row = geometry.rowAt(points.y());
    const double across =
        shareBefore(points.x(), geometry.columnLeft(column), geometry.columnLeft(column + 1));
    const double down = shareBefore(points.y(), geometry.rowTop(row), geometry.rowTop(row + 1));
    return {left(column) + across * width(column), top(row) + down * height(row)};
}

QRectF SheetPlaces::placeAt(const SheetGeometry& geometry, const QRectF& points) const
{
    const QPoint corner = placeAt(geometry, points.topLeft()).toPoint();
    const QPoint end = placeAt(geometry, points.bottomRight()).toPoint();
    return {QPointF(corner), QPointF(end)};
}

} // namespace excel
