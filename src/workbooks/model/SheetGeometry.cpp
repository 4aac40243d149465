#include "workbooks/model/SheetGeometry.h"

#include <algorithm>
#include <cmath>

#include "platform/runtime/Error.h"
#include "workbooks/model/ColumnWidth.h"
#include "workbooks/model/TextWidth.h"

namespace excel {

namespace {

using namespace Qt::StringLiterals;

constexpr double tallestRow = 409.5;
constexpr double widestColumn = 255;
constexpr double standardSize = CellFormat::defaultFontSize;
constexpr double standardPixels = SheetGeometry::standardRowHeight / pointsPerPixel;

double pointsOfColumn(double characters)
{
    return std::floor(columnPixels(characters)) * pointsPerPixel;
}

/// Lines that a text takes where a column is that many characters wide.
double wrappedLines(const QString& text, double characters)
{
    double lines = 0;
    for (const QStringView paragraph : QStringView(text).split(u'\n'))
        lines += std::max(1.0, std::ceil(characterCells(paragraph) / std::max(characters, 1.0)));
    return lines;
}

double textHeight(const runtime::Value& value, const CellFormat& format, double characters)
{
    const double pixels = std::ceil(standardPixels * format.fontSize / standardSize);
    const double line = pixels * pointsPerPixel;
    if (!format.wrapText || value.kind() != runtime::Value::Kind::Text)
        return line;
    return line * wrappedLines(value.text(), characters * standardSize / format.fontSize);
}

/// Computes edges up to that of `line`.
template <class Size> double edgeOf(std::vector<double>& edges, int line, const Size& size)
{
    while (edges.size() < size_t(line))
        edges.push_back(edges.back() + size(int(edges.size())));
    return edges[size_t(line - 1)];
}

/// The last line of `lines` that begins at or before a place; computes edges only as far as needed.
template <class Size>
int lineAt(std::vector<double>& edges, double place, int lines, const Size& size)
{
    while (edges.back() <= place && edges.size() <= size_t(lines))
        edges.push_back(edges.back() + size(int(edges.size())));
    const auto behind = std::upper_bound(edges.begin(), edges.end(), place);
    return std::clamp(int(behind - edges.begin()), 1, lines);
}

} // namespace

bool SheetGeometry::isRowHidden(int row) const
{
    checkCell(row, 1);
    const Row* found = m_cells.row(row);
    return found != nullptr && found->hidden;
}

void SheetGeometry::setRowState(int row, RowState state)
{
    checkCell(row, 1);
    m_cells.makeRow(row).hidden = state == RowState::Hidden;
    rowChanged(row);
    m_changes.note();
}

double SheetGeometry::rowHeight(int row) const
{
    checkCell(row, 1);
    const Row* found = m_cells.row(row);
    return double(found != nullptr ? found->height : Row::defaultHeight);
}

void SheetGeometry::setRowHeight(int row, double points)
{
    checkCell(row, 1);
    if (!(points >= 0 && points <= tallestRow))
        throw runtime::Error(u"行高应在 0 到 409 磅之间，不能是 %1。"_s.arg(points));
    m_cells.makeRow(row).height = float(points);
    rowChanged(row);
    m_changes.note();
}

void SheetGeometry::addRow(int row, float height, RowState state)
{
    checkCell(row, 1);
    Row& added = m_cells.makeRow(row);
    added.hidden = state == RowState::Hidden;
    if (std::isfinite(height) && height >= 0)
        added.height = std::min(height, float(tallestRow));
    rowChanged(row);
}

double SheetGeometry::neededHeight(int number, const Row& row) const
{
    double height = standardRowHeight;
    for (const Cell& cell : row.cells) {
        const CellFormat& format = m_formats.format(cell.format());
        if (!cell.isNull() && (format.wrapText || format.fontSize > standardSize))
            height = std::max(height, neededHeight(number, cell, format));
    }
    return std::min(height, tallestRow);
}

/// A merge is as wide as its columns, and its first row needs what the others lack.
double SheetGeometry::neededHeight(int row, const Cell& cell, const CellFormat& format) const
{
    const CellRange* merge = m_merges.at(row, cell.column());
    if (merge == nullptr)
        return textHeight(cell.value(), format, shownColumnWidth(cell.column()));
    if (row != merge->firstRow || cell.column() != merge->firstColumn)
        return 0;
    double pixels = 0;
    for (int column = merge->firstColumn; column <= merge->lastColumn; ++column)
        pixels += columnPixels(shownColumnWidth(column));
    return textHeight(cell.value(), format, charactersOf(pixels / characterPixels))
           - (merge->lastRow - merge->firstRow) * standardRowHeight;
}

double SheetGeometry::shownRowHeight(int row) const
{
    checkCell(row, 1);
    const Row* found = m_cells.row(row);
    if (found == nullptr)
        return standardRowHeight;
    if (found->hidden)
        return 0;
    if (found->height != Row::defaultHeight)
        return double(found->height);
    return neededHeight(row, *found);
}

std::vector<double> SheetGeometry::shownRowHeights(int count) const
{
    std::vector<double> heights(size_t(count), standardRowHeight);
    for (int row = m_cells.nextRow(1); row <= count && row <= m_cells.rowLimit();
         row = m_cells.nextRow(row + 1))
        heights[size_t(row - 1)] = shownRowHeight(row);
    return heights;
}

std::vector<ColumnRange> SheetGeometry::columns() const
{
    std::vector<ColumnRange> columns;
    for (const auto& [last, range] : m_columns) {
        ColumnRange* before = columns.empty() ? nullptr : &columns.back();
        if (before != nullptr && before->last + 1 == range.first && before->width == range.width
            && before->hidden == range.hidden)
            before->last = last;
        else
            columns.push_back(range);
    }
    return columns;
}

void SheetGeometry::addColumns(const ColumnRange& columns)
{
    checkCell(1, columns.first);
    checkCell(1, columns.last);
    auto older = m_columns.lower_bound(columns.first);
    while (older != m_columns.end() && older->second.first <= columns.last) {
        ColumnRange before = older->second;
        ColumnRange behind = older->second;
        older = m_columns.erase(older);
        before.last = columns.first - 1;
        behind.first = columns.last + 1;
        for (const ColumnRange& rest : {before, behind}) {
            if (rest.first <= rest.last)
                m_columns[rest.last] = rest;
        }
    }
    ColumnRange& added = m_columns[columns.last];
    added = columns;
    const bool hasWidth = std::isfinite(columns.width) && columns.width > 0;
    added.width = hasWidth ? std::min(columns.width, widestColumn) : standardColumnWidth;
    m_columnEdges.resize(1);
    rowChanged(1); // texts wrap elsewhere
}

void SheetGeometry::setColumnWidth(int first, int last, double width)
{
    checkCell(1, first);
    checkCell(1, last);
    if (!(width >= 0 && width <= widestColumn))
        throw runtime::Error(u"列宽应在 0 到 255 个字符之间，不能是 %1。"_s.arg(width));
    addColumns({std::min(first, last), std::max(first, last), width, width == 0});
    m_changes.note();
}

double SheetGeometry::shownColumnWidth(int column) const
{
    checkCell(1, column);
    const auto found = m_columns.lower_bound(column);
    if (found == m_columns.end() || found->second.first > column)
        return standardColumnWidth;
    return found->second.hidden ? 0 : found->second.width;
}

std::vector<double> SheetGeometry::columnPoints(int count) const
{
    std::vector<double> points;
    for (int column = 1; column <= count; ++column)
        points.push_back(pointsOfColumn(shownColumnWidth(column)));
    return points;
}

double SheetGeometry::rowTop(int row) const
{
    checkCell(std::min(row, lastGridRow), 1);
    return edgeOf(m_rowEdges, std::min(row, lastGridRow + 1),
                  [this](int above) { return shownRowHeight(above); });
}

double SheetGeometry::columnLeft(int column) const
{
    checkCell(1, std::min(column, lastGridColumn));
    return edgeOf(m_columnEdges, std::min(column, lastGridColumn + 1),
                  [this](int before) { return pointsOfColumn(shownColumnWidth(before)); });
}

QRectF SheetGeometry::place(const CellRange& block) const
{
    return {QPointF(columnLeft(block.firstColumn), rowTop(block.firstRow)),
            QPointF(columnLeft(block.lastColumn + 1), rowTop(block.lastRow + 1))};
}

int SheetGeometry::rowAt(double place) const
{
    return lineAt(m_rowEdges, place, lastGridRow, [this](int row) { return shownRowHeight(row); });
}

int SheetGeometry::columnAt(double place) const
{
    return lineAt(m_columnEdges, place, lastGridColumn,
                  [this](int column) { return pointsOfColumn(shownColumnWidth(column)); });
}

void SheetGeometry::rowChanged(int row)
{
    if (m_rowEdges.size() > size_t(row))
        m_rowEdges.resize(size_t(row));
}

void SheetGeometry::clear()
{
    m_columns.clear();
    m_columnEdges.resize(1);
    m_rowEdges.resize(1);
}

} // namespace excel
