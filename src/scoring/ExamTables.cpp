#include "scoring/ExamTables.h"

namespace scoring {

namespace {

const QStringList& presentColumns(library::ScoreLibrary& scoreLibrary)
{
    scoreLibrary.refreshCatalogue();
    return scoreLibrary.catalogue.AllColumns;
}

} // namespace

// The columns are looked at within the batch, which begins before them.
ExamTables::ExamTables(library::ScoreLibrary& scoreLibrary, const QString& exam)
    : m_conn(scoreLibrary.Conn),
      m_batch(scoreLibrary.Conn),
      m_exam(exam),
      m_scores(presentColumns(scoreLibrary))
{
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
