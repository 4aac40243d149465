#pragma once

#include <map>
#include <memory>

#include "library/ScoreLibrary.h"
#include "platform/database/WriteBatch.h"
#include "scoring/ExamTable.h"

namespace scoring {

/// The tables of one exam by stream, each read when it is first needed. What is read and what is
/// written back are one phase: nobody writes in between, and what could not be read writes nothing.
class ExamTables
{
public:
    /// Reads the library's catalogue anew where another program has written since. The scores are
    /// read at once; what scoring makes of them is read when it is asked for. Throws Error if the
    /// library cannot be written.
    ExamTables(library::ScoreLibrary& scoreLibrary, const QString& exam);

    /// Throws database::Error.
    ExamTable& of(const QString& stream);

    /// Writes those that were read, at the end of the phase. Throws Error; the exam is as before
    /// then, as it is without this.
    void write();

    const QString& exam() const { return m_exam; }

private:
    database::Connection& m_conn;
    database::WriteBatch m_batch;
    QString m_exam;
    QStringList m_scores;
    std::map<QString, std::unique_ptr<ExamTable>> m_tables;
};

} // namespace scoring
