#include "workbooks/ui/SheetPainter.h"

#include <algorithm>

#include <QFontMetricsF>
#include <QPainter>

#include "workbooks/ui/CellDisplay.h"
#include "workbooks/ui/SheetLayout.h"

namespace excel {

namespace {

// Columns that a text is followed over.
constexpr int farthest = 60;

/// The cells of the shown block that are not hidden, and the merges around them.
class ShownCells
{
public:
    ShownCells(const SheetMerges& merges, const SheetPlaces& places, const CellRange& shown);

    const std::vector<int>& rows() const { return m_rows; }
    const std::vector<int>& columns() const { return m_columns; }
    /// The merges that lie in the block at least with a part.
    const std::vector<CellRange>& merges() const { return m_merges; }
    /// By the places in `rows` and `columns`.
    bool isMerged(size_t row, size_t column) const
    {
        return m_isMerged[row * m_columns.size() + column];
    }
    bool touchesMerge(const CellRange& cells) const
    {
        return std::any_of(m_around.begin(), m_around.end(),
                           [&](const CellRange& merge) { return merge.touches(cells); });
    }

private:
    void mark(const CellRange& merge);

    std::vector<int> m_rows;
    std::vector<int> m_columns;
    std::vector<CellRange> m_merges;
    std::vector<CellRange> m_around; // these and those that a text from the left may meet
    std::vector<bool> m_isMerged;
};

ShownCells::ShownCells(const SheetMerges& merges, const SheetPlaces& places, const CellRange& shown)
{
    for (int row = shown.firstRow; row <= shown.lastRow; ++row) {
        if (places.height(row) > 0)
            m_rows.push_back(row);
    }
    for (int column = shown.firstColumn; column <= shown.lastColumn; ++column) {
        if (places.width(column) > 0)
            m_columns.push_back(column);
    }
    m_isMerged.resize(m_rows.size() * m_columns.size());
    CellRange around = shown;
    around.firstColumn -= farthest;
    for (const CellRange& merge : merges.settled()) {
        if (merge.firstRow > shown.lastRow)
            break;
        if (merge.touches(around))
            m_around.push_back(merge);
        if (merge.touches(shown))
            mark(merge);
    }
}

void ShownCells::mark(const CellRange& merge)
{
    m_merges.push_back(merge);
    const auto first = std::lower_bound(m_columns.begin(), m_columns.end(), merge.firstColumn);
    const auto end = std::upper_bound(first, m_columns.end(), merge.lastColumn);
    auto row = std::lower_bound(m_rows.begin(), m_rows.end(), merge.firstRow);
    for (; row != m_rows.end() && *row <= merge.lastRow; ++row) {
        const auto begin = m_isMerged.begin()
                           + (row - m_rows.begin()) * std::ptrdiff_t(m_columns.size())
                           + (first - m_columns.begin());
        std::fill(begin, begin + (end - first), true);
    }
}

using Cells = std::vector<Cell>;

bool isFilled(const Cell& cell)
{
    return !cell.isNull();
}

/// A text that stands in one row, and the last column that it runs into.
struct ShownText
{
    const Cell* cell;
    int row;
    int lastColumn;
};

/// One call of SheetPainter::paintCells.
class Painting
{
public:
    Painting(QPainter& painter, const Worksheet& sheet, const SheetPlaces& places,
             const SheetLook& look, const ShownCells& shown)
        : m_painter(painter), m_sheet(sheet), m_places(places), m_look(look), m_shown(shown)
    {
    }

    void run();

private:
    template <class Paint> void eachBlock(const Paint& paint) const;
    Cells::const_iterator firstText(const Cells& cells) const;
    void findTexts(int row);
    int endOfText(const Cell& cell, int row, int limit) const;
    bool isCrossed(int row, int column) const;
    void paintGrid(const CellRange& block) const;
    void paintBorders(const CellRange& block) const;
    void paintText(const CellRange& block, int lastColumn) const;
    void drawEdge(const QPen& pen, const QPointF& from, const QPointF& to) const;
    void drawRightAndLower(const QRectF& area, const QPen& right, const QPen& lower,
                           double start) const;
    void drawLeftAndUpper(const QRectF& area, const QPen& left, const QPen& upper) const;

