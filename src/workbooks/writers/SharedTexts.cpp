#include "workbooks/writers/SharedTexts.h"

#include "workbooks/writers/WriterText.h"

namespace excel {

uint32_t SharedTexts::numberOf(const QString& text)
{
    const auto known = m_numbers.constFind(text);
    if (known != m_numbers.constEnd()) {
        ++m_table->string_count;
        return *known;
    }
    const sst_element* made = lxw_get_sst_index(m_table, fileText(text).constData(), LXW_FALSE);
    m_numbers.insert(text, made->index);
    return made->index;
}

} // namespace excel
