#pragma once

#include <QRectF>

#include "workbooks/model/CellFormat.h"
#include "workbooks/model/CellTable.h"

namespace excel {

class Worksheet;

/// A block of cells of a sheet, on which formats are set at once. Works on the open sheet only, as
/// everything else does.
class SheetRange
{
public:
    SheetRange(Worksheet& sheet, const CellRange& area) : m_sheet(sheet), m_area(area) {}

    const CellRange& area() const { return m_area; }

    // Where the block lies, in points from the sheet's corner. Throw runtime::Error once the sheet
    // is gone.

    double Left() const { return place().x(); }
    double Top() const { return place().y(); }
    double Width() const { return place().width(); }
    double Height() const { return place().height(); }
    QRectF place() const;

    /// True makes the block one cell; merges that it touches grow together with it into the
    /// smallest block that holds them all. A block of one cell stays as it is. False takes the
    /// merges that it touches apart. Contents stay, what a merge covers is not shown.
    void setMergeCells(bool merged) const;

    void setHorizontalAlignment(HorizontalAlignment alignment) const;
    void setVerticalAlignment(VerticalAlignment alignment) const;
    void setWrapText(bool wrap) const;
    void setFontSize(double points) const;
    void setFontBold(bool bold) const;
    /// The same line at all edges of every cell.
    void setBorders(LineStyle style) const;

private:
    template <typename Change> void change(const Change& change) const;

    Worksheet& m_sheet;
    CellRange m_area;
};

} // namespace excel
