#include "oldlibraries/FaultKind.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;

QString shownValue(const QString& value)
{
    if (value.size() <= longestFindingValue)
        return value;
    const bool splitsPair = value[longestFindingValue - 1].isHighSurrogate();
    return value.left(longestFindingValue - (splitsPair ? 1 : 0)) + u'…';
}

void FaultKind::add(qint64 row, const QString& column, const QString& value)
{
    if (isListed())
        m_listed.push_back({m_table, row, column, shownValue(value), m_done});
    ++m_count;
}

void FaultKind::tell(std::vector<Finding>& findings) const
{
    findings.insert(findings.end(), m_listed.begin(), m_listed.end());
    const qint64 others = m_count - qint64(m_listed.size());
    if (others > 0)
        findings.push_back(
            {m_table,
             0,
             m_column,
             {},
             u"这样的还有 %1 处，没有一一列出：%2"_s.arg(QString::number(others), m_done)});
}

} // namespace oldlibraries
