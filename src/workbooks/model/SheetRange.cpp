#include "workbooks/model/SheetRange.h"

#include <map>

#include "workbooks/model/Worksheet.h"

namespace excel {

QRectF SheetRange::place() const
{
    return m_sheet.geometry().place(m_area);
}

void SheetRange::setMergeCells(bool merged) const
{
    SheetMerges& merges = m_sheet.merges();
    const int firstRow = merges.grown(m_area).firstRow;
    if (merged)
        merges.unite(m_area);
    else
        merges.split(m_area);
    m_sheet.m_geometry.rowChanged(firstRow);
    m_sheet.m_changes.note();
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
    m_sheet.m_geometry.rowChanged(m_area.firstRow);
    m_sheet.m_changes.note();
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
