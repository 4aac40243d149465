#include "workbooks/model/SheetRange.h"

#include <algorithm>
#include <map>

#include "workbooks/model/Worksheet.h"

namespace excel {

namespace {

CellRange around(const CellRange& a, const CellRange& b)
{
    return {std::min(a.firstRow, b.firstRow), std::min(a.firstColumn, b.firstColumn),
            std::max(a.lastRow, b.lastRow), std::max(a.lastColumn, b.lastColumn)};
}

bool isOneCell(const CellRange& block)
{
    return block.firstRow == block.lastRow && block.firstColumn == block.lastColumn;
}

} // namespace

void SheetRange::setMergeCells(bool merged) const
{
    m_sheet.check();
    std::vector<CellRange>& merges = m_sheet.m_merged;
    CellRange block = m_area;
    const auto touched = [&block](const CellRange& merge) { return merge.touches(block); };
    auto found = std::find_if(merges.begin(), merges.end(), touched);
    while (found != merges.end()) {
        if (merged)
            block = around(block, *found);
        merges.erase(found);
        found = std::find_if(merges.begin(), merges.end(), touched);
    }
    if (merged && !isOneCell(block))
        merges.push_back(block);
    m_sheet.changed();
}

template <typename Change> void SheetRange::change(const Change& change) const
{
    m_sheet.check();
    FormatTable& formats = m_sheet.m_formats;
    if (m_area == wholeGrid) {
        formats.changeAll(change);
    } else {
        std::map<int, int> numbers;
        m_sheet.m_cells.changeFormats(m_area, [&](int number) {
            const auto [place, isNew] = numbers.try_emplace(number);
            if (isNew) {
                CellFormat format = formats.format(number);
                change(format);
                place->second = formats.number(format);
            }
            return place->second;
        });
    }
    m_sheet.changed();
}

void SheetRange::setHorizontalAlignment(HorizontalAlignment alignment) const
{
    change([=](CellFormat& format) { format.horizontalAlignment = alignment; });
}

void SheetRange::setVerticalAlignment(VerticalAlignment alignment) const
{
    change([=](CellFormat& format) { format.verticalAlignment = alignment; });
}

void SheetRange::setWrapText(bool wrap) const
{
    change([=](CellFormat& format) { format.wrapText = wrap; });
}

void SheetRange::setFontSize(double points) const
{
    change([=](CellFormat& format) { format.fontSize = points; });
}

void SheetRange::setFontBold(bool bold) const
{
    change([=](CellFormat& format) { format.bold = bold; });
}

void SheetRange::setBorders(LineStyle style) const
{
    change([=](CellFormat& format) { format.borders = {style, style, style, style}; });
}

} // namespace excel
