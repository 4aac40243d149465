#pragma once

#include <QColor>
#include <QRectF>

#include "workbooks/model/SheetGeometry.h"

namespace excel {

/// Where the cells of a sheet stand on a device, in its dots.
class SheetPlaces
{
public:
    virtual ~SheetPlaces() = default;
    virtual double left(int column) const = 0;
    virtual double top(int row) const = 0;
    /// 0 for a hidden column or row.
    virtual double width(int column) const = 0;
    virtual double height(int row) const = 0;
    /// What texts stay inside of, so that one of a block that goes over several pages is seen on
    /// each.
    virtual QRectF bounds() const = 0;

    /// A block's place; empty if all of it is hidden.
    QRectF placeOf(const CellRange& block) const;

    /// A place in points from the sheet's corner. It goes with the cell that it lies in, however
    /// the device rounds their sizes.
    QPointF placeAt(const SheetGeometry& geometry, const QPointF& points) const;
    /// The same of an area, in whole dots.
    QRectF placeAt(const SheetGeometry& geometry, const QRectF& points) const;
};

/// In which colours and with which lines a sheet is painted.
struct SheetLook
{
    enum class Lines {
        All,          ///< of every cell
        RightAndLower ///< the others belong to the neighbours before
    };

    QColor ink;
    QColor grid;      ///< of the lines between all cells; invalid for none
    double scale = 1; ///< dots in a point
    double lineWidth = 1;
    double inset = 0; ///< how far inside of a cell's right and lower edges its lines run
    Lines lines = Lines::All;
};

} // namespace excel
