#pragma once

#include <vector>

#include <QPageLayout>

#include "workbooks/model/Worksheet.h"

class QPainter;

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
    void paint(QPainter& painter, int page, double scale) const;

private:
    struct Band
    {
        int first;
        int last;
    };

    static std::vector<Band> bands(const std::vector<double>& sizes, double room,
                                   const std::vector<int>& breaks);
    QRectF place(const CellRange& cells, const CellRange& page, double scale) const;
    int endOfText(const CellRange& cell, const CellRange& page) const;
    void paintCell(QPainter& painter, const CellRange& cell, const CellRange& page,
                   double scale) const;
    void paintPictures(QPainter& painter, const CellRange& page, double scale) const;

    const Worksheet& m_sheet;
    /// Edges of columns and rows, in points; one more than there are of them.
    std::vector<double> m_columnEdges;
    std::vector<double> m_rowEdges;
    std::vector<Band> m_columns;
    std::vector<Band> m_rows;
    std::vector<CellRange> m_merges;
    bool m_hasBorders;
};

} // namespace excel
