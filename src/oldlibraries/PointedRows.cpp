#include "oldlibraries/PointedRows.h"

#include <algorithm>

namespace oldlibraries {

using namespace Qt::StringLiterals;

PointedRows::PointedRows(PageFile& file, quint32 definitionPage, quint32 owner, qint64 leastBytes)
    : m_file(file),
      m_pointers(quint64(definitionPage) << 32 | owner),
      m_owner(owner),
      m_leastBytes(leastBytes)
{
}

void PointedRows::go(RowPlace place, Visit visit)
{
    if (place.page != m_number) {
        m_page = DataPage(m_file, place.page);
        m_number = place.page;
    }
    m_row = place.row;
    if (m_page.owner() != m_owner || m_row >= m_page.rowCount())
        m_file.refuseDamaged(u"第 %1 页没有别处指向的内容"_s.arg(place.page));
    if (visit == Visit::Again)
        return;
    m_reached += std::max(qint64(bytes().size()), m_leastBytes);
    m_file.countReached(m_pointers, m_reached);
}

} // namespace oldlibraries
