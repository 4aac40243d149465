#include "scoring/ExamTables.h"

namespace scoring {

ExamTables::ExamTables(library::ScoreLibrary& scoreLibrary, const QString& exam)
    : m_conn(scoreLibrary.Conn), m_batch(scoreLibrary.Conn), m_exam(exam)
{
    scoreLibrary.refreshCatalogue();
    m_scores = scoreLibrary.catalogue.AllColumns;
}

ExamTable& ExamTables::of(const QString& stream)
{
    auto found = m_tables.find(stream);
    if (found == m_tables.end()) {
        const TableScope scope{{}, m_scores, TableScope::Others::ReadWhenAskedFor};
        found = m_tables.emplace(stream, std::make_unique<ExamTable>(m_conn, m_exam, stream, scope))
                    .first;
    }
    return *found->second;
}

void ExamTables::write()
{
    for (const auto& [stream, table] : m_tables)
        table->write();
    m_batch.commit();
}

} // namespace scoring
