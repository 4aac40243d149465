#pragma once

#include <array>
#include <vector>

#include <xlsxwriter.h>

#include "workbooks/model/FormatTable.h"

namespace excel {

/// How a number is shown; Text keeps a program from reading the cell anew when it is edited there.
enum class NumberKind { General, Day, Moment, Time, Text };

/// The formats of a file in the making, each written once.
class XlsxFormats
{
public:
    explicit XlsxFormats(lxw_workbook* book);

    /// The file's format; null for that of a plain cell.
    lxw_format* of(const CellFormat& format, NumberKind kind);

private:
    lxw_format* make(const CellFormat& format, NumberKind kind);

    struct Entry
    {
        CellFormat format;
        NumberKind kind{};
        lxw_format* made = nullptr;
    };

    lxw_workbook* m_book;
    std::vector<Entry> m_entries;
};

/// The formats of one sheet by their numbers there.
class SheetFormats
{
public:
    SheetFormats(XlsxFormats& formats, const FormatTable& table);

    /// The format of the sheet's columns; null for that of a plain cell.
    lxw_format* ofColumns() { return slot(0, NumberKind::General).made; }
    /// True if a cell with this format and without a content needs not be written.
    bool isPlain(int number) { return slot(number, NumberKind::General).made == nullptr; }
    /// The number of a format in the file. Files number formats in the order of their first use.
    int styleOf(int number, NumberKind kind = NumberKind::General);

private:
    struct Slot
    {
        lxw_format* made = nullptr;
        bool isKnown = false;
        int style = notUsed;
    };

    static constexpr int notUsed = -1;

    Slot& slot(int number, NumberKind kind);

    XlsxFormats& m_formats;
    const FormatTable& m_table;
    std::vector<std::array<Slot, 5>> m_slots;
};

} // namespace excel
