// Sizes and places on a sheet, and its merges without overlaps.

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <utility>

#include "platform/runtime/Error.h"
#include "workbooks/model/Worksheet.h"

namespace excel {

namespace {

using namespace Qt::StringLiterals;

constexpr double widestColumn = 255;
constexpr double pointsPerPixel = 0.75;

// A character of the default font is 8 pixels wide and a column has 5 pixels beside its text.
double columnPoints(double characters)
{
    const double pixels = characters < 1 ? characters * 13 : characters * 8 + 5;
    return std::floor(pixels) * pointsPerPixel;
}

constexpr double standardSize = CellFormat::defaultFontSize;
constexpr double standardPixels = Worksheet::standardRowHeight / pointsPerPixel;

/// Lines that a text takes where a column is that many characters wide; a Chinese character is as
/// wide as two others.
double wrappedLines(const QString& text, double characters)
{
    double lines = 0;
    for (const QString& paragraph : text.split(u'\n')) {
        const auto wide = std::count_if(paragraph.begin(), paragraph.end(),
                                        [](QChar c) { return c.unicode() >= 0x2e80; });
        const double width = double(paragraph.size() + wide);
        lines += std::max(1.0, std::ceil(width / std::max(characters, 1.0)));
    }
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

double neededHeight(const Worksheet& sheet, const Row& row)
{
    double height = Worksheet::standardRowHeight;
    for (const Cell& cell : row.cells) {
        const CellFormat& format = sheet.formats().format(cell.format);
        if (!cell.value.isNull() && (format.wrapText || format.fontSize > standardSize))
            height = std::max(height,
                              textHeight(cell.value, format, sheet.shownColumnWidth(cell.column)));
    }
    return height;
}

/// Merges that were accepted, by their first column; each stays until it ends above the row in
/// hand, so that no two of them have a column in common.
class OpenMerges
{
public:
    /// False if it is in the way of an earlier one. They come with their first rows ascending.
    bool take(const CellRange& merge)
    {
        auto place = m_open.upper_bound(merge.lastColumn);
        while (place != m_open.begin()) {
            const auto before = std::prev(place);
            if (before->second.lastColumn < merge.firstColumn)
                break;
            if (before->second.lastRow >= merge.firstRow)
                return false;
            place = m_open.erase(before);
        }
        m_open[merge.firstColumn] = merge;
        return true;
    }

private:
    std::map<int, CellRange> m_open;
};

} // namespace

std::vector<CellRange> Worksheet::settledMerges() const
{
    std::vector<CellRange> merges = mergedRanges();
    const auto isHigher = [](const CellRange& a, const CellRange& b) {
        return std::pair(a.firstRow, a.firstColumn) < std::pair(b.firstRow, b.firstColumn);
    };
    std::stable_sort(merges.begin(), merges.end(), isHigher);
    OpenMerges open;
    std::erase_if(merges, [&](const CellRange& merge) {
        const bool isOneCell =
            merge.firstRow == merge.lastRow && merge.firstColumn == merge.lastColumn;
        return isOneCell || !open.take(merge);
    });
    return merges;
}

double Worksheet::shownRowHeight(int row) const
{
    check(row, 1);
    const Row* found = m_cells.row(row);
    if (found == nullptr)
        return standardRowHeight;
    if (found->hidden)
        return 0;
    if (found->height != Row::defaultHeight)
        return double(found->height);
    return neededHeight(*this, *found);
}

double Worksheet::rowTop(int row) const
{
    check(row, 1);
    double top = 0;
    for (int above = 1; above < row; ++above)
        top += shownRowHeight(above);
    return top;
}

void Worksheet::setColumnWidth(int first, int last, double width)
{
    check(1, first);
    check(1, last);
    if (!(width >= 0 && width <= widestColumn))
        throw runtime::Error(u"列宽应在 0 到 255 个字符之间，不能是 %1。"_s.arg(width));
    addColumns({std::min(first, last), std::max(first, last), width, width == 0});
    changed();
}

double Worksheet::shownColumnWidth(int column) const
{
    check(1, column);
    const auto found = std::find_if(m_columns.rbegin(), m_columns.rend(), [&](const auto& range) {
        return column >= range.first && column <= range.last;
    });
    if (found == m_columns.rend() || (found->width <= 0 && !found->hidden))
        return standardColumnWidth;
    return found->hidden ? 0 : found->width;
}

double Worksheet::columnLeft(int column) const
{
    check(1, column);
    double left = 0;
    for (int before = 1; before < column; ++before)
        left += columnPoints(shownColumnWidth(before));
    return left;
}

} // namespace excel
