#include "platform/database/TableColumns.h"

namespace database {

void TableColumns::append(const Column& column)
{
    m_exact.insert(column.name, count());
    m_folded.insert(column.name.toCaseFolded(), count());
    m_columns.push_back(column);
}

int TableColumns::find(const QString& name) const
{
    // Folding costs more than the look-up; nearly all names come as the table has them.
    const auto exact = m_exact.constFind(name);
    return exact != m_exact.constEnd() ? *exact : m_folded.value(name.toCaseFolded(), -1);
}

} // namespace database
