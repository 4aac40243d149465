#include "workbooks/ui/SheetPages.h"

#include <algorithm>
#include <limits>

#include <QPageSize>
#include <QPainter>

#include "workbooks/ui/SheetLayout.h"

namespace excel {

namespace {

struct Paper
{
    int code;
    QPageSize::PageSizeId size;
};

constexpr Paper papers[] = {{1, QPageSize::Letter},       {5, QPageSize::Legal},
                            {8, QPageSize::A3},           {paper::a4, QPageSize::A4},
                            {11, QPageSize::A5},          {12, QPageSize::JisB4},
                            {paper::b5, QPageSize::JisB5}};

constexpr double borderWidth = 0.75; // in points
const QColor gridColor(0xb0, 0xb0, 0xb0);

bool isEmpty(const Worksheet& sheet)
{
    return sheet.table().lastRow() == 0 && sheet.merges().isEmpty() && sheet.drawings().empty();
}

/// The places of a page whose first cell stands at the origin.
class PagePlaces : public SheetPlaces
{
public:
    PagePlaces(const SheetGeometry& geometry, const CellRange& page, double scale)
        : m_geometry(geometry),
          m_origin(geometry.columnLeft(page.firstColumn), geometry.rowTop(page.firstRow)),
          m_page(page),
          m_scale(scale)
    {
    }

    double left(int column) const override
    {
        return (m_geometry.columnLeft(column) - m_origin.x()) * m_scale;
    }
    double top(int row) const override { return (m_geometry.rowTop(row) - m_origin.y()) * m_scale; }
    double width(int column) const override { return left(column + 1) - left(column); }
    double height(int row) const override { return top(row + 1) - top(row); }
    QRectF bounds() const override { return placeOf(m_page); }

private:
    const SheetGeometry& m_geometry;
    QPointF m_origin; // in points
    CellRange m_page;
    double m_scale;
};

} // namespace

QPageLayout pageLayoutOf(const Worksheet& sheet)
{
    const PageLayout& setup = sheet.PageSetup();
    const Paper* found = std::find_if(std::begin(papers), std::end(papers), [&](const Paper& one) {
        return one.code == setup.PaperSize;
    });
    const QPageSize size(found != std::end(papers) ? found->size : QPageSize::A4);
    return QPageLayout(
        size,
        setup.Orientation == Orientation::Landscape ? QPageLayout::Landscape
                                                    : QPageLayout::Portrait,
        QMarginsF(setup.LeftMargin, setup.TopMargin, setup.RightMargin, setup.BottomMargin),
        QPageLayout::Point);
}

SheetPages::SheetPages(const Worksheet& sheet, const QSizeF& area)
    : m_geometry(sheet.geometry()), m_painter(sheet), m_hasBorders(hasBorders(sheet))
{
    if (isEmpty(sheet))
        return;
    const CellRange used = shownBlock(sheet);
    m_columns = bands(m_geometry.columnPoints(used.lastColumn), area.width(), {});
    m_rows = bands(m_geometry.shownRowHeights(used.lastRow), area.height(), sheet.pageBreaks());
}

/// As many lines on each page as fit, at least one; a line of `breaks` begins a new page.
std::vector<SheetPages::Band> SheetPages::bands(const std::vector<double>& sizes, double room,
                                                const std::vector<int>& breaks)
{
    std::vector<Band> bands;
    double filled = 0;
    for (int line = 1; line <= int(sizes.size()); ++line) {
        const double size = sizes[size_t(line - 1)];
        const bool broken = std::binary_search(breaks.begin(), breaks.end(), line);
        if (bands.empty() || broken || (filled + size > room && size > 0)) {
            bands.push_back({line, line});
            filled = 0;
        }
        bands.back().last = line;
        filled += size;
    }
    return bands;
}

int SheetPages::count() const
{
    constexpr size_t most = std::numeric_limits<int>::max();
    return int(std::min(m_rows.size() * m_columns.size(), most));
}

CellRange SheetPages::cells(int page) const
{
    const Band& columns = m_columns[size_t(page) / m_rows.size()];
    const Band& rows = m_rows[size_t(page) % m_rows.size()];
    return {rows.first, columns.first, rows.last, columns.last};
}

void SheetPages::paint(QPainter& painter, int page, double scale)
{
    const CellRange shown = cells(page);
    const PagePlaces places(m_geometry, shown, scale);
    SheetLook look;
    look.ink = Qt::black;
    if (!m_hasBorders)
        look.grid = gridColor;
    look.scale = scale;
    look.lineWidth = borderWidth * scale;
    painter.save();
    const double room = look.lineWidth;
    painter.setClipRect(places.bounds().adjusted(-room, -room, room, room));
    m_painter.paintCells(painter, places, look, shown);
    m_painter.paintDrawings(painter, places, look, shown);
    painter.restore();
}

} // namespace excel
