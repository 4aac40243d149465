#pragma once

#include <vector>

#include "workbooks/model/CellFormat.h"

namespace excel {

/// The distinct formats of a sheet. Number 0 is the format of every cell that has none of its own.
class FormatTable
{
public:
    const CellFormat& format(int number) const { return m_formats[size_t(number)]; }
    int count() const { return int(m_formats.size()); }

    /// The number of this format, a new one if it was not there.
    int number(const CellFormat& format);

    /// Changes every format, and with it all cells of the sheet.
    template <typename Change> void changeAll(const Change& change)
    {
        for (CellFormat& format : m_formats)
            change(format);
    }

private:
    std::vector<CellFormat> m_formats{1};
};

} // namespace excel
