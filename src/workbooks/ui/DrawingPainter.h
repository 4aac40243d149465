#pragma once

#include <vector>

#include "workbooks/model/Worksheet.h"
#include "workbooks/ui/PictureImages.h"
#include "workbooks/ui/SheetPlaces.h"

class QPainter;

namespace excel {

/// Paints what lies over the cells of a sheet: pictures, charts, lines and labels, a later one over
/// an earlier one. Charts are filled from the cells when they are painted.
class DrawingPainter
{
public:
    /// The sheet must outlive this, though its workbook may be closed.
    explicit DrawingPainter(const Worksheet& sheet)
        : m_sheet(sheet), m_geometry(sheet.geometry()), m_drawings(sheet.drawings())
    {
    }

    /// Paints the drawings of which something may lie over the shown block.
    void paint(QPainter& painter, const SheetPlaces& places, const SheetLook& look,
               const CellRange& shown);

    /// The title of the uppermost chart over a cell; empty if there is none.
    QString chartTitleAt(int row, int column) const;

private:
    const Worksheet& m_sheet;
    const SheetGeometry& m_geometry;
    const Drawings& m_drawings;
    PictureImages m_images;
};

} // namespace excel
