#include "import/IntakeBatch.h"

namespace importing {

IntakeBatch::IntakeBatch(database::Connection& connection) : m_connection(connection)
{
    m_batch.emplace(connection);
}

runtime::Answer IntakeBatch::ask(const QString& text, const QString& title,
                                 runtime::Buttons buttons)
{
    commit();
    const runtime::Answer answer = runtime::MsgBox(text, title, buttons);
    m_batch.emplace(m_connection);
    return answer;
}

void IntakeBatch::commit()
{
    if (!m_batch)
        return;
    // A batch whose commit fails is over as well.
    try {
        m_batch->commit();
    } catch (...) {
        m_batch.reset();
        throw;
    }
    m_batch.reset();
}

} // namespace importing
