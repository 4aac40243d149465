#include "scoring/ExamTables.h"

namespace scoring {

ExamTable& ExamTables::of(const QString& stream)
{
    std::unique_ptr<ExamTable>& table = m_tables[stream];
    if (!table)
        table = std::make_unique<ExamTable>(m_conn, m_exam, stream);
    return *table;
}

void ExamTables::write()
{
    jet::WriteBatch batch(m_conn);
    for (const auto& [stream, table] : m_tables) {
        if (table)
            table->write();
    }
    batch.commit();
}

} // namespace scoring
