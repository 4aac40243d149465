#include "workbooks/model/FormatTable.h"

#include <algorithm>

namespace excel {

int FormatTable::number(const CellFormat& format)
{
    const auto found = std::find(m_formats.begin(), m_formats.end(), format);
    if (found != m_formats.end())
        return int(found - m_formats.begin());
    m_formats.push_back(format);
    return count() - 1;
}

} // namespace excel