    QPainter& m_painter;
    const Worksheet& m_sheet;
    const SheetPlaces& m_places;
    const SheetLook& m_look;
    const ShownCells& m_shown;
    std::vector<ShownText> m_texts; // from top to bottom, in a row from left to right
};

void Painting::run()
{
    for (const int row : m_shown.rows())
        findTexts(row);
    if (m_look.grid.isValid())
        eachBlock([this](const CellRange& block) { paintGrid(block); });
    for (const ShownText& text : m_texts)
        paintText({text.row, text.cell->column(), text.row, text.cell->column()}, text.lastColumn);
    for (const CellRange& merge : m_shown.merges())
        paintText(merge, merge.lastColumn);
    eachBlock([this](const CellRange& block) { paintBorders(block); });
}

/// Calls `paint` for every cell that is not merged, then for every merged block.
template <class Paint> void Painting::eachBlock(const Paint& paint) const
{
    for (size_t row = 0; row < m_shown.rows().size(); ++row) {
        for (size_t column = 0; column < m_shown.columns().size(); ++column) {
            if (!m_shown.isMerged(row, column))
                paint({m_shown.rows()[row], m_shown.columns()[column], m_shown.rows()[row],
                       m_shown.columns()[column]});
        }
    }
    for (const CellRange& merge : m_shown.merges())
        paint(merge);
}

/// The first cell of a row that is shown, or the one before whose text may run into it.
Cells::const_iterator Painting::firstText(const Cells& cells) const
{
    const int first = m_shown.columns().front();
    const auto shown =
        std::lower_bound(cells.begin(), cells.end(), first,
                         [](const Cell& cell, int column) { return cell.column() < column; });
    const auto before = std::find_if(std::make_reverse_iterator(shown), cells.rend(), isFilled);
    const bool reaches = before != cells.rend() && first - before->column() <= farthest
                         && m_places.left(before->column()) >= m_places.bounds().left();
    return reaches ? before.base() - 1 : shown;
}

/// Finds the texts of a row that stand in cells by themselves.
void Painting::findTexts(int row)
{
    const Row* content = m_sheet.table().row(row);
    if (content == nullptr || m_shown.columns().empty())
        return;
    const Cells& cells = content->cells;
    const int last = m_shown.columns().back();
    auto cell = std::find_if(firstText(cells), cells.end(), isFilled);
    while (cell != cells.end() && cell->column() <= last) {
        const auto next = std::find_if(cell + 1, cells.end(), isFilled);
        const int limit = next == cells.end() ? last : std::min(last, next->column() - 1);
        if (m_places.width(cell->column()) > 0
            && !m_shown.touchesMerge({row, cell->column(), row, cell->column()}))
            m_texts.push_back({&*cell, row, endOfText(*cell, row, limit)});
        cell = next;
    }
}

/// The last column that a text runs into over empty cells, `limit` at most.
int Painting::endOfText(const Cell& cell, int row, int limit) const
{
    const CellFormat& format = m_sheet.formats().format(cell.format());
    if (cell.kind() != runtime::Value::Kind::Text || format.wrapText
        || !displayAlignment(format, cell.value()).testFlag(Qt::AlignLeft))
        return cell.column();
    const QFontMetricsF metrics(displayFont(format), m_painter.device());
    const double end = m_places.left(cell.column()) + 2 * textMargin(metrics)
                       + metrics.horizontalAdvance(displayText(cell.value()));
    int column = cell.column();
    while (column < std::min(limit, cell.column() + farthest)
           && end > m_places.left(column) + m_places.width(column) + m_look.lineWidth
           && !m_shown.touchesMerge({row, column + 1, row, column + 1}))
        ++column;
    return column;
}

/// Whether a text runs on from this cell into the next.
bool Painting::isCrossed(int row, int column) const
{
    const auto behind =
        std::upper_bound(m_texts.begin(), m_texts.end(), std::pair(row, column),
                         [](const std::pair<int, int>& place, const ShownText& text) {
                             return place < std::pair(text.row, text.cell->column());
                         });
    if (behind == m_texts.begin())
        return false;
    const ShownText& text = *(behind - 1);
    return text.row == row && column < text.lastColumn;
}

void Painting::drawEdge(const QPen& pen, const QPointF& from, const QPointF& to) const
{
    if (pen.style() == Qt::NoPen)
        return;
    m_painter.setPen(pen);
    m_painter.drawLine(from, to);
}

/// The lines begin `start` behind the cell's edge: before it, where they meet those of the
/// neighbours.
void Painting::drawRightAndLower(const QRectF& area, const QPen& right, const QPen& lower,
                                 double start) const
{
    const QPointF end = area.bottomRight() - QPointF(m_look.inset, m_look.inset);
    drawEdge(lower, area.bottomLeft() + QPointF(start, -m_look.inset), end);
    drawEdge(right, area.topRight() + QPointF(-m_look.inset, start), end);
}

void Painting::drawLeftAndUpper(const QRectF& area, const QPen& left, const QPen& upper) const
{
    const QPointF corner(m_look.inset, m_look.inset);
    drawEdge(left, area.topLeft() + QPointF(corner.x(), 0),
             area.bottomLeft() + QPointF(corner.x(), 0));
    drawEdge(upper, area.topLeft() + QPointF(0, corner.y()),
             area.topRight() + QPointF(0, corner.y()));
}

void Painting::paintGrid(const CellRange& block) const
{
    const QRectF area = m_places.placeOf(block);
    if (area.isEmpty())
        return;
    const QPen pen = borderPen(LineStyle::Continuous, m_look.grid, m_look.lineWidth);
    const bool crossed = isCrossed(block.firstRow, block.lastColumn);
    drawRightAndLower(area, crossed ? QPen(Qt::NoPen) : pen, pen, m_look.inset);
    if (m_look.lines == SheetLook::Lines::All)
        drawLeftAndUpper(
            area, isCrossed(block.firstRow, block.firstColumn - 1) ? QPen(Qt::NoPen) : pen, pen);
}

void Painting::paintBorders(const CellRange& block) const
{
    const QRectF area = m_places.placeOf(block);
    if (area.isEmpty())
        return;
    const CellBorders lines = bordersOf(m_sheet, block);
    const auto pen = [this](LineStyle style) {
        return borderPen(style, m_look.ink, m_look.lineWidth);
    };
    drawRightAndLower(area, pen(lines.right), pen(lines.bottom), -m_look.inset);
    const bool all = m_look.lines == SheetLook::Lines::All;
    drawLeftAndUpper(area, pen(all || block.firstColumn == 1 ? lines.left : LineStyle::None),
                     pen(all || block.firstRow == 1 ? lines.top : LineStyle::None));
}

void Painting::paintText(const CellRange& block, int lastColumn) const
{
    const QRectF bounds = m_places.bounds();
    const QRectF area = m_places.placeOf(block) & bounds;
    if (area.isEmpty())
        return;
    CellRange reach = block;
    reach.lastColumn = lastColumn;
    drawCellText(m_painter, area, m_places.placeOf(reach) & bounds,
                 formatOf(m_sheet, block.firstRow, block.firstColumn),
                 m_sheet.table().value(block.firstRow, block.firstColumn), m_look.ink);
}

} // namespace

SheetPainter::SheetPainter(const Worksheet& sheet)
    : m_sheet(sheet), m_merges(sheet.merges()), m_drawings(sheet)
{
}

void SheetPainter::paintCells(QPainter& painter, const SheetPlaces& places, const SheetLook& look,
                              const CellRange& shown) const
{
    Painting(painter, m_sheet, places, look, ShownCells(m_merges, places, shown)).run();
}

void SheetPainter::paintDrawings(QPainter& painter, const SheetPlaces& places,
                                 const SheetLook& look, const CellRange& shown)
{
    m_drawings.paint(painter, places, look, shown);
}

} // namespace excel
