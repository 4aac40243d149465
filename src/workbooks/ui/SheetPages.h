#pragma once

#include <vector>

#include <QPageLayout>

#include "workbooks/ui/SheetPainter.h"

namespace excel {

/// The paper, its direction and its margins as the sheet's page setup says. Paper sizes that are
/// not known become A4.
QPageLayout pageLayoutOf(const Worksheet& sheet);

/// A sheet cut into pages. Columns that do not fit on the page's width follow on further pages,
/// behind those with all rows of the first ones.
class SheetPages
{
public:
    /// `area` is what a page has between its margins, in points.
    SheetPages(const Worksheet& sheet, const QSizeF& area);

    /// 0 for a sheet without content.
    int count() const;

    /// The cells of a page, counted from 0.
    CellRange cells(int page) const;

    /// Paints a page, counted from 0, at the painter's origin. The font sizes are those of the
    /// painter's device, and `scale` is its dots in a point.
    void paint(QPainter& painter, int page, double scale);

private:
    struct Band
    {
        int first;
        int last;
    };

    static std::vector<Band> bands(const std::vector<double>& sizes, double room,
                                   const std::vector<int>& breaks);

    const SheetGeometry& m_geometry;
    SheetPainter m_painter;
    std::vector<Band> m_columns;
    std::vector<Band> m_rows;
    bool m_hasBorders;
};

} // namespace excel
