#include "workbooks/writers/XlsxFormats.h"

#include <algorithm>

namespace excel {

namespace {

// "Modern", as spreadsheet programs set it for Chinese fonts.
constexpr uint8_t fontFamily = 3;
constexpr uint8_t textFormat = 49; // "@"

void setFont(lxw_format* made, const CellFormat& format)
{
    format_set_font_name(made, format.fontName.toUtf8().constData());
    format_set_font_size(made, format.fontSize);
    format_set_font_family(made, fontFamily);
    if (format.bold)
        format_set_bold(made);
}

uint8_t horizontal(HorizontalAlignment alignment)
{
    switch (alignment) {
    case HorizontalAlignment::Left:
        return LXW_ALIGN_LEFT;
    case HorizontalAlignment::Center:
        return LXW_ALIGN_CENTER;
    case HorizontalAlignment::Right:
        return LXW_ALIGN_RIGHT;
    case HorizontalAlignment::General:
        break;
    }
    return LXW_ALIGN_NONE;
}

uint8_t vertical(VerticalAlignment alignment)
{
    switch (alignment) {
    case VerticalAlignment::Top:
        return LXW_ALIGN_VERTICAL_TOP;
    case VerticalAlignment::Center:
        return LXW_ALIGN_VERTICAL_CENTER;
    case VerticalAlignment::Bottom:
        break;
    }
    return LXW_ALIGN_NONE;
}

uint8_t border(LineStyle style)
{
    switch (style) {
    case LineStyle::Continuous:
        return LXW_BORDER_THIN;
    case LineStyle::Dash:
        return LXW_BORDER_DASHED;
    case LineStyle::None:
        break;
    }
    return LXW_BORDER_NONE;
}

const char* numberFormat(NumberKind kind)
{
    switch (kind) {
    case NumberKind::Day:
        return "yyyy-mm-dd";
    case NumberKind::Moment:
        return "yyyy-mm-dd hh:mm:ss";
    case NumberKind::Time:
        return "hh:mm:ss";
    case NumberKind::General:
    case NumberKind::Text:
        break;
    }
    return "General";
}

} // namespace

XlsxFormats::XlsxFormats(lxw_workbook* book) : m_book(book)
{
    // The library's own first format is that of every plain cell.
    setFont(STAILQ_FIRST(book->formats), CellFormat());
    m_entries.push_back({CellFormat(), NumberKind::General, nullptr});
}

lxw_format* XlsxFormats::of(const CellFormat& format, NumberKind kind)
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& entry) {
        return entry.kind == kind && entry.format == format;
    });
    if (found != m_entries.end())
        return found->made;
    m_entries.push_back({format, kind, make(format, kind)});
    return m_entries.back().made;
}

lxw_format* XlsxFormats::make(const CellFormat& format, NumberKind kind)
{
    lxw_format* made = workbook_add_format(m_book);
    setFont(made, format);
    format_set_align(made, horizontal(format.horizontalAlignment));
    format_set_align(made, vertical(format.verticalAlignment));
    if (format.wrapText)
        format_set_text_wrap(made);
    format_set_left(made, border(format.borders.left));
    format_set_top(made, border(format.borders.top));
    format_set_right(made, border(format.borders.right));
    format_set_bottom(made, border(format.borders.bottom));
    if (kind == NumberKind::Text)
        format_set_num_format_index(made, textFormat);
    else if (kind != NumberKind::General)
        format_set_num_format(made, numberFormat(kind));
    return made;
}

SheetFormats::SheetFormats(XlsxFormats& formats, const FormatTable& table)
    : m_formats(formats), m_table(table), m_slots(size_t(table.count()))
{
}

SheetFormats::Slot& SheetFormats::slot(int number, NumberKind kind)
{
    Slot& slot = m_slots[size_t(number)][size_t(kind)];
    if (!slot.isKnown) {
        slot.made = m_formats.of(m_table.format(number), kind);
        slot.isKnown = true;
    }
    return slot;
}

int SheetFormats::styleOf(int number, NumberKind kind)
{
    Slot& slot = this->slot(number, kind);
    if (slot.style == notUsed) {
        lxw_format* format = slot.made != nullptr ? slot.made : ofColumns();
        slot.style = format != nullptr ? lxw_format_get_xf_index(format) : 0;
    }
    return slot.style;
}

} // namespace excel
