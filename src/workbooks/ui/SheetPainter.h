#pragma once

#include "workbooks/ui/DrawingPainter.h"

class QPainter;

namespace excel {

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
    /// Paints the drawings over the cells of a block.
    void paintDrawings(QPainter& painter, const SheetPlaces& places, const SheetLook& look,
                       const CellRange& shown);
    const DrawingPainter& drawings() const { return m_drawings; }

private:
    const Worksheet& m_sheet;
    const SheetMerges& m_merges;
    DrawingPainter m_drawings;
};

} // namespace excel
