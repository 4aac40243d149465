#include "workbooks/ui/SheetPages.h"

#include <algorithm>
#include <limits>

#include <QImage>
#include <QPageSize>
#include <QPainter>

#include "workbooks/ui/CellDisplay.h"
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

/// Where each line begins, and where the last one ends.
std::vector<double> edges(const std::vector<double>& sizes)
{
    std::vector<double> edges{0};
    for (const double size : sizes)
        edges.push_back(edges.back() + size);
    return edges;
}

bool isEmpty(const Worksheet& sheet)
{
    return sheet.table().lastRow() == 0 && sheet.merges().isEmpty() && sheet.pictures().empty();
}

/// The used block, and what lies under the pictures.
CellRange printedBlock(const Worksheet& sheet)
{
    CellRange block = usedBlock(sheet);
    for (const Picture& picture : sheet.pictures()) {
        while (block.lastColumn < lastGridColumn
               && sheet.geometry().columnLeft(block.lastColumn + 1)
                      < picture.Left() + picture.Width())
            ++block.lastColumn;
        while (block.lastRow < lastGridRow
               && sheet.geometry().rowTop(block.lastRow + 1) < picture.Top() + picture.Height())
            ++block.lastRow;
    }
    return block;
}

void drawEdge(QPainter& painter, const QPen& pen, const QPointF& from, const QPointF& to)
{
    if (pen.style() == Qt::NoPen)
        return;
    painter.setPen(pen);
    painter.drawLine(from, to);
}

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
    : m_sheet(sheet), m_merges(sheet.merges().settled()), m_hasBorders(hasBorders(sheet))
{
    if (isEmpty(sheet))
        return;
    const CellRange used = printedBlock(sheet);
    const std::vector<double> widths = sheet.geometry().columnPoints(used.lastColumn);
    const std::vector<double> heights = sheet.geometry().shownRowHeights(used.lastRow);
    m_columnEdges = edges(widths);
    m_rowEdges = edges(heights);
    m_columns = bands(widths, area.width(), {});
    m_rows = bands(heights, area.height(), sheet.pageBreaks());
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

/// A block's place on the page that begins with the first cell of `page`.
QRectF SheetPages::place(const CellRange& cells, const CellRange& page, double scale) const
{
    const double x = m_columnEdges[size_t(page.firstColumn - 1)];
    const double y = m_rowEdges[size_t(page.firstRow - 1)];
    const QPointF start(m_columnEdges[size_t(cells.firstColumn - 1)] - x,
                        m_rowEdges[size_t(cells.firstRow - 1)] - y);
    const QPointF end(m_columnEdges[size_t(cells.lastColumn)] - x,
                      m_rowEdges[size_t(cells.lastRow)] - y);
    return QRectF(start * scale, end * scale);
}

void SheetPages::paint(QPainter& painter, int page, double scale) const
{
    const CellRange shown = cells(page);
    painter.save();
    const double half = borderWidth * scale;
    painter.setClipRect(place(shown, shown, scale).adjusted(-half, -half, half, half));
    std::vector<CellRange> merges;
    std::copy_if(m_merges.begin(), m_merges.end(), std::back_inserter(merges),
                 [&](const CellRange& merge) { return merge.touches(shown); });
    for (int row = shown.firstRow; row <= shown.lastRow; ++row) {
        for (int column = shown.firstColumn; column <= shown.lastColumn; ++column) {
            const bool merged = std::any_of(merges.begin(), merges.end(), [&](const auto& merge) {
                return merge.contains(row, column);
            });
            if (!merged)
                paintCell(painter, {row, column, row, column}, shown, scale);
        }
    }
    for (const CellRange& merge : merges)
        paintCell(painter, merge, shown, scale);
    paintPictures(painter, shown, scale);
    painter.restore();
}

/// The last column of a page that a text may run on into, over empty cells.
int SheetPages::endOfText(const CellRange& cell, const CellRange& page) const
{
    const CellFormat& format = formatOf(m_sheet, cell.firstRow, cell.firstColumn);
    const runtime::Value& value = m_sheet.table().value(cell.firstRow, cell.firstColumn);
    if (value.kind() != runtime::Value::Kind::Text || format.wrapText
        || cell.lastColumn > cell.firstColumn
        || !displayAlignment(format, value).testFlag(Qt::AlignLeft))
        return cell.lastColumn;
    int column = cell.lastColumn;
    while (column < page.lastColumn && m_sheet.table().value(cell.firstRow, column + 1).isNull())
        ++column;
    return column;
}

void SheetPages::paintCell(QPainter& painter, const CellRange& cell, const CellRange& page,
                           double scale) const
{
    const QRectF area = place(cell, page, scale);
    if (area.width() <= 0 || area.height() <= 0)
        return;
    // A merged block that goes over several pages shows its text on each.
    const QRectF seen = area & place(page, page, scale);
    CellRange reach = cell;
    reach.lastColumn = endOfText(cell, page);
    drawCellText(painter, seen, place(reach, page, scale) & place(page, page, scale),
                 formatOf(m_sheet, cell.firstRow, cell.firstColumn),
                 m_sheet.table().value(cell.firstRow, cell.firstColumn), Qt::black);
    CellBorders lines = bordersOf(m_sheet, cell);
    QColor color = Qt::black;
    if (!m_hasBorders) {
        constexpr LineStyle grid = LineStyle::Continuous;
        lines = {grid, grid, grid, grid};
        color = gridColor;
    }
    const double width = borderWidth * scale;
    drawEdge(painter, borderPen(lines.left, color, width), area.topLeft(), area.bottomLeft());
    drawEdge(painter, borderPen(lines.top, color, width), area.topLeft(), area.topRight());
    drawEdge(painter, borderPen(lines.right, color, width), area.topRight(), area.bottomRight());
    drawEdge(painter, borderPen(lines.bottom, color, width), area.bottomLeft(), area.bottomRight());
}

void SheetPages::paintPictures(QPainter& painter, const CellRange& page, double scale) const
{
    const QPointF corner(m_columnEdges[size_t(page.firstColumn - 1)],
                         m_rowEdges[size_t(page.firstRow - 1)]);
    for (const Picture& picture : m_sheet.pictures()) {
        const QPointF start = QPointF(picture.Left(), picture.Top()) - corner;
        painter.drawImage(QRectF(start * scale, QSizeF(picture.Width(), picture.Height()) * scale),
                          QImage::fromData(picture.bytes()));
    }
}

} // namespace excel
