#pragma once

#include <QColor>
#include <QRectF>

#include "workbooks/model/Worksheet.h"
#include "workbooks/ui/PictureImages.h"

class QPainter;

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
    virtual QRectF pictureAt(const QRectF& points) const = 0;
    /// What texts stay inside of, so that one of a block that goes over several pages is seen on
    /// each.
    virtual QRectF bounds() const = 0;

    /// A block's place; empty if all of it is hidden.
    QRectF placeOf(const CellRange& block) const;
};

/// In which colours and with which lines a sheet is painted.
struct SheetLook
{
    enum class Lines {
        All,          ///< of every cell
        RightAndLower ///< the others belong to the neighbours before
    };

    QColor ink;
    QColor grid; ///< of the lines between all cells; invalid for none
    double lineWidth = 1;
    double inset = 0; ///< how far inside of a cell's right and lower edges its lines run
    Lines lines = Lines::All;
};

/// Paints the cells of a sheet with their lines and texts, and the drawings over them: the one
/// painter of windows, printers and PDF files. Fonts have the sizes of the painter's device.
class SheetPainter
{
public:
    /// The sheet must outlive this, though its workbook may be closed.
    explicit SheetPainter(const Worksheet& sheet);

    /// Paints the cells of a block and what reaches into it.
    void paintCells(QPainter& painter, const SheetPlaces& places, const SheetLook& look,
                    const CellRange& shown) const;
    /// Paints the drawings of which something lies in `area`, which is in dots.
    void paintDrawings(QPainter& painter, const SheetPlaces& places, const QRectF& area);

private:
    const Worksheet& m_sheet;
    const SheetMerges& m_merges;
    const Drawings& m_drawings;
    PictureImages m_images;
};

} // namespace excel
